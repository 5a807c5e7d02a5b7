#include "sim/DemoBand.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "sim/HashRandom.h"

namespace spectrino {

namespace {

// -122 dB at 8192 points, and enough to keep signals far below one step of the converter linear.
constexpr double kNoisePerChannel = 0.72;
constexpr double kZeroHzLevelDb = -98;
constexpr double kSidebandChangeHz = 10e6;  // voices use the lower sideband below
constexpr double kBandEdgeShare = 0.015;    // slope of the converter's input filter, as a share of the rate

/// A power of two that lasts 1.3 to 1.5 ms at every rate.
int SliceFramesFor(int rateHz) {
  int frames = 16;
  while (frames < kMaxSliceFrames && frames * 1000 < rateHz) frames *= 2;
  return frames;
}

/// Independent bell-shaped noise for both channels from one hash: the sum of four bytes each.
struct NoisePair {
  float Left;
  float Right;
};

NoisePair NoiseAt(std::uint64_t key, std::uint64_t frame) {
  constexpr std::uint64_t kEven = 0x00FF00FF00FF00FFU;
  constexpr float kMean = 510;
  constexpr auto kScale = static_cast<float>(kNoisePerChannel / 147.8);  // deviation of the sum
  const std::uint64_t hash = Mix(key + frame * 0xD1342543DE82EF95U);
  const std::uint64_t pairs = (hash & kEven) + ((hash >> 8) & kEven);
  const std::uint64_t sums = pairs + (pairs >> 16);
  return {(static_cast<float>(static_cast<int>(sums & 0xFFFFU)) - kMean) * kScale,
          (static_cast<float>(static_cast<int>((sums >> 32) & 0xFFFFU)) - kMean) * kScale};
}

std::int16_t ToSample(float value) {
  // Positive before the cut, so that it rounds instead of pulling towards zero.
  const float clamped = std::clamp(value, -32767.0F, 32767.0F);
  return static_cast<std::int16_t>(static_cast<int>(clamped + 32768.5F) - 32768);
}

}  // namespace

bool IsSoundRate(int rateHz) {
  return std::find(kSoundRatesHz.begin(), kSoundRatesHz.end(), rateHz) != kSoundRatesHz.end();
}

DemoBand::DemoBand(int rateHz, std::uint32_t seed)
    : rateHz_(rateHz),
      sliceFrames_(SliceFramesFor(rateHz)),
      noiseKey_(Mix(seed, 4)),
      signals_(MakeDemoSignals(rateHz, seed)) {
  assert(IsSoundRate(rateHz));
  visible_.reserve(signals_.size());
}

void DemoBand::Retune(double centreMHz) {
  centreMHz_ = centreMHz;
  sliceNumber_.reset();
  visible_.clear();
  const double centreHz = centreMHz * 1e6;
  for (const auto& signal : signals_) {
    // The band repeats after more than the widest view, so each signal is in view once at most.
    const double offsetHz = std::remainder(signal->PatternHz - centreHz, kPatternHz);
    const double roomHz = 0.5 * rateHz_ - std::abs(offsetHz) - signal->HalfWidthHz;
    if (roomHz <= 0) continue;
    const auto repetition =
        static_cast<std::int64_t>(std::llround((centreHz + offsetHz - signal->PatternHz) / kPatternHz));
    Placement place;
    place.OffsetHz = offsetHz;
    place.TimeShiftS = Between(Mix(noiseKey_, static_cast<std::uint64_t>(repetition)), 0, 600);
    place.LowerSideband = centreHz + offsetHz < kSidebandChangeHz;
    place.Gain = std::min(1.0, roomHz / (kBandEdgeShare * rateHz_));
    visible_.push_back({signal.get(), place});
  }
}

void DemoBand::RenderSlice(std::uint64_t number) {
  sliceNumber_ = number;
  const Slice slice{number * static_cast<std::uint64_t>(sliceFrames_), sliceFrames_, rateHz_};
  SliceBuffer sum;
  for (const Visible& visible : visible_) visible.Signal->AddTo(slice, visible.Place, sum);
  const auto zeroHz = static_cast<float>(AmplitudeOf(kZeroHzLevelDb));
  for (std::size_t i = 0; i < static_cast<std::size_t>(sliceFrames_); ++i) {
    const NoisePair noise = NoiseAt(noiseKey_, slice.FirstFrame + i);
    slice_[2 * i] = ToSample(sum.Re[i] + noise.Left + zeroHz);
    slice_[2 * i + 1] = ToSample(noise.Right - sum.Im[i]);
  }
}

void DemoBand::Render(std::uint64_t firstFrame, double centreMHz, std::span<std::int16_t> block) {
  // A radio link may deliver anything; only a frequency can be tuned to.
  if (!std::isfinite(centreMHz) || centreMHz < 0) centreMHz = 0;
  if (centreMHz_ != centreMHz) Retune(centreMHz);
  const auto sliceFrames = static_cast<std::uint64_t>(sliceFrames_);
  const std::uint64_t end = firstFrame + block.size() / 2;
  auto to = block.begin();
  for (std::uint64_t frame = firstFrame; frame < end;) {
    const std::uint64_t number = frame / sliceFrames;
    if (sliceNumber_ != number) RenderSlice(number);
    const std::uint64_t stop = std::min(end, (number + 1) * sliceFrames);
    const auto skip = static_cast<std::ptrdiff_t>(2 * (frame - number * sliceFrames));
    to = std::copy_n(slice_.begin() + skip, 2 * (stop - frame), to);
    frame = stop;
  }
}

}  // namespace spectrino
