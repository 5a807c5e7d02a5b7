// Which channel is the real part of the signal: the three reasons to swap them, multiplied.
#pragma once

#include "settings/PanSettings.h"
#include "state/RadioState.h"

namespace spectrino {

/// -1 where the settings flip I and Q for the mode: USB with "IQCW", CW and CW-R with "IQUSB"; else +1.
[[nodiscard]] int ModeFlip(int radioMode, bool iqCw, bool iqUsb);

/// The automatic flip around 6 m. Back-ends with a fixed oscillator keep what they had; a radio's own scope
/// never flips.
[[nodiscard]] int BandFlip(int before, const RadioState& radio, CatControl control,
                           const PanSettings& settings);

}  // namespace spectrino
