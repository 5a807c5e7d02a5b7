// The scope's reference level of each band, followed once a second.
// Reads what the parser learned; frequency and mode of a band are kept elsewhere, when the band is left.
#pragma once

#include "bandplan/BandMemory.h"
#include "civ/CivState.h"
#include "civ/IcomCommands.h"
#include "settings/SettingsStore.h"

namespace spectrino {

class StatusMemory {
 public:
  StatusMemory(CivState& state, IcomCommands& commands, SettingsStore& store, BandMemory& memory)
      : state_(state), commands_(commands), store_(store), memory_(memory) {}

  /// At Start: the first tick restores the level of the band that the radio is on.
  void Restart() { lastBand_ = kNoBand; }
  /// Every 1000 ms while an Icom delivers the spectrum. On the band of the last tick keeps the level, on
  /// another restores that band's. A band without a record (IcomBandNumber 22 and above) restores nothing.
  /// autoRef: setting "AutoREF".
  void tmrIcomStatus_Timer(bool autoRef, bool running);

 private:
  static constexpr int kNoBand = -1;

  CivState& state_;
  IcomCommands& commands_;
  SettingsStore& store_;
  BandMemory& memory_;
  int lastBand_ = kNoBand;
};

}  // namespace spectrino
