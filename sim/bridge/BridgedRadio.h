// Puts what a followed radio tells on the bridge, and what the bridge is asked into the radio. Mode and split
// go where programs look for them: the section ("LP-Bridge", "PAN") of the settings.
#pragma once

#include <array>

#include "settings/SettingsStore.h"
#include "sim/bridge/BridgeService.h"
#include "sim/bridge/RadioFollower.h"

namespace spectrino {

/// The mode as an Elecraft "MD" code, of a mode as Hamlib names it; 0: none of them.
[[nodiscard]] int ModeCodeOf(const QString& hamlibMode);

class BridgedRadio {
 public:
  /// All outlive it. Takes the events of both.
  BridgedRadio(BridgeService& service, RadioFollower& radio, SettingsStore& store);

 private:
  void Show(const FollowedRadio& now);
  void Remember(qint64 hz);
  void Do(const BridgeRequest& request);

  BridgeService& service_;
  RadioFollower& radio_;
  SettingsStore& store_;
  FollowedRadio shown_;
  std::array<qint64, 11> lastHz_;  ///< by band number: where the radio was on it
};

}  // namespace spectrino
