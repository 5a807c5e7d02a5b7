// The inner loops of the demo band: one tone, or one bank of harmonics, added to a slice of samples.
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

/// A tone as eight neighbouring frames that step on by eight. Exact at the start; the error of the
/// recurrence stays below 1e-5 over a slice.
class Rotator {
 public:
  Rotator(double cycles, double cyclesPerFrame) {
    const Phasor step = UnitPhasor(cyclesPerFrame);
    Phasor phasor = UnitPhasor(cycles);
    for (int frame = 0; frame < kKernelFrames; ++frame) {
      Re[frame / 4][frame % 4] = phasor.Re;
      Im[frame / 4][frame % 4] = phasor.Im;
      phasor = phasor * step;
    }
    step_ = UnitPhasor(cyclesPerFrame * kKernelFrames);
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

/// Weights of the harmonics 1, 2, ... Count of a pitch.
struct HarmonicBank {
  static constexpr int kMaxCount = 40;
  int Count = 0;
  std::array<Phasor, kMaxCount> Weight{};
};

/// Adds envelope * carrier * sum over k of Weight[k-1] * pitch^k. Sizes as in AddTone.
inline void AddHarmonics(std::span<const float> envelope, Rotator carrier, Rotator pitch,
                         const HarmonicBank& bank, SliceBuffer& out) {
  for (std::size_t frame = 0; frame < envelope.size(); frame += kKernelFrames) {
    Lanes re[2]{};
    Lanes im[2]{};
    // Horner's rule: one complex product a harmonic, where a tone each would also need its own phase.
    for (int k = bank.Count - 1; k >= 0; --k) {
      const Phasor weight = bank.Weight[static_cast<std::size_t>(k)];
      for (int half = 0; half < 2; ++half) {
        const Lanes sumRe = re[half] + weight.Re;
        const Lanes sumIm = im[half] + weight.Im;
        re[half] = sumRe * pitch.Re[half] - sumIm * pitch.Im[half];
        im[half] = sumRe * pitch.Im[half] + sumIm * pitch.Re[half];
      }
    }
    for (int half = 0; half < 2; ++half) {
      const std::size_t at = frame + 4 * static_cast<std::size_t>(half);
      const Lanes gain = LoadLanes(&envelope[at]);
      const Lanes tuneRe = re[half] * carrier.Re[half] - im[half] * carrier.Im[half];
      const Lanes tuneIm = re[half] * carrier.Im[half] + im[half] * carrier.Re[half];
      StoreLanes(&out.Re[at], LoadLanes(&out.Re[at]) + gain * tuneRe);
      StoreLanes(&out.Im[at], LoadLanes(&out.Im[at]) + gain * tuneIm);
    }
    carrier.Advance();
    pitch.Advance();
  }
}

}  // namespace spectrino
