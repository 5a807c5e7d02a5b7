// The offset between the radio's frequency and the 0 Hz of a sound-card spectrum.
#pragma once

#include "settings/PanSettings.h"
#include "state/RadioState.h"

namespace spectrino {

/// IfOffsetKHz: radio frequency minus the frequency that arrives at 0 Hz. By CatControl: the mode's offset,
/// the global offset plus the link's own, or, with a fixed oscillator, the distance to the mode's fixed
/// centre (0 while the radio's frequency is unknown); 0 for radios that deliver their own spectrum.
[[nodiscard]] double IfOffsetKHz(CatControl control, const RadioState& radio, const PanSettings& settings,
                                 double linkOffsetKHz);

}  // namespace spectrino
