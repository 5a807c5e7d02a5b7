// The plain transform that the kernels are measured against: every step as it is thought, none of it fast.
// Only for tests.
#pragma once

#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "dsp/Spectrum.h"

namespace spectrino::testing {

struct TwiddleTables {
  std::vector<double> TwiddleAlpha, TwiddleBeta;
};

inline TwiddleTables BuildTwiddleTables(int points) {
  TwiddleTables tables;
  for (int b = 0; b <= points; ++b) {
    const double theta = b == 0 ? 0 : 6.28318530717958 / b;
    const double s = std::sin(theta * 0.5);
    tables.TwiddleAlpha.push_back(s * (s + s));
    tables.TwiddleBeta.push_back(std::sin(theta));
  }
  return tables;
}

inline int ReverseBits(int index, int bits) {
  int result = 0;
  for (; bits > 0; --bits) {
    result = result * 2 | (index & 1);
    index /= 2;
  }
  return result;
}

/// Radix-2 decimation in time with twiddles by recurrence, in place on points in bit-reversed order.
inline void Butterflies(std::vector<double>& re, std::vector<double>& im) {
  const auto points = re.size();
  const TwiddleTables twiddles = BuildTwiddleTables(static_cast<int>(points));
  for (std::size_t blockSize = 2, blockEnd = 1; blockSize <= points; blockEnd = blockSize, blockSize *= 2) {
    const double alpha = twiddles.TwiddleAlpha[blockSize];
    const double beta = twiddles.TwiddleBeta[blockSize];
    for (std::size_t start = 0; start < points; start += blockSize) {
      double wr = 1, wi = 0;
      for (std::size_t n = start; n < start + blockEnd; ++n) {
        const std::size_t m = n + blockEnd;
        const double tr = wr * re[m] - wi * im[m];
        const double ti = wr * im[m] + wi * re[m];
        re[m] = re[n] - tr;
        im[m] = im[n] - ti;
        re[n] += tr;
        im[n] += ti;
        const double t = wi * beta;
        wi = wr * beta + (wi - wi * alpha);
        wr = wr - (t + wr * alpha);
      }
    }
  }
}

/// Magnitudes, lowest frequency first, of one block of N/4 stereo frames.
inline std::vector<double> ReferenceMagnitudes(std::span<const std::int16_t> samples, int bits,
                                               WindowType type, IqSign sign, const IqBalance& balance,
                                               bool smoothZeroHz) {
  const std::size_t points = std::size_t{1} << bits;
  const std::vector<double> window = BuildWindowTable(type, static_cast<int>(points));
  std::vector<double> re(points), im(points);
  const double gain = 1 + balance.IqGainCorrection;
  for (std::size_t i = 0; i < points / 4; ++i) {
    const double left = samples[2 * i] * window[2 * i];
    const double right = (samples[2 * i + 1] * window[2 * i] + balance.IqPhaseCorrection * left) * gain;
    const auto j = static_cast<std::size_t>(ReverseBits(static_cast<int>(i), bits));
    re[j] = sign == IqSign::Plus ? left : right;
    im[j] = sign == IqSign::Plus ? right : left;
  }
  Butterflies(re, im);
  std::vector<double> magnitudes(points);
  double sum = 0;
  for (std::size_t i = 0; i < points; ++i) {
    const std::size_t from = (i + points / 2) % points;
    magnitudes[i] = std::sqrt(re[from] * re[from] + im[from] * im[from]);
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
