// The K4's replies on the CAT connection: text in, state and panel out.
// Sends nothing; what a control does when it is moved is the panel's.
#pragma once

#include <string>

#include "k4/K4PanelView.h"
#include "k4/K4State.h"

namespace spectrino {

/// Takes every complete reply out of the buffer and leaves the unfinished tail. Does nothing while a pass is
/// running: text that arrives meanwhile is appended to the buffer, and the running pass takes it as well.
///
/// A reply is a mnemonic of two characters, or "#" and two to four more for the panadapter, parameters, and
/// ";". Positions count from 1. "$" at position 3 marks the sub receiver, whose parameters stand one further
/// on:
///
///     F A 0 0 0 1 4 0 7 4 0 0 0 ;          M D $ 3 ;
///     1 2 3 . . . . . . . . . 13           1 2 3 4
///
/// Numbers have a leading-number reading; one that does not fit 16 bits, or a parameter that is missing,
/// leaves its field as it was. Unknown replies are skipped. Source of the positions: the K4 programmer's
/// reference.
void ParseK4Replies(std::string& buffer, K4State& state, K4PanelView& view);

}  // namespace spectrino
