// Signals in a line of spectrum: the one to centre on, and the next one along the band.
// Looks and tells; tunes nothing.
#pragma once

#include <optional>

#include "rig/Passband.h"
#include "state/RadioState.h"
#include "state/SpectrumLine.h"

namespace spectrino {

struct Peak {
  double FreqMHz = 0;
  float Level = 0;  ///< in the line's own unit
};

/// The dial that brings the strongest signal of the main passband where the operator wants to hear it: on the
/// dial itself in CW, AM and FM, in the middle of the passband in SSB and data. Nothing where the line does
/// not cover the passband.
[[nodiscard]] std::optional<double> SpotFrequency(const SpectrumLine& line, const RadioState& radio);

/// The next signal above (direction +1) or below (-1) a frequency: a local maximum at least 10 units over the
/// line's median, and the highest within a hundredth of the line.
[[nodiscard]] std::optional<Peak> FindPeak(const SpectrumLine& line, double fromMHz, int direction);

}  // namespace spectrino
