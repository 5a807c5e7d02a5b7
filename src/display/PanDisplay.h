// The panadapter picture: takes frames and paints them with scale, waterfall and overlays.
// No widget: whoever owns one calls Prepare, then Paint for the pixels that it names. What is under the
// pointer is PlotPointer's.
#pragma once

#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QRegion>
#include <QSize>
#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "display/FrameTraces.h"
#include "display/InsetPlace.h"
#include "display/Legend.h"
#include "display/MarkerPainter.h"
#include "display/PlotBasis.h"
#include "display/PlotPointer.h"
#include "display/ScalePainter.h"
#include "display/StatusInset.h"
#include "display/TracePainter.h"
#include "display/WaterfallImage.h"
#include "state/FrameSink.h"
#include "state/StatusArea.h"

namespace spectrino {

/// All x of FrameGeometry and all sizes of PlotLayout are device pixels here; only Resize, SetHover and At
/// take logical ones.
class PanDisplay : public FrameSink {
 public:
  void Resize(QSize logical, double devicePixelRatio);
  void SetOptions(const DisplayOptions& options);
  void SetMarkers(std::span<const PlotMarker> markers);
  /// The strip on the frequency axis; an empty plan has none.
  void SetBandPlan(BandPlan plan);
  void SetInfoText(std::string text);
  /// The inset; one that is not Shown draws nothing. lowMHz, highMHz: the tuned signal, which it must not
  /// hide.
  void SetStatus(StatusArea area, double lowMHz, double highMHz);
  /// Pointer position in logical pixels; nothing while it is outside.
  void SetHover(std::optional<QPointF> logical);
  /// What the pointer would take hold of, told beside it; empty: nothing.
  void SetPointerNote(std::string note);
  /// Outlines where the inset would go while it is carried.
  void ShowInsetTarget(std::optional<InsetPlace> place);
  /// The picture is no longer live: dimmed, with the time of its last line, until nothing is given.
  void SetStopped(std::optional<std::chrono::system_clock::time_point> lastLineUtc);
  /// While set, new waterfall lines are half as bright.
  void SetTransmitting(bool transmitting) { transmitting_ = transmitting; }

  /// Device pixels: what the run cycle makes its geometry for.
  [[nodiscard]] double PlotWidth() const override { return basis_.Layout.PlotWidth; }
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

  /// What is at a logical position, until the next call of anything else.
  [[nodiscard]] PlotPointer At(QPointF logical);
  [[nodiscard]] QColor BackgroundColour() const;
  [[nodiscard]] const PlotLayout& Layout() const { return basis_.Layout; }
  /// As it would be without the inset.
  [[nodiscard]] const PlotLayout& BareLayout() const { return bareLayout_; }
  /// Of the newest frame or scale, whichever came last.
  [[nodiscard]] const FrameGeometry& Geometry() const { return basis_.Scale.Geometry; }
  [[nodiscard]] const ScaleLines& Scale() const { return scalePainter_.Lines(); }
  [[nodiscard]] const WaterfallImage& Waterfall() const { return waterfall_; }

 private:
  void LayOut();
  void SetGeometry(const FrameGeometry& geometry);
  void UpdatePlot();
  void PaintOverlays(QPainter& painter);
  void PaintHover(const OverlayPen& pen);

  QSize logicalSize_;
  PlotBasis basis_;
  PlotLayout bareLayout_;
  std::vector<PlotMarker> markers_;
  std::string infoText_;
  std::optional<QPointF> hover_;  ///< logical pixels
  std::string pointerNote_;
  std::optional<InsetPlace> insetTarget_;
  HoverLine hoverLine_;  ///< as it was when a repaint was asked for last
  bool transmitting_ = false;
  std::optional<std::chrono::system_clock::time_point> stoppedAt_;

  FrameTraces traces_;
  ScalePainter scalePainter_;
  TracePainter tracePainter_;
  WaterfallImage waterfall_;
  StatusInset inset_;
  Legend legend_;
  QImage background_;  ///< the scale with the passbands

  bool allChanged_ = true;  ///< since the last Prepare, with all that lies over the trace
  bool lineAdded_ = false;
  bool scaleDirty_ = true;
  bool backgroundDirty_ = true;
  bool traceDirty_ = true;
};

}  // namespace spectrino
