// The texts that the window puts together from state: information line and mode.
#pragma once

#include <QString>
#include <string>

#include "run/RunCycle.h"
#include "run/Session.h"

namespace spectrino {

/// RadioMode as the header shows it; empty while unknown.
[[nodiscard]] QString ModeText(int radioMode);

/// Span, range, FFT length and resolution, or the radio's model: the line at the top of the plot. Of the run;
/// while there is none, of the source that is chosen.
/// While a radio's first line is awaited its span is not known, and not told.
[[nodiscard]] std::string InfoText(const Session& session, RunCycle& cycle);
/// From the plot's bottom to its top.
[[nodiscard]] int ShownRangeDb(const Session& session, RunCycle& cycle);

}  // namespace spectrino
