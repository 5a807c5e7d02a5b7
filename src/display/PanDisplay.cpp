#include "display/PanDisplay.h"

#include <QFontMetrics>
#include <algorithm>
#include <cmath>
#include <utility>

#include "display/BandStrip.h"
#include "display/Blit.h"
#include "display/Colours.h"
#include "display/Overlays.h"
#include "display/RowKernels.h"
#include "display/StatusPainter.h"

namespace spectrino {
namespace {

// Logical pixels.
constexpr double kLabelFont = 9.5;
constexpr double kTextFont = 10.5;

}  // namespace

void PanDisplay::Resize(QSize logical, double devicePixelRatio) {
  if (logical == logicalSize_ && devicePixelRatio == basis_.Layout.Scale) return;
  logicalSize_ = logical;
  basis_.Layout.Scale = devicePixelRatio;
  basis_.LabelFont = DisplayFont(kLabelFont, devicePixelRatio);
  basis_.TextFont = DisplayFont(kTextFont, devicePixelRatio);
  basis_.FlagFont = DisplayFont(kTextFont, devicePixelRatio, true);
  basis_.Texts.Clear();
  basis_.TextHeight = QFontMetrics(basis_.TextFont).height();
  LayOut();
}

void PanDisplay::SetOptions(const DisplayOptions& options) {
  if (options == basis_.Options) return;
  basis_.Options = options;
  inset_.LookChanged();
  LayOut();
}

void PanDisplay::LayOut() {
  const DisplayOptions& options = basis_.Options;
  PlotLayout& layout = basis_.Layout;
  const double ratio = layout.Scale;
  const int width = static_cast<int>(std::lround(logicalSize_.width() * ratio));
  const int height = static_cast<int>(std::lround(logicalSize_.height() * ratio));
  PlotMargins margins = MarginsFor(basis_.LabelFont, ratio);
  if (!basis_.Plan.Empty()) margins.Strip = BandStripHeight(logicalSize_.height(), ratio);
  bareLayout_ = layout = LayoutPlot(width, height, ratio, options.WaterfallSel, margins);
  if (inset_.Shown()) {
    const InsetRoom room = RoomForInset(options.Inset, bareLayout_);
    margins.Beside = room.Beside;
    margins.Above = room.Above;
    layout = LayoutPlot(width, height, ratio, options.WaterfallSel, margins);
    layout.Inset = room.Place;
  }
  traces_.Fit(layout.PlotWidth);
  basis_.Scale.Geometry.PlotWidth = layout.PlotWidth;
  waterfall_.SetEmptyColour(ColourAt(options.Colours, ColourIndex::Background));
  waterfall_.SetFollow(options.WFFollow);
  waterfall_.SetLook(options.Waterfall);
  waterfall_.Resize(layout.PlotWidth, layout.WaterfallHeight);
  inset_.BasisMoved();
  scaleDirty_ = allChanged_ = true;
}

void PanDisplay::SetMarkers(std::span<const PlotMarker> markers) {
  if (std::ranges::equal(markers, markers_)) return;
  markers_.assign(markers.begin(), markers.end());
  backgroundDirty_ = allChanged_ = true;
}

void PanDisplay::SetBandPlan(BandPlan plan) {
  if (plan == basis_.Plan) return;
  basis_.Plan = std::move(plan);
  LayOut();
}

void PanDisplay::SetInfoText(std::string text) {
  if (text == infoText_) return;
  infoText_ = std::move(text);
  allChanged_ = true;
}

void PanDisplay::SetStatus(StatusArea area, double lowMHz, double highMHz) {
  const bool shown = inset_.Shown();
  if (inset_.Set(std::move(area), lowMHz, highMHz)) allChanged_ = true;
  if (inset_.Shown() != shown) LayOut();
}

void PanDisplay::SetStopped(std::optional<std::chrono::system_clock::time_point> lastLineUtc) {
  if (lastLineUtc == stoppedAt_) return;
  stoppedAt_ = lastLineUtc;
  allChanged_ = true;
}

void PanDisplay::SetHover(std::optional<QPointF> logical) {
  if (logical == hover_) return;
  hover_ = logical;
  allChanged_ = true;
}

void PanDisplay::SetPointerNote(std::string note) {
  if (note == pointerNote_) return;
  pointerNote_ = std::move(note);
  allChanged_ = true;
}

void PanDisplay::ShowInsetTarget(std::optional<InsetPlace> place) {
  if (place == insetTarget_) return;
  insetTarget_ = place;
  allChanged_ = true;
}

void PanDisplay::SetGeometry(const FrameGeometry& geometry) {
  FrameGeometry ours = geometry;
  ours.PlotWidth = basis_.Layout.PlotWidth;
  if (ours == basis_.Scale.Geometry) return;
  basis_.Scale.Geometry = ours;
  inset_.BasisMoved();
  scaleDirty_ = true;
}

void PanDisplay::ShowFrame(const Frame& frame) {
  SetGeometry(frame.Geometry);
  const FrameGeometry& geometry = basis_.Scale.Geometry;
  traces_.Show(frame, geometry, basis_.Options.WFLive);
  const LevelRange colours = frame.Colours.value_or(LevelRange{frame.Line.BottomLevel, frame.Line.TopLevel});
  waterfall_.AddLine(traces_.Waterfall(),
                     {.LeftMHz = geometry.LeftMHz,
                      .RightMHz = geometry.RightMHz,
                      .TakenUtc = frame.Line.TakenUtc,
                      .BottomLevel = colours.Bottom,
                      .TopLevel = colours.Top,
                      .UnitsPerDb = basis_.Scale.Levels.InDb ? 1 : LevelScale::kHeightsPerDb,
                      .Dimmed = transmitting_});
  traceDirty_ = lineAdded_ = true;
}

void PanDisplay::DrawScale(const ScaleState& scale) {
  ScaleState ours = scale;
  ours.Geometry.PlotWidth = basis_.Layout.PlotWidth;
  if (ours == basis_.Scale) return;
  const FrameGeometry before = std::exchange(basis_.Scale, ours).Geometry;
  if (!(before == ours.Geometry)) {
    traces_.Remap(before, ours.Geometry);
    traceDirty_ = true;
  }
  inset_.BasisMoved();
  scaleDirty_ = allChanged_ = true;
}

void PanDisplay::ClearFrames() {
  traces_.Clear();
  waterfall_.Clear();
  traceDirty_ = allChanged_ = true;
}

QRegion PanDisplay::Prepare() {
  UpdatePlot();
  const PlotLayout& layout = basis_.Layout;
  const bool lineAdded = std::exchange(lineAdded_, false);
  QRegion changed = tracePainter_.TakeChanged();
  const QRegion inset = inset_.TakeChanged(basis_);
  // A mini-pan came under a pointer that rests, or left it.
  const HoverLine hoverLine = hover_ ? At(*hover_).Line() : HoverLine{};
  if (std::exchange(hoverLine_, hoverLine) != hoverLine) allChanged_ = true;
  if (std::exchange(allChanged_, false)) return QRect(0, 0, layout.PictureWidth, layout.Height);
  changed += inset;
  if (lineAdded) changed += QRect(0, layout.WaterfallTop, layout.Width, layout.WaterfallHeight);
  if (hover_ && (lineAdded || !inset.isEmpty())) changed += HoverStrip(layout, basis_.TextHeight);
  return changed;
}

PlotPointer PanDisplay::At(QPointF logical) {
  return {logical * basis_.Layout.Scale, basis_, traces_, waterfall_, inset_, markers_};
}

QColor PanDisplay::BackgroundColour() const {
  return QColor(ColourAt(basis_.Options.Colours, ColourIndex::Background));
}

/// Each picture is made anew only when what it shows changed; a frame alone touches the trace.
void PanDisplay::UpdatePlot() {
  const DisplayOptions& options = basis_.Options;
  const PlotLayout& layout = basis_.Layout;
  const ScaleState& scale = basis_.Scale;
  if (scaleDirty_) {
    scalePainter_.Render(layout, scale, {options.Colours, options.SubD, options.MHz}, basis_.Plan,
                         basis_.LabelFont);
    backgroundDirty_ = true;
  }
  if (backgroundDirty_) {
    allChanged_ = true;
    CopyPixels(scalePainter_.Picture(), background_);
    ShadePassbands(background_, layout, scale.Geometry, markers_, options.Colours);
    tracePainter_.SetBackground(background_, layout, options.Colours, options.Fill);
    traceDirty_ = true;
  }
  if (traceDirty_ && !background_.isNull()) tracePainter_.Draw(background_, traces_.Levels(), scale.Levels);
  scaleDirty_ = backgroundDirty_ = traceDirty_ = false;
}

void PanDisplay::Paint(QPainter& painter) {
  UpdatePlot();
  const PlotLayout& layout = basis_.Layout;
  if (layout.PictureWidth <= 0 || layout.Height <= 0) return;
  painter.save();
  // One of our pixels is one of the device's: nothing is scaled, hairlines stay sharp.
  const double ratio = painter.device()->devicePixelRatioF();
  painter.scale(1 / ratio, 1 / ratio);
  BlitImage(painter, QPoint(0, 0), tracePainter_.Picture(), tracePainter_.Picture().rect());
  if (layout.PictureWidth > layout.Width)
    painter.fillRect(layout.Width, 0, layout.PictureWidth - layout.Width, layout.Height, BackgroundColour());
  if (layout.WaterfallHeight > 0) {
    waterfall_.Draw(painter, 0, layout.WaterfallTop);
    painter.fillRect(layout.PlotWidth, layout.WaterfallTop, layout.LabelMargin, layout.WaterfallHeight,
                     BackgroundColour());
  }
  PaintOverlays(painter);
  painter.restore();
}

void PanDisplay::PaintOverlays(QPainter& painter) {
  const OverlayPen pen = basis_.PenOf(painter);
  std::vector<QRect> taken;
  taken.push_back(DrawInfo(pen, infoText_, basis_.TextFont));
  inset_.Paint(painter, basis_);
  DrawMarkers(pen, basis_.Scale.Geometry, markers_, basis_.FlagFont, taken);
  if (basis_.Layout.WaterfallHeight > 0) {
    const int apart = static_cast<int>(1.3 * basis_.LabelFont.pixelSize());
    const std::vector<TimeMark> times = TimeMarks(waterfall_, apart);
    DrawTimes(pen, times, basis_.LabelFont);
    if (const auto newest = waterfall_.RowAt(0))
      legend_.Draw(pen, waterfall_.ColourRange(*newest), times, basis_.LabelFont);
  }
  if (stoppedAt_) {
    DrawStopped(pen, *stoppedAt_, basis_.FlagFont);
    // Still true, and what the trouble is about.
    DrawInfo(pen, infoText_, basis_.TextFont);
  }
  PaintHover(pen);
  if (insetTarget_) DrawInsetTarget(pen, InsetOutline(*insetTarget_, basis_.Layout));
}

void PanDisplay::PaintHover(const OverlayPen& pen) {
  if (!hover_) return;
  const PlotPointer pointer = At(*hover_);
  const HoverLine line = pointer.Line();
  if (line != hoverLine_) allChanged_ = true;  // painted later than asked for
  std::string text = pointer.OnPicture() ? pointer.Text() : std::string();
  if (!text.empty() && !pointerNote_.empty()) text += "  ";
  text += pointerNote_;
  if (!text.empty()) DrawHover(pen, line, text, basis_.TextFont);
}

}  // namespace spectrino
