// Where the signals of a line stand: the one to spot, the next one up or down the band.
// Searches only; Tuner tunes.
#pragma once

#include <optional>

#include "rig/Passband.h"
#include "state/SpectrumLine.h"

namespace spectrino {

/// The dial frequency, MHz, that puts a signal where it belongs: CW, AM and FM on the dial itself, where the
/// marker stands; the sideband modes, DATA included, into the middle of the passband. Rounded to 1 Hz.
[[nodiscard]] double DialFor(double signalMHz, const Passband& passband, int radioMode);

/// The dial for the strongest signal of the passband, or where there is none for the strongest within one
/// passband to either side of it. A signal stands 6 dB (Icom: 6 units) above the line's floor at least, and
/// above what noise that scatters as this line's does reaches by itself. Nothing while the dial is unknown
/// (0) or no signal is in reach.
[[nodiscard]] std::optional<double> SpotFrequency(const SpectrumLine& line, const Passband& passband,
                                                  double dialMHz, int radioMode);

struct Peak {
  double FreqMHz = 0;
  float Level = 0;  ///< in the line's own unit
};

/// The next signal above (direction > 0) or below fromMHz: the highest within 3 points to either side, at
/// least 10 dB (Icom: 10 units) above the line's median, and at least 3 points away from fromMHz, so that the
/// signal just tuned is not found again. A flat top is one signal, at its middle. fromMHz may lie outside the
/// line. One pass.
[[nodiscard]] std::optional<Peak> FindPeak(const SpectrumLine& line, double fromMHz, int direction);

}  // namespace spectrino
