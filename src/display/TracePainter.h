// The trace, its fill and the background peak, written straight into the pixels.
// Draws levels that are already one per pixel column; grid and overlays are drawn elsewhere.
#pragma once

#include <QImage>
#include <QRegion>
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
  /// here, once, so that a frame only chooses between the two. Without fill only the line is drawn. Picture()
  /// is plain until the next Draw.
  void SetBackground(const QImage& plain, const PlotLayout& layout, const ColourTable& colours, bool fill);

  /// Draws the frame into Picture(), where only what differs from the last frame is touched. plain: as given
  /// to SetBackground. levels: PlotWidth columns each.
  void Draw(const QImage& plain, const TraceLevels& levels, const LevelScale& scale);

  /// Where Picture() differs from what it was at the last call, in tiles; meaningless after SetBackground,
  /// when everything may differ.
  [[nodiscard]] QRegion TakeChanged();

  /// As large as plain; plain but for the plot's columns 0..PlotWidth-1 from TopMargin to PlotBottom.
  [[nodiscard]] const QImage& Picture() const { return picture_; }

 private:
  using Heights = std::vector<float>;  ///< y of each column in the plot; kNoHeight where undrawn
  struct Rows {
    std::int32_t First = 0;
    std::int32_t End = 0;
  };

  static void Widen(Rows& rows, Rows more);
  void FindHeights(std::span<const float> levels, const LevelScale& scale, Heights& heights) const;
  [[nodiscard]] std::int32_t FirstFilled(float height) const;
  void FillAll(const QImage& plain);
  void FillChanged(const QImage& plain);
  [[nodiscard]] Rows Cover(const Heights& heights, std::size_t x);
  void DrawLine(const Heights& heights, QRgb colour);

  PlotLayout layout_;
  QRgb lineColour_ = 0;
  QRgb peakColour_ = 0;
  bool fill_ = false;
  bool fresh_ = true;  ///< nothing was drawn over this background yet
  QImage picture_;
  QImage filled_;  ///< the plot under the fill's gradient
  Heights heights_;
  Heights peakHeights_;
  std::vector<std::int32_t> firstFilled_;  ///< by column: first row of the plot below the trace
  std::vector<Rows> lineRows_;             ///< by column: where the lines of the last frame may have been
  std::vector<std::int32_t> coverage_;     ///< by the trace, of the column that is drawn
  std::vector<Rows> changed_;              ///< by tile, since the last TakeChanged
};

}  // namespace spectrino
