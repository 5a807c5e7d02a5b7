// Where the run cycle's frames go. The display implements it; the run cycle knows nothing of pictures.
#pragma once

#include <optional>
#include <span>

#include "state/FrameGeometry.h"
#include "state/ScaleState.h"
#include "state/SpectrumLine.h"

namespace spectrino {

/// One finished frame. The spans point into the run cycle's buffers and hold until the call returns.
struct Frame {
  const SpectrumLine& Line;
  const FrameGeometry& Geometry;
  std::span<const float> DisplayLevel;    ///< by point index, like Line.Levels
  std::span<const float> BackgroundPeak;  ///< the same; empty while peak hold is off
  std::span<const float> NewestLevel{};   ///< the same, of this line alone; empty: DisplayLevel is
  std::optional<LevelRange> Colours{};    ///< of its waterfall line; empty: the line's own range
};

class FrameSink {
 public:
  virtual ~FrameSink() = default;
  /// Width of the plot in pixels, the dB label column not counted.
  [[nodiscard]] virtual double PlotWidth() const = 0;
  virtual void ShowFrame(const Frame& frame) = 0;
  /// The scale as it is now; drawn anew with the next repaint when it differs from the last one given.
  virtual void DrawScale(const ScaleState& scale) = 0;
  /// Forgets trace and waterfall; Start does so.
  virtual void ClearFrames() = 0;
};

}  // namespace spectrino
