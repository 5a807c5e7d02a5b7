// Power to calibrated decibels.
// The calibration of band, preamplifier and attenuator is the caller's: it is added to the offset.
#pragma once

#include <span>

#include "dsp/WindowTable.h"

namespace spectrino {

/// What is added to 10 log10(power): the window's gain, -150, and -6 dB for each doubling above N = 4096, so
/// that a level does not move with the size of the transform.
[[nodiscard]] float LevelOffsetDb(WindowType window, int fftBits);

/// levels[i] = 10 log10(power[i]) + offsetDb, within 0.001 dB, for every finite power from 2.3e-308 up.
/// Below that, 0 included, kKeepLevel: there was nothing to measure. Both spans have the same size.
void PowerToLevels(std::span<const double> power, float offsetDb, std::span<float> levels);

}  // namespace spectrino
