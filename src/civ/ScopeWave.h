// The divisions of a scope line put together, its levels brought to the display's scale.
// Draws nothing: a finished line waits in the state.
#pragma once

#include <string_view>

#include "civ/CivState.h"
#include "civ/IcomPanelView.h"

namespace spectrino {

/// One division of the main scope's line, the hex text behind 27 00 without FD:
///
///   00 | div | of | amplitudes ...                                               divisions 2 to last
///   00 | div | of | mode | centre or low edge (5) | half span or high edge (5) | out of range | amplitudes
///   ...
///        BCD   BCD  00 centre, 01 fixed                                          division 1
///
/// A radio on a serial line sends the header alone as division 1. With the last division the line becomes
/// ScopeLevels and ScopeSerial counts up, with the edges that its own header told: a reply in between
/// cannot move it. A line with a division lost, repeated or out of order is dropped, as is one of the wrong
/// length. Nothing is taken before the radio is identified.
void AssembleScopeWave(std::string_view division, CivState& state, IcomPanelView& panel);

}  // namespace spectrino
