// The inner loop of the demo band: one tone added to a slice of samples.
// Knows nothing of stations; a phase is given in cycles, an envelope sample by sample.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <numbers>
#include <span>

namespace spectrino {

/// The longest slice; every slice is a multiple of kKernelFrames.
inline constexpr int kMaxSliceFrames = 256;
inline constexpr int kKernelFrames = 8;

struct SliceBuffer {
  alignas(16) std::array<float, kMaxSliceFrames> Re{};
  alignas(16) std::array<float, kMaxSliceFrames> Im{};
};

struct Phasor {
  float Re = 0;
  float Im = 0;
};

// std::complex would test every product for infinities.
[[nodiscard]] inline Phasor operator*(Phasor a, Phasor b) {
  return {a.Re * b.Re - a.Im * b.Im, a.Re * b.Im + a.Im * b.Re};
}

/// The unit phasor at a phase in cycles, of any size and sign.
[[nodiscard]] inline Phasor UnitPhasor(double cycles) {
  const double angle = (cycles - std::floor(cycles)) * 2 * std::numbers::pi;
  return {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
}

/// Four frames side by side; the width that every x86-64 has.
using Lanes [[gnu::vector_size(16)]] = float;

[[nodiscard]] inline Lanes LoadLanes(const float* from) {
  Lanes lanes;
  std::memcpy(&lanes, from, sizeof lanes);
  return lanes;
}

inline void StoreLanes(float* to, Lanes lanes) {
  std::memcpy(to, &lanes, sizeof lanes);
}

/// A phase that runs straight through a slice.
struct PhaseLine {
  double Cycles = 0;  ///< at the first frame
  double CyclesPerFrame = 0;
};

[[nodiscard]] inline PhaseLine operator+(PhaseLine a, PhaseLine b) {
  return {a.Cycles + b.Cycles, a.CyclesPerFrame + b.CyclesPerFrame};
}

[[nodiscard]] inline PhaseLine operator*(double factor, PhaseLine line) {
  return {factor * line.Cycles, factor * line.CyclesPerFrame};
}

/// A tone as eight neighbouring frames that step on by eight. Exact at the start; the error of the
/// recurrence stays below 1e-5 over a slice.
class Rotator {
 public:
  explicit Rotator(PhaseLine line) {
    const Phasor step = UnitPhasor(line.CyclesPerFrame);
    Phasor phasor = UnitPhasor(line.Cycles);
    for (int frame = 0; frame < kKernelFrames; ++frame) {
      Re[frame / 4][frame % 4] = phasor.Re;
      Im[frame / 4][frame % 4] = phasor.Im;
      phasor = phasor * step;
    }
    step_ = step * step;
    step_ = step_ * step_;
    step_ = step_ * step_;
  }

  void Advance() {
    for (int half = 0; half < 2; ++half) {
      const Lanes re = Re[half] * step_.Re - Im[half] * step_.Im;
      Im[half] = Re[half] * step_.Im + Im[half] * step_.Re;
      Re[half] = re;
    }
  }

  Lanes Re[2];
  Lanes Im[2];

 private:
  Phasor step_;
};

/// Fills the envelope with a straight line from start towards end, which it would reach one frame past the
/// last. Size as in AddTone.
inline void FillRamp(std::span<float> envelope, double start, double end) {
  const auto first = static_cast<float>(start);
  const auto step = static_cast<float>((end - start) / static_cast<double>(envelope.size()));
  Lanes lanes{first, first + step, first + 2 * step, first + 3 * step};
  for (std::size_t i = 0; i < envelope.size(); i += 4) {
    StoreLanes(&envelope[i], lanes);
    lanes += 4 * step;
  }
}

/// Adds envelope * tone. envelope.size() is a multiple of kKernelFrames, at most kMaxSliceFrames.
inline void AddTone(std::span<const float> envelope, Rotator tone, SliceBuffer& out) {
  for (std::size_t frame = 0; frame < envelope.size(); frame += kKernelFrames) {
    for (std::size_t half = 0; half < 2; ++half) {
      const std::size_t at = frame + 4 * half;
      const Lanes gain = LoadLanes(&envelope[at]);
      StoreLanes(&out.Re[at], LoadLanes(&out.Re[at]) + gain * tone.Re[half]);
      StoreLanes(&out.Im[at], LoadLanes(&out.Im[at]) + gain * tone.Im[half]);
    }
    tone.Advance();
  }
}

}  // namespace spectrino
