// The panadapter picture: takes frames, keeps trace and waterfall, paints them with scale and overlays.
// No widget: whoever owns one calls Prepare, then Paint for the pixels that it names.
#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QRegion>
#include <QSize>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "display/MarkerPainter.h"
#include "display/PlotLayout.h"
#include "display/ScalePainter.h"
#include "display/StatusLayout.h"
#include "display/TextCache.h"
#include "display/TracePainter.h"
#include "display/WaterfallImage.h"
#include "dsp/DisplayTrace.h"
#include "settings/ColourTable.h"
#include "state/FrameSink.h"
#include "state/StatusArea.h"

namespace spectrino {

struct DisplayOptions {
  ColourTable Colours = kColoursK4;
  bool Fill = true;
  bool SubD = false;
  bool MHz = true;
  int WaterfallSel = 0;   ///< 0 off, 1 one eighth, 2 a quarter, 3 half
  bool WFFollow = false;  ///< older waterfall lines stay at their frequencies

  bool operator==(const DisplayOptions&) const = default;
};

enum class MiniPanPassband { None, Main, Sub };

/// All x of FrameGeometry and all sizes of PlotLayout are device pixels here; only Resize, SetHover and
/// LogicalToPlot take logical ones.
class PanDisplay : public FrameSink {
 public:
  void Resize(QSize logical, double devicePixelRatio);
  void SetOptions(const DisplayOptions& options);
  void SetMarkers(std::span<const PlotMarker> markers);
  void SetInfoText(std::string text);
  /// The inset; one that is not Shown draws nothing. lowMHz, highMHz: the tuned signal, which it must not
  /// hide.
  void SetStatus(StatusArea area, double lowMHz, double highMHz);
  /// Pointer position in logical pixels; nothing while it is outside.
  void SetHover(std::optional<QPointF> logical);
  /// While set, new waterfall lines are half as bright.
  void SetTransmitting(bool transmitting) { transmitting_ = transmitting; }

  /// Device pixels: what the run cycle makes its geometry for.
  [[nodiscard]] double PlotWidth() const override { return layout_.PlotWidth; }
  /// Maps the levels to columns and adds a line to the waterfall; paints nothing. A frame made for another
  /// width is shown in this one.
  void ShowFrame(const Frame& frame) override;
  void DrawScale(const ScaleState& scale) override;
  void ClearFrames() override;

  /// Paints everything with the top left corner at the painter's origin, device pixel by device pixel of a
  /// device with the ratio given to Resize. The painter's pen and font are left as they were.
  void Paint(QPainter& painter);
  /// Draws what came since the last call and tells which pixels differ for it; empty when none do. Device
  /// pixels.
  [[nodiscard]] QRegion Prepare();

  [[nodiscard]] QColor BackgroundColour() const;
  [[nodiscard]] const PlotLayout& Layout() const { return layout_; }
  /// Of the newest frame or scale, whichever came last.
  [[nodiscard]] const FrameGeometry& Geometry() const { return scale_.Geometry; }
  [[nodiscard]] const ScaleLines& Scale() const { return scalePainter_.Lines(); }
  [[nodiscard]] const WaterfallImage& Waterfall() const { return waterfall_; }
  /// A logical position in device pixels, as FrameGeometry counts them.
  [[nodiscard]] QPointF LogicalToPlot(QPointF logical) const { return logical * layout_.Scale; }
  /// Where a click at a logical position tunes to, MHz: in the plot, or in the waterfall to what stood there.
  /// 0 anywhere else, and while the radio's frequency is unknown.
  [[nodiscard]] double TuneFreqMHz(QPointF logical) const;
  /// In the last 22 logical pixels, beside the plot.
  [[nodiscard]] bool InRightStrip(QPointF logical) const;
  /// Which mini-pan's passband is under a logical position.
  [[nodiscard]] MiniPanPassband MiniPanPassbandAt(QPointF logical);
  /// Frequency under the pointer; 0 outside the plot (the waterfall is outside).
  [[nodiscard]] double HoverFreqMHz() const;
  /// Level shown under the pointer, in plot or waterfall; kUndrawnLevel where there is none.
  [[nodiscard]] float HoverLevel() const;

 private:
  void LayOut();
  void SetGeometry(const FrameGeometry& geometry);
  void Remap(const FrameGeometry& before);
  void UpdatePlot();
  void PaintOverlays(QPainter& painter);
  void PaintStatus(QPainter& painter);
  const StatusPlaces& Places();
  [[nodiscard]] std::optional<int> HoverColumn() const;
  [[nodiscard]] std::string TextUnderPointer() const;
  [[nodiscard]] int HoverRow() const;

  QSize logicalSize_;
  DisplayOptions options_;
  PlotLayout layout_;
  QFont labelFont_;
  QFont textFont_;
  QFont flagFont_;
  ScaleState scale_;
  std::vector<PlotMarker> markers_;
  std::string infoText_;
  StatusArea status_;
  double tunedLowMHz_ = 0;
  double tunedHighMHz_ = 0;
  std::optional<QPointF> hover_;  ///< device pixels
  bool transmitting_ = false;

  DisplayTrace traceMap_;
  DisplayTrace peakMap_;
  std::vector<float> frame_;  ///< levels by point, of the newest frame
  int frameFirst_ = 0;        ///< index of its first point
  std::vector<float> trace_;  ///< levels by column
  std::vector<float> peak_;   ///< empty while the background peak is off
  ScalePainter scalePainter_;
  TracePainter tracePainter_;
  WaterfallImage waterfall_;
  QImage background_;  ///< the scale with the passbands

  TextCache texts_;
  int textHeight_ = 0;      ///< of textFont_
  bool allChanged_ = true;  ///< since the last Prepare, with all that lies over the trace
  bool lineAdded_ = false;
  StatusPlaces places_;
  bool placesStale_ = true;
  QImage statusPicture_;
  bool statusStale_ = true;     ///< the picture
  bool statusChanged_ = false;  ///< since the last Prepare
  QRect statusBox_;             ///< of the inset as it was last asked for
  bool scaleDirty_ = true;
  bool backgroundDirty_ = true;
  bool traceDirty_ = true;
};

}  // namespace spectrino
