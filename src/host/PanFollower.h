// A radio that an outside program controls and tells of in its section "PAN": what all such programs share.
// What each tells beside the section, and how it is asked, is its own class.
#pragma once

#include <chrono>

#include "host/AskedFrequency.h"
#include "host/PanKeys.h"
#include "platform/Clock.h"
#include "rig/RigBackend.h"
#include "settings/PanSettings.h"
#include "state/Pacer.h"

namespace spectrino {

class PanFollower : public RigBackend {
 public:
  /// All outlive it.
  PanFollower(SettingsStore& store, const PanSettings& settings, const Clock& clock)
      : store_(store), settings_(settings), clock_(clock) {}

  bool Open() override;
  /// A mode button sets the mode in radio alone: it holds until the program tells another one.
  void Refresh(RadioState& radio) override;
  [[nodiscard]] double LinkOffsetKHz() const override { return pan_.OffsetHz / 1000; }
  void SetFrequency(Vfo vfo, double freqMHz, Aim aim) override;
  void SelectBand(int /*button*/) override {}
  bool SelectMode(const ModeRequest& /*request*/) override { return false; }
  void SendMacro(std::string_view /*text*/) override {}

 protected:
  /// What the program tells now; fixedCentre: as under control, the section alone tells it.
  [[nodiscard]] virtual PanValues Read(CatControl control, bool fixedCentre) const = 0;
  /// The dial to ask for, MHz, where a receiver in radioMode is to stand at freqMHz.
  [[nodiscard]] virtual double DialFor(const PanValues& /*pan*/, int /*radioMode*/, double freqMHz,
                                       Aim /*aim*/) const {
    return freqMHz;
  }
  virtual void Send(Vfo vfo, double freqMHz) = 0;

  SettingsStore& store_;
  const PanSettings& settings_;

 private:
  [[nodiscard]] bool FixedCentre() const { return RowOf(control_).Offset == OffsetRule::FixedCentre; }

  const Clock& clock_;
  CatControl control_ = CatControl::KetrelIf;
  PanValues pan_;
  Pacer read_{std::chrono::milliseconds(100)};
  int shownMode_ = mode::kUnknown;  ///< of VFO A: the radio's, or a button's
  AskedFrequency main_, sub_;
};

}  // namespace spectrino
