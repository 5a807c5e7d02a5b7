// The whole panadapter picture: takes frames from the run cycle and paints plot, waterfall and overlays.
// Opens no window and decides nothing; a widget hands it size, pointer and painter.
#pragma once

#include <QImage>
#include <QPointF>
#include <QSize>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "display/Colours.h"
#include "display/Overlays.h"
#include "display/PlotLayout.h"
#include "display/ScalePainter.h"
#include "display/TracePainter.h"
#include "display/WaterfallImage.h"
#include "state/FrameSink.h"

namespace spectrino {

class DisplayTrace;

struct DisplayOptions {
  DisplayColours Colours{};
  bool Fill = true;
  bool ShowSubDivisions = false;
  bool ShowMHz = true;
  int WaterfallSel = 0;  ///< 0 off, 1 an eighth, 2 a quarter, 3 half

  bool operator==(const DisplayOptions&) const = default;
};

/// All x of the frame geometry are device pixels; pointer positions come in logical ones and are converted
/// here. Every frame enters the waterfall; the picture is composed when it is painted, however many came.
class PanDisplay : public FrameSink {
 public:
  PanDisplay();
  ~PanDisplay() override;

  /// Keeps trace and waterfall, laid out anew. devicePixelRatio: above 0.
  void Resize(QSize logical, double devicePixelRatio);
  void SetOptions(const DisplayOptions& options);
  void SetMarkers(std::span<const PlotMarker> markers);
  void SetInfoText(std::string text);
  /// The pointer in logical pixels of the picture; nothing when it is elsewhere.
  void SetHover(std::optional<QPointF> pointer);
  /// Lines that follow enter the waterfall at half brightness: the radio transmits.
  void SetDimmed(bool isDimmed);

  /// Plot width in device pixels; 0 before the first Resize.
  [[nodiscard]] double PlotWidth() const override { return layout_.PlotWidth; }
  void ShowFrame(const Frame& frame) override;
  void DrawScale(const ScaleState& scale) override;
  void ClearFrames() override;

  /// Paints the picture with its top left corner at the painter's origin; logical coordinates.
  void Paint(QPainter& painter);
  /// Whether the picture has changed since the last call.
  [[nodiscard]] bool TakeDirty();

  [[nodiscard]] const PlotLayout& Layout() const { return layout_; }
  /// Of the last frame or scale; PlotWidth in device pixels.
  [[nodiscard]] const FrameGeometry& Geometry() const { return geometry_; }
  /// x in device pixels from the plot's left edge, y from its top edge: what FrameGeometry takes.
  [[nodiscard]] QPointF LogicalToPlot(QPointF logical) const;
  /// Frequency under the pointer in MHz; 0 outside the plot.
  [[nodiscard]] double HoverFreqMHz() const;
  /// Level of the trace at the pointer's column; kUndrawnLevel where there is none.
  [[nodiscard]] float HoverLevel() const;
  /// The waterfall's line under a logical position; nothing outside the lines held.
  [[nodiscard]] std::optional<WaterfallRow> RowAt(QPointF logical) const;

 private:
  void UpdateLayout();
  void MarkDirty();
  void Compose();
  void ComposeOverlays();
  void PaintWaterfall(QPainter& painter) const;
  [[nodiscard]] std::optional<int> HoverColumn() const;
  [[nodiscard]] std::string HoverLabel() const;

  DisplayOptions options_;
  QSize logicalSize_;
  double devicePixelRatio_ = 1;
  QFont font_;
  PlotLayout layout_;

  ScaleState scale_;
  FrameGeometry geometry_;
  std::vector<PlotMarker> markers_;
  std::string infoText_;
  std::optional<QPointF> pointer_;
  bool isDimmed_ = false;

  std::unique_ptr<DisplayTrace> columns_;
  std::vector<float> trace_;  ///< level by column
  std::vector<float> peak_;   ///< the same; empty while peak hold is off
  WaterfallImage waterfall_;
  ScalePainter scalePainter_;
  TracePainter tracePainter_;
  QImage picture_;  ///< everything above the waterfall, as last composed

  bool isComposed_ = false;
  bool isDirty_ = true;
};

}  // namespace spectrino
