// A radio that an outside program controls and tells of in its section "PAN": followed by reading the
// section. Ketrel is tuned by writing to it; who has no such key is followed only.
#pragma once

#include <chrono>
#include <optional>

#include "host/PanKeys.h"
#include "platform/Clock.h"
#include "rig/RigBackend.h"
#include "settings/PanSettings.h"
#include "state/Pacer.h"

namespace spectrino {

class PanBackend final : public RigBackend {
 public:
  /// What was asked for is shown until the program tells another frequency, or this has passed.
  static constexpr std::chrono::milliseconds kConfirmTime{2000};

  /// All outlive it.
  PanBackend(SettingsStore& store, const PanSettings& settings, const Clock& clock)
      : store_(store), settings_(settings), clock_(clock) {}

  bool Open() override;
  void Refresh(RadioState& radio) override;
  [[nodiscard]] double LinkOffsetKHz() const override { return pan_.OffsetHz / 1000; }
  void SetFrequency(Vfo vfo, double freqMHz, Aim aim) override;
  void SelectBand(int /*button*/) override {}
  bool SelectMode(const ModeRequest& /*request*/) override { return false; }
  void SendMacro(std::string_view /*text*/) override {}
  /// 100 kHz from where VFO A is.
  void StepFrequency(int direction, double centreMHz) override;

 private:
  struct Wanted {
    double FreqMHz = 0;
    double ToldMHz = 0;  ///< when it was asked for
    std::chrono::steady_clock::time_point Since{};
  };
  using MaybeWanted = std::optional<Wanted>;

  /// Writes the requested frequency for Ketrel: "TXFreq" with which 2, else "RXFreq". MHz.
  void SetKetrelFrequency(double freqMHz, int which);
  [[nodiscard]] double Shown(MaybeWanted& wanted, double toldMHz);

  SettingsStore& store_;
  const PanSettings& settings_;
  const Clock& clock_;
  CatControl control_ = CatControl::KetrelIf;
  PanValues pan_;
  Pacer read_{std::chrono::milliseconds(100)};
  MaybeWanted main_, sub_;
};

}  // namespace spectrino
