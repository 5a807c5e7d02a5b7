// The waterfall with what lies behind it: takes frames, joins those of a slow one to rows, keeps them and
// shows the newest of them or an earlier piece. Draws the picture, the time column and the label of an
// earlier piece.
#pragma once

#include <QColor>
#include <QPainter>
#include <QPointF>
#include <QRect>
#include <chrono>
#include <optional>
#include <span>
#include <string>

#include "display/Legend.h"
#include "display/PlotBasis.h"
#include "display/WaterfallImage.h"
#include "dsp/LineJoin.h"
#include "dsp/LinePast.h"
#include "state/FrameSink.h"

namespace spectrino {

/// Pixels are device pixels of the whole picture.
class WaterfallPast {
 public:
  /// Options or layout are others than before.
  void LayOut(const PlotBasis& basis);
  /// While set, new lines are half as bright.
  void SetTransmitting(bool transmitting) { transmitting_ = transmitting; }
  void Clear();

  /// What the row of this frame shows, by point index, until the next call: the frame's own levels, or what
  /// it and those before it in the row come to.
  [[nodiscard]] std::span<const float> RowLevels(const Frame& frame, const FrameGeometry& geometry,
                                                 const DisplayOptions& options);
  /// The row that RowLevels told. columns: the same, one per column of the plot.
  /// unitsPerDb: of its levels.
  void Take(const Frame& frame, std::span<const float> columns, float unitsPerDb);
  /// The scale shows another piece of the band.
  void SetRange(const FrameGeometry& geometry);

  /// So many rows back, or towards now where negative.
  void ScrollBy(int rows);
  void ShowNow();
  [[nodiscard]] bool Live() const { return image_.Live(); }
  [[nodiscard]] const WaterfallImage& Image() const { return image_; }
  /// "12:31:05 UTC, 4 min 10 s ago"; empty while the newest line is shown.
  [[nodiscard]] std::string Ago() const;
  /// When the newest line was taken, shown or not.
  [[nodiscard]] std::optional<std::chrono::system_clock::time_point> NewestUtc() const;
  /// On the label of an earlier piece, which leads back to now.
  [[nodiscard]] bool OnLabel(QPointF at) const { return !Live() && label_.contains(at.toPoint()); }
  /// For a picture that is kept: nothing in it is there to be clicked.
  void HideLabel(bool hide) { labelHidden_ = hide; }

  /// What differs on the screen since the last call, beyond what LineAdded tells.
  [[nodiscard]] bool TakeChanged();
  /// A row came or grew since the last call, and is shown.
  [[nodiscard]] bool TakeLineAdded();
  void Paint(QPainter& painter, const PlotLayout& layout, QColor background) const;
  /// Over the picture: times, the palette, where it stands in the past, and the label.
  void PaintOverlays(const OverlayPen& pen, const QFont& timeFont, const QFont& labelFont);

 private:
  void PaintPlace(const OverlayPen& pen) const;
  void PaintLabel(const OverlayPen& pen, const QFont& font);

  LinePast past_;
  WaterfallImage image_{past_};
  LineJoin join_;
  std::span<const float> row_;  ///< as RowLevels told it
  FrameGeometry geometry_;
  Legend legend_;
  bool transmitting_ = false;
  bool changed_ = false;
  bool lineAdded_ = false;
  bool labelHidden_ = false;
  std::string shownAgo_;  ///< as it was when a repaint was asked for last
  QRect label_;
};

/// Where the waterfall's times stand: the wheel turns back in time there.
[[nodiscard]] bool InTimeColumn(const PlotLayout& layout, QPointF at);

}  // namespace spectrino
