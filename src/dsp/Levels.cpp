#include "dsp/Levels.h"

#include <cassert>
#include <cmath>

#include "dsp/kernels/Kernels.h"

namespace spectrino {

float LevelOffsetDb(WindowType window, int fftBits) {
  constexpr double kReferenceDb = -150;
  constexpr int kReferenceBits = 12;
  return static_cast<float>(-20 * std::log10(WindowGain(window)) + kReferenceDb -
                            6 * (fftBits - kReferenceBits));
}

void PowerToLevels(std::span<const double> power, float offsetDb, std::span<float> levels) {
  assert(power.size() == levels.size());
  BestKernels().Levels(power.data(), offsetDb, levels.data(), static_cast<int>(levels.size()));
}

}  // namespace spectrino
