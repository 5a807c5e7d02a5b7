// One captured block of I/Q samples to the power of N points.
// Ends at power: Levels makes decibels of it.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "dsp/WindowTable.h"

namespace spectrino {

struct Kernels;

/// Which channel is the real part. Plus: left is real, right imaginary. Minus: the other way round.
enum class IqSign { Minus = -1, Plus = 1 };

/// Correction of the right channel R by the left one L: R becomes (R + IqPhaseCorrection * L) *
/// (1 + IqGainCorrection).
struct IqBalance {
  double IqGainCorrection = 0;
  double IqPhaseCorrection = 0;
};

class Spectrum {
 public:
  Spectrum();
  /// With kernels of the caller's choice; otherwise the fastest that the processor runs.
  explicit Spectrum(const Kernels& kernels);
  ~Spectrum();
  Spectrum(Spectrum&&) noexcept;
  Spectrum& operator=(Spectrum&&) noexcept;

  /// Builds all tables for N = 2^fftBits points, fftBits 8..16.
  void Prepare(int fftBits, WindowType window);
  /// N; 0 before Prepare.
  [[nodiscard]] int SpectrumPoints() const;

  /// samples: interleaved left, right; N/2 values, which are N/4 stereo frames, windowed and padded with
  /// zeros to N. power: N values |X|^2, unscaled, lowest frequency first, 0 Hz at N/2. The exponent is
  /// positive: a tone (cos, sin) at +f lands at N/2 - f * N / rate. smoothZeroHz replaces the points round 0
  /// Hz by the mean magnitude of the line (squared). Needs Prepare. Never allocates.
  void ComputeSpectrum(std::span<const std::int16_t> samples, IqSign sign, const IqBalance& balance,
                       bool smoothZeroHz, std::span<double> power);

 private:
  struct Plan;
  const Kernels* kernels_;
  std::unique_ptr<Plan> plan_;
};

}  // namespace spectrino
