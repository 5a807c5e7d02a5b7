#include "civ/StatusMemory.h"

#include "bandplan/Bands.h"
#include "state/Val.h"

namespace spectrino {

void StatusMemory::tmrIcomStatus_Timer(bool autoRef, bool running) {
  // Before the radio told a frequency there is no band, and its level must go under no band's name.
  if (!autoRef || !running || !(state_.RadioFreqMHz > 0)) return;
  const int band = IcomBandNumber(state_.RadioFreqMHz);
  if (band == lastBand_) {
    SaveBandLevel(store_, memory_, state_.RadioFreqMHz, RoundToInt16(state_.ScopeRefLevel));
  } else if (band < static_cast<int>(kBandRecordCount)) {
    const int level = memory_.Records[static_cast<std::size_t>(band)].Level;
    // If the answer were lost, the next tick would keep the level of the band just left under this one.
    state_.ScopeRefLevel = static_cast<float>(level);
    commands_.SetIcomRefLevel(level);
  }
  lastBand_ = band;
}

}  // namespace spectrino
