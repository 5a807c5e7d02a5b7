// The dial of the demo band: what a radio would be to it, so that all that tunes can be tried without one.
// Sends nothing anywhere: the band follows the frequency that the state tells (sim/DemoInput).
#pragma once

#include <array>
#include <cstddef>

#include "bandplan/Bands.h"
#include "rig/RigBackend.h"
#include "settings/SettingsStore.h"

namespace spectrino {

class DemoDial final : public RigBackend {
 public:
  /// The store outlives it.
  explicit DemoDial(SettingsStore& store) : store_(store) {}

  void Refresh(RadioState& radio) override;
  void SetFrequency(Vfo vfo, double freqMHz, Aim aim) override;
  /// Back to where it was on that band, else to a usual frequency of it.
  void SelectBand(int button) override;
  bool SelectMode(const ModeRequest& request) override;
  bool SetMode(Vfo receiver, const ExactMode& exact) override;
  void SendMacro(std::string_view /*text*/) override {}

 private:
  [[nodiscard]] std::size_t ButtonOf(double freqMHz) const;

  SettingsStore& store_;
  double freqMHz_ = 14.074;
  ExactMode mode_{mode::kUsb};
  std::array<double, kBandButtonCount> bands_{};  ///< where it was on each; 0: nowhere yet
};

}  // namespace spectrino
