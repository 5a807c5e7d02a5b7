// What a newcomer's settings begin with. The keys' own defaults stand for every file that exists.
#pragma once

#include "settings/SetupSection.h"

namespace spectrino {

/// Written once, before anything is loaded: a window that keeps strong signals narrow, averages, half a
/// waterfall in the most legible colours, levels by themselves.
void WriteFirstRun(SetupSection& setup);

}  // namespace spectrino
