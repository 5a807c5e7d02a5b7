// A radio behind the bridge: frequencies and filter from its linked texts, mode and the rest from its section
// "PAN", tuned by its commands.
#pragma once

#include "host/AskedFrequency.h"
#include "host/BridgeLink.h"
#include "host/PanKeys.h"
#include "platform/Clock.h"
#include "rig/RigBackend.h"
#include "settings/PanSettings.h"
#include "state/Pacer.h"

namespace spectrino {

class BridgeBackend final : public RigBackend {
 public:
  /// All outlive it.
  BridgeBackend(BridgeLink& link, SettingsStore& store, const PanSettings& settings, const Clock& clock)
      : link_(link), store_(store), settings_(settings), clock_(clock) {}

  bool Open() override;
  void Refresh(RadioState& radio) override;
  [[nodiscard]] double LinkOffsetKHz() const override { return pan_.OffsetHz / 1000; }
  /// A signal that was pointed at is corrected by the tone offset where the bridge says so. Rounded to the
  /// wheel's step of the receiver's mode.
  void SetFrequency(Vfo vfo, double freqMHz, Aim aim) override;
  /// Button 1 is the band number 0.
  void SelectBand(int button) override { link_.BridgeSetBand(button - 1); }
  bool SelectMode(const ModeRequest& /*request*/) override { return false; }
  void SendMacro(std::string_view /*text*/) override {}

 private:
  [[nodiscard]] PanValues Read() const;

  BridgeLink& link_;
  SettingsStore& store_;
  const PanSettings& settings_;
  const Clock& clock_;
  CatControl control_ = CatControl::BridgeIf;
  PanValues pan_;
  Pacer read_{std::chrono::milliseconds(100)};
  AskedFrequency main_, sub_;
};

}  // namespace spectrino
