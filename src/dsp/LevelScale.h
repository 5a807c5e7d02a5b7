// The level range of the plot by source, reference and range, and the steps of the frequency grid.
// Numbers only; LevelScale itself lives in state, the display draws it.
#pragma once

#include <array>

#include "state/ScaleState.h"

namespace spectrino {

/// 10 log10(sampleRate / 2^fftBits), rounded: keeps the noise floor where it is when the bin width changes.
[[nodiscard]] int BinWidthDb(int sampleRate, int fftBits);

/// Sound card. rangeDivisor: 1, 10 ... 10,000,000 for 20 ... 160 dB; any other leaves TopLevel, RangeUnits
/// and GridStep as they were.
void UpdateLevelScale(LevelScale& scale, int refLevel, int rangeDivisor, int binWidthDb);

/// Displayed range: 20 log10(10 * rangeDivisor); 0 for a divisor that is none of the eight.
[[nodiscard]] int RangeDb(int rangeDivisor);

/// The reference whose plot begins at bottomLevel, -199..200.
[[nodiscard]] int ReferenceOf(float bottomLevel, int binWidthDb);
/// The divisor whose range comes nearest.
[[nodiscard]] int NearestDivisor(float rangeDb);

/// GridFrequencies: distances in Hz of the vertical grid lines from the centre at zoom 1.
[[nodiscard]] std::array<double, 21> BuildGridFrequencies(int sampleRate);

}  // namespace spectrino
