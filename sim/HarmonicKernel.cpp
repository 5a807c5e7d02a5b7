#include "sim/HarmonicKernel.h"

#include <algorithm>

namespace spectrino {

namespace {

constexpr std::size_t kMaxPoints = 32;
constexpr std::size_t kPadded = kMaxPoints + kKernelFrames;  // one point before the slice, two after it

struct PointBuffer {
  alignas(16) std::array<float, kPadded> Re;
  alignas(16) std::array<float, kPadded> Im;
};

/// The sum of the harmonics times turn, at the points that pitch and turn step through.
void SumHarmonics(const HarmonicBank& bank, Rotator pitch, Rotator turn, PointBuffer& points) {
  for (std::size_t point = 0; point < kPadded; point += kKernelFrames) {
    Lanes re[2]{};
    Lanes im[2]{};
    // Horner's rule: one complex product a harmonic, where a tone each would also need its own phase.
    for (int i = bank.Count - 1; i >= 0; --i) {
      const Phasor weight = bank.Weight[static_cast<std::size_t>(i)];
      for (int half = 0; half < 2; ++half) {
        const Lanes sum = re[half] * pitch.Re[half] - im[half] * pitch.Im[half] + weight.Re;
        im[half] = re[half] * pitch.Im[half] + im[half] * pitch.Re[half] + weight.Im;
        re[half] = sum;
      }
    }
    for (std::size_t half = 0; half < 2; ++half) {
      StoreLanes(&points.Re[point + 4 * half], re[half] * turn.Re[half] - im[half] * turn.Im[half]);
      StoreLanes(&points.Im[point + 4 * half], re[half] * turn.Im[half] + im[half] * turn.Re[half]);
    }
    pitch.Advance();
    turn.Advance();
  }
}

/// Catmull-Rom weights of the points -1, 0, 1, 2 at u in [0, 1).
std::array<float, 4> CubicWeights(float u) {
  return {((-0.5F * u + 1) * u - 0.5F) * u, (1.5F * u - 2.5F) * u * u + 1, ((-1.5F * u + 2) * u + 0.5F) * u,
          (0.5F * u - 0.5F) * u * u};
}

/// Spreads points[1], points[2], ... to `stride` frames each; stride is a power of two.
void Interpolate(const std::array<float, kPadded>& points, std::size_t stride, std::span<float> frames) {
  std::array<std::array<float, kMaxSliceFrames / kMaxPoints>, 4> weights{};
  for (std::size_t part = 0; part < stride; ++part) {
    const auto cubic = CubicWeights(static_cast<float>(part) / static_cast<float>(stride));
    for (std::size_t tap = 0; tap < 4; ++tap) weights[tap][part] = cubic[tap];
  }
  for (std::size_t part = 0; part < stride; part += 4) {
    const Lanes w0 = LoadLanes(&weights[0][part]);
    const Lanes w1 = LoadLanes(&weights[1][part]);
    const Lanes w2 = LoadLanes(&weights[2][part]);
    const Lanes w3 = LoadLanes(&weights[3][part]);
    const float* point = points.data();
    for (std::size_t frame = part; frame < frames.size(); frame += stride, ++point) {
      const Lanes lanes = w0 * point[0] + w1 * point[1] + w2 * point[2] + w3 * point[3];
      if (stride >= 4) {
        StoreLanes(&frames[frame], lanes);
      } else {
        for (std::size_t i = 0; i < stride; ++i) frames[frame + i] = lanes[static_cast<int>(i)];
      }
    }
  }
}

}  // namespace

void AddHarmonics(std::span<const float> envelope, PhaseLine carrier, PhaseLine pitch,
                  const HarmonicBank& bank, SliceBuffer& out) {
  // The middle harmonic goes into the carrier, so that the rest varies slowly enough to interpolate.
  const int middle = bank.First + bank.Count / 2;
  const std::size_t stride = std::max<std::size_t>(1, envelope.size() / kMaxPoints);
  const PhaseLine perPoint{pitch.Cycles - static_cast<double>(stride) * pitch.CyclesPerFrame,
                           pitch.CyclesPerFrame * static_cast<double>(stride)};
  PointBuffer points;
  SumHarmonics(bank, Rotator(perPoint), Rotator((bank.First - middle) * perPoint), points);

  SliceBuffer sum;
  Interpolate(points.Re, stride, std::span(sum.Re).first(envelope.size()));
  Interpolate(points.Im, stride, std::span(sum.Im).first(envelope.size()));
  Rotator tone(carrier + middle * pitch);
  for (std::size_t frame = 0; frame < envelope.size(); frame += kKernelFrames) {
    for (std::size_t half = 0; half < 2; ++half) {
      const std::size_t at = frame + 4 * half;
      const Lanes re = LoadLanes(&envelope[at]) * LoadLanes(&sum.Re[at]);
      const Lanes im = LoadLanes(&envelope[at]) * LoadLanes(&sum.Im[at]);
      StoreLanes(&out.Re[at], LoadLanes(&out.Re[at]) + re * tone.Re[half] - im * tone.Im[half]);
      StoreLanes(&out.Im[at], LoadLanes(&out.Im[at]) + re * tone.Im[half] + im * tone.Re[half]);
    }
    tone.Advance();
  }
}

}  // namespace spectrino
