// A radio that an outside program controls and tells of in its section "PAN": followed by reading the
// section, tuned by writing to it. Ketrel is one.
#pragma once

#include <chrono>

#include "host/AskedFrequency.h"
#include "host/PanKeys.h"
#include "platform/Clock.h"
#include "rig/RigBackend.h"
#include "settings/PanSettings.h"
#include "state/Pacer.h"

namespace spectrino {

class PanBackend final : public RigBackend {
 public:
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

 private:
  /// Writes the requested frequency for Ketrel: "TXFreq" with which 2, else "RXFreq". MHz.
  void SetKetrelFrequency(double freqMHz, int which);

  SettingsStore& store_;
  const PanSettings& settings_;
  const Clock& clock_;
  CatControl control_ = CatControl::KetrelIf;
  PanValues pan_;
  Pacer read_{std::chrono::milliseconds(100)};
  AskedFrequency main_, sub_;
};

}  // namespace spectrino
