// The span of the radio's panadapter: a step wider or narrower, and the one that setup names for a mode.
// Not the share of it that the plot shows: that is K4State::K4SpanPreset.
#pragma once

#include "k4/K4Sender.h"
#include "k4/K4State.h"
#include "settings/SettingsStore.h"

namespace spectrino {

/// One step from the span that the radio told last. direction: below 0 narrower, else wider.
void StepK4Span(const K4State& state, K4Sender& sender, int direction);
/// The span of the radio's mode, and the panadapter centred.
void SendAutoK4Span(const K4State& state, K4Sender& sender, SettingsStore& store);

}  // namespace spectrino
