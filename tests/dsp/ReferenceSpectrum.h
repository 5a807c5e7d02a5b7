// The plain transform that the kernels are measured against: every step as it is thought, none of it fast.
// Only for tests.
#pragma once

#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <span>
#include <vector>

#include "dsp/Spectrum.h"

namespace spectrino::testing {

using Points = std::vector<std::complex<double>>;

/// Positive exponent; even and odd points apart, and put together.
inline Points Transform(const Points& points) {
  if (points.size() == 1) return points;
  const std::size_t half = points.size() / 2;
  Points even(half), odd(half), result(points.size());
  for (std::size_t i = 0; i < half; ++i) {
    even[i] = points[2 * i];
    odd[i] = points[2 * i + 1];
  }
  even = Transform(even);
  odd = Transform(odd);
  for (std::size_t i = 0; i < half; ++i) {
    const auto turned =
        std::polar(1.0, std::numbers::pi * static_cast<double>(i) / static_cast<double>(half)) * odd[i];
    result[i] = even[i] + turned;
    result[i + half] = even[i] - turned;
  }
  return result;
}

/// Magnitudes, lowest frequency first, of one block of N/4 stereo frames.
inline std::vector<double> ReferenceMagnitudes(std::span<const std::int16_t> samples, int bits,
                                               WindowType type, IqSign sign, const IqBalance& balance,
                                               bool smoothZeroHz) {
  const std::size_t points = std::size_t{1} << bits;
  const std::vector<double> window = BuildWindowTable(type, static_cast<int>(points));
  Points block(points);
  const double gain = 1 + balance.IqGainCorrection;
  for (std::size_t i = 0; i < points / 4; ++i) {
    const double left = samples[2 * i] * window[2 * i];
    const double right = (samples[2 * i + 1] * window[2 * i] + balance.IqPhaseCorrection * left) * gain;
    block[i] = sign == IqSign::Plus ? std::complex(left, right) : std::complex(right, left);
  }
  const Points spectrum = Transform(block);
  std::vector<double> magnitudes(points);
  double sum = 0;
  for (std::size_t i = 0; i < points; ++i) {
    magnitudes[i] = std::abs(spectrum[(i + points / 2) % points]);
    sum += magnitudes[i];
  }
  constexpr int kHalfWidth[] = {0, 10, 12, 13, 15, 15, 20, 40, 70};
  const auto half = static_cast<std::size_t>(kHalfWidth[bits - 8]);
  for (std::size_t i = points / 2 - half; smoothZeroHz && i <= points / 2 + half; ++i) {
    magnitudes[i] = sum / static_cast<double>(points);
  }
  return magnitudes;
}

}  // namespace spectrino::testing
