#include "display/FrameTraces.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace spectrino {

void FrameTraces::Fit(int columns) {
  if (trace_.size() == static_cast<std::size_t>(columns)) return;
  trace_.assign(static_cast<std::size_t>(columns), kUndrawnLevel);
  peak_.clear();
}

void FrameTraces::Show(const Frame& frame, const FrameGeometry& geometry, std::span<const float> waterfall) {
  const SpectrumLine& line = frame.Line;
  const auto map = [&](ColumnMap& mapping, std::span<const float> levels, std::vector<float>& columns) {
    const int end = std::min(line.EndIndex(), static_cast<int>(levels.size()));
    columns.resize(static_cast<std::size_t>(geometry.PlotWidth));
    mapping.Map(geometry, line.FirstIndex, end, levels, columns);
  };
  map(traceMap_, frame.DisplayLevel, trace_);
  frame_.assign(frame.DisplayLevel.begin(), frame.DisplayLevel.end());
  frameFirst_ = line.FirstIndex;
  if (frame.BackgroundPeak.empty()) {
    peak_.clear();
  } else {
    map(peakMap_, frame.BackgroundPeak, peak_);
  }
  if (waterfall.data() != frame.DisplayLevel.data())
    map(newestMap_, waterfall, newest_);
  else
    newest_.clear();
}

void FrameTraces::Remap(const FrameGeometry& before, const FrameGeometry& now) {
  const auto mhzAt = [](const FrameGeometry& geometry, int point) {
    return geometry.FrequencyAt(geometry.PointX(point));
  };
  const int end = static_cast<int>(frame_.size());
  constexpr double kSameMHz = 1e-9;
  const bool samePoints = now.Valid() && before.Valid() && end > 0 &&
                          std::abs(mhzAt(now, 0) - mhzAt(before, 0)) < kSameMHz &&
                          std::abs(mhzAt(now, end) - mhzAt(before, end)) < kSameMHz;
  if (!samePoints) {
    Clear();
    return;
  }
  peak_.clear();
  trace_.resize(static_cast<std::size_t>(now.PlotWidth));
  traceMap_.Map(now, frameFirst_, end, frame_, trace_);
}

void FrameTraces::Clear() {
  frame_.clear();
  std::ranges::fill(trace_, kUndrawnLevel);
  peak_.clear();
}

}  // namespace spectrino
