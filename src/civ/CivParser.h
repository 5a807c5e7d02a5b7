// What the radio's replies say, brought into the state and onto the panel.
// Cuts no frames and sends nothing; scope lines are put together in ScopeWave.
#pragma once

#include <string_view>

#include "civ/CivState.h"
#include "civ/IcomPanelView.h"

namespace spectrino {

/// frame: hex text from FEFE to FD, its from-address checked already. A frame that is no known reply, is too
/// short, or has no decimal digits where BCD belongs changes nothing.
void ParseCivFrame(std::string_view frame, CivState& state, IcomPanelView& panel);

}  // namespace spectrino
