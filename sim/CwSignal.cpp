#include "sim/CwSignal.h"

#include <algorithm>
#include <array>

#include "sim/Morse.h"

namespace spectrino {

namespace {

// Shorter edges click, longer ones make fast keying soft. Shorter than a dit at any speed in use.
constexpr double kEdgeS = 0.006;

}  // namespace

CwSignal::CwSignal(double patternHz, const Fading& fading, const Keying& keying, int rateHz)
    : DemoSignal(patternHz, 200), fading_(fading) {
  const double ditFrames = 1.2 / keying.WordsPerMinute * rateHz;
  for (const MorseMark& mark : MorseMarks(keying.Text)) {
    marks_.push_back({std::llround(mark.StartDits * ditFrames), std::llround(mark.EndDits * ditFrames)});
  }
  edge_.resize(static_cast<std::size_t>(std::ceil(kEdgeS * rateHz)));
  const double step = std::numbers::pi / static_cast<double>(edge_.size());
  for (std::size_t i = 0; i < edge_.size(); ++i) {
    edge_[i] = static_cast<float>(0.5 - 0.5 * std::cos(step * static_cast<double>(i)));
  }
  const std::int64_t textFrames = marks_.empty() ? 0 : marks_.back().End;
  cycleFrames_ = textFrames + std::llround(std::max(keying.PauseS, 2 * kEdgeS) * rateHz);
}

float CwSignal::KeyLevel(const Mark& mark, std::int64_t frame) const {
  const auto edgeFrames = static_cast<std::int64_t>(edge_.size());
  const std::int64_t sinceDown = frame - mark.Start;
  const std::int64_t sinceUp = frame - mark.End;
  if (sinceDown < 0 || sinceUp >= edgeFrames) return 0;
  if (sinceUp >= 0) return 1 - edge_[static_cast<std::size_t>(sinceUp)];
  return sinceDown < edgeFrames ? edge_[static_cast<std::size_t>(sinceDown)] : 1;
}

void CwSignal::AddTo(const Slice& slice, const Placement& place, SliceBuffer& out) {
  const auto edgeFrames = static_cast<std::int64_t>(edge_.size());
  const std::int64_t shift = std::llround(place.TimeShiftS * slice.RateHz);
  const std::int64_t first = (static_cast<std::int64_t>(slice.FirstFrame) + shift) % cycleFrames_;
  const std::int64_t last = first + slice.Frames;  // may pass the cycle's end, which lies in the pause

  auto mark = std::partition_point(marks_.begin(), marks_.end(),
                                   [&](const Mark& m) { return m.End + edgeFrames <= first; });
  const bool wraps = last > cycleFrames_;
  if (!wraps && (mark == marks_.end() || mark->Start >= last)) return;

  std::array<float, kMaxSliceFrames> envelope;
  const std::span<float> used(envelope.data(), static_cast<std::size_t>(slice.Frames));
  const double start = slice.StartS() + place.TimeShiftS;
  FillRamp(used, fading_.AmplitudeAt(start) * place.Gain,
           fading_.AmplitudeAt(start + slice.LengthS()) * place.Gain);
  if (wraps || mark->Start + edgeFrames > first || mark->End < last) {
    std::int64_t frame = first;
    for (float& gain : used) {
      while (mark != marks_.end() && mark->End + edgeFrames <= frame) ++mark;
      gain *= mark != marks_.end() ? KeyLevel(*mark, frame) : 0.0F;
      if (++frame == cycleFrames_) {
        frame = 0;
        mark = marks_.begin();
      }
    }
  }
  AddTone(used, Rotator(CarrierOf(slice, place)), out);
}

void CarrierSignal::AddTo(const Slice& slice, const Placement& place, SliceBuffer& out) {
  std::array<float, kMaxSliceFrames> envelope;
  const std::span<float> used(envelope.data(), static_cast<std::size_t>(slice.Frames));
  const double start = slice.StartS() + place.TimeShiftS;
  FillRamp(used, fading_.AmplitudeAt(start) * place.Gain,
           fading_.AmplitudeAt(start + slice.LengthS()) * place.Gain);
  AddTone(used, Rotator(CarrierOf(slice, place)), out);
}

}  // namespace spectrino
