// A radio behind the bridge: frequencies and filter from its linked texts, mode and the rest from its section
// "PAN", tuned by its commands.
#pragma once

#include "host/BridgeLink.h"
#include "host/PanFollower.h"

namespace spectrino {

class BridgeBackend final : public PanFollower {
 public:
  /// All outlive it.
  BridgeBackend(BridgeLink& link, SettingsStore& store, const PanSettings& settings, const Clock& clock)
      : PanFollower(store, settings, clock), link_(link) {}

  /// Button 1 is the band number 0.
  void SelectBand(int button) override { link_.BridgeSetBand(button - 1); }

 private:
  [[nodiscard]] PanValues Read(CatControl control, bool fixedCentre) const override;
  /// A signal that was pointed at is corrected by the tone offset where the bridge says so. Rounded to the
  /// wheel's step of the receiver's mode.
  [[nodiscard]] double DialFor(const PanValues& pan, int radioMode, double freqMHz, Aim aim) const override;
  void Send(Vfo vfo, double freqMHz) override;

  BridgeLink& link_;
};

}  // namespace spectrino
