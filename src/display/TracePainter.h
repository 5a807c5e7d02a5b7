// Trace, gradient fill and background peak, written straight into the picture's rows.
// Knows neither frequencies nor points: one level per pixel column comes in.
#pragma once

#include <QImage>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "display/PlotLayout.h"
#include "state/ScaleState.h"

namespace spectrino {

struct TraceInput {
  std::span<const float> Levels;  ///< one per column of the plot; kUndrawnLevel: nothing to draw
  std::span<const float> Peak;    ///< the same for the background peak; empty: off
  LevelScale Scale;
  QRgb Signal = 0;
  QRgb BackgroundPeak = 0;
  std::optional<QRgb> Fill;  ///< nothing: line only
};

class TracePainter {
 public:
  /// Writes backdrop with the traces on it to picture, both RGB32 and of one size. Levels outside the scale
  /// are cut at the plot's edges.
  void Paint(const QImage& backdrop, const PlotLayout& layout, const TraceInput& input, QImage& picture);

 private:
  using Heights = std::vector<float>;  ///< y of a trace by column, from the plot's top; kNoLine: none

  void PrepareFilled(const QImage& backdrop, const PlotLayout& layout, QRgb fill);
  void PaintRows(const QImage& backdrop, const PlotLayout& layout, bool isFilled, QImage& picture);

  // The fill depends only on the row and on what lies under it, so it is blended once per backdrop; a frame
  // then takes each pixel from one picture or the other.
  QImage filled_;
  qint64 filledFrom_ = 0;  ///< cache key of the backdrop that filled_ was made of
  PlotLayout filledLayout_;
  QRgb filledWith_ = 0;

  Heights traceHeights_;
  Heights peakHeights_;
  std::vector<std::int32_t> firstRows_;  ///< first filled row of each column
};

}  // namespace spectrino
