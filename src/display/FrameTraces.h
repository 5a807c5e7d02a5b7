// The levels of the newest frame, column by column of the plot: the trace and the background peak.
// Maps and keeps them; TracePainter draws them, WaterfallImage takes its lines from them.
#pragma once

#include <span>
#include <vector>

#include "display/TracePainter.h"
#include "dsp/ColumnMap.h"
#include "state/FrameGeometry.h"
#include "state/FrameSink.h"

namespace spectrino {

class FrameTraces {
 public:
  /// The plot has this many columns now; the levels of others are forgotten.
  void Fit(int columns);
  /// geometry: the frame's, as wide as the plot. waterfall: levels of its row, by point index; the frame's
  /// DisplayLevel where they are those of the trace.
  void Show(const Frame& frame, const FrameGeometry& geometry, std::span<const float> waterfall);
  /// The levels belong to columns of the old mapping; a trace must not stand under other frequencies. Zoomed
  /// or panned, the same points still are where they were; of another line nothing is left.
  void Remap(const FrameGeometry& before, const FrameGeometry& now);
  /// Forgets the frame.
  void Clear();

  /// PlotWidth columns each; kUndrawnLevel where there is no level.
  [[nodiscard]] TraceLevels Levels() const { return {trace_, peak_}; }
  /// PlotWidth columns of the last frame shown.
  [[nodiscard]] std::span<const float> Waterfall() const { return newest_.empty() ? trace_ : newest_; }

 private:
  ColumnMap traceMap_;
  ColumnMap peakMap_;
  ColumnMap newestMap_;
  std::vector<float> frame_;  ///< levels by point
  int frameFirst_ = 0;        ///< index of its first point
  std::vector<float> trace_;
  std::vector<float> peak_;    ///< empty while the background peak is off
  std::vector<float> newest_;  ///< empty while the trace shows the newest levels
};

}  // namespace spectrino
