// The trace, its fill and the background peak, written straight into the pixels.
// Draws levels that are already one per pixel column; grid and overlays are drawn elsewhere.
#pragma once

#include <QImage>
#include <cstdint>
#include <span>
#include <vector>

#include "display/PlotLayout.h"
#include "settings/ColourTable.h"
#include "state/ScaleState.h"

namespace spectrino {

/// What is drawn of one frame: levels by pixel column, kUndrawnLevel where there is none.
struct TraceLevels {
  std::span<const float> Trace;
  std::span<const float> BackgroundPeak;  ///< empty: not drawn
};

class TracePainter {
 public:
  /// plain: the picture without a trace, up to the bottom of the plot at least. The fill is blended over it
  /// here, once, so that a frame only selects between the two. Without fill only the line is drawn.
  void SetBackground(const QImage& plain, const PlotLayout& layout, const ColourTable& colours, bool fill);

  /// The plain picture with the frame's trace, into target (same size as plain). Only the plot is written:
  /// columns 0..PlotWidth-1 from TopMargin to PlotBottom. levels: PlotWidth columns each.
  void Draw(const QImage& plain, const TraceLevels& levels, const LevelScale& scale, QImage& target);

 private:
  using Heights = std::vector<float>;  ///< y of each column in the plot; kNoHeight where undrawn

  void FindHeights(std::span<const float> levels, const LevelScale& scale, Heights& heights) const;
  void FillBelow(const QImage& plain, QImage& target);
  void DrawLine(const Heights& heights, QRgb colour, QImage& target) const;

  PlotLayout layout_;
  QRgb lineColour_ = 0;
  QRgb peakColour_ = 0;
  bool fill_ = false;
  QImage filled_;  ///< the plot under the fill's gradient
  Heights heights_;
  Heights peakHeights_;
  std::vector<std::int32_t> firstFilled_;  ///< first row of the plot below the trace
};

}  // namespace spectrino
