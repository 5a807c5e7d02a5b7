// The window (apodization) coefficients of a frame, and the gain that a level is corrected by.
// Knows nothing of samples or transforms.
#pragma once

#include <vector>

namespace spectrino {

/// Setting "APO". The numbers are stored, so they never change.
enum class WindowType {
  None = 0,
  Hamming = 1,
  Blackman = 2,
  BlackmanHarris = 3,
  BlackmanNuttall = 4,
  FlatTop = 5,
};

/// points + 1 coefficients, indices 0..points. They hold two periods of the window over 0..points - 1: the
/// stereo frame i takes coefficient 2i, so that one period spans the points / 4 frames of a block.
[[nodiscard]] std::vector<double> BuildWindowTable(WindowType type, int points);

/// What a magnitude is divided by before its level is taken.
[[nodiscard]] double WindowGain(WindowType type);

}  // namespace spectrino
