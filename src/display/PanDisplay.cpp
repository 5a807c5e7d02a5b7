#include "display/PanDisplay.h"

#include <QFontMetrics>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

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
constexpr double kRightStrip = 22;

}  // namespace

void PanDisplay::Resize(QSize logical, double devicePixelRatio) {
  if (logical == logicalSize_ && devicePixelRatio == layout_.Scale) return;
  logicalSize_ = logical;
  layout_.Scale = devicePixelRatio;
  labelFont_ = DisplayFont(kLabelFont, devicePixelRatio);
  textFont_ = DisplayFont(kTextFont, devicePixelRatio);
  flagFont_ = DisplayFont(kTextFont, devicePixelRatio, true);
  texts_.Clear();
  textHeight_ = QFontMetrics(textFont_).height();
  LayOut();
}

void PanDisplay::SetOptions(const DisplayOptions& options) {
  if (options == options_) return;
  options_ = options;
  statusStale_ = true;
  LayOut();
}

void PanDisplay::LayOut() {
  const double ratio = layout_.Scale;
  const int width = static_cast<int>(std::lround(logicalSize_.width() * ratio));
  const int height = static_cast<int>(std::lround(logicalSize_.height() * ratio));
  layout_ = LayoutPlot(width, height, ratio, options_.WaterfallSel, MarginsFor(labelFont_, ratio));
  const auto columns = static_cast<std::size_t>(layout_.PlotWidth);
  if (trace_.size() != columns) {
    trace_.assign(columns, kUndrawnLevel);
    peak_.clear();
  }
  scale_.Geometry.PlotWidth = layout_.PlotWidth;
  waterfall_.SetEmptyColour(ColourAt(options_.Colours, ColourIndex::Background));
  waterfall_.SetFollow(options_.WFFollow);
  waterfall_.Resize(layout_.PlotWidth, layout_.WaterfallHeight);
  scaleDirty_ = allChanged_ = placesStale_ = true;
}

void PanDisplay::SetMarkers(std::span<const PlotMarker> markers) {
  if (std::ranges::equal(markers, markers_)) return;
  markers_.assign(markers.begin(), markers.end());
  backgroundDirty_ = allChanged_ = true;
}

void PanDisplay::SetInfoText(std::string text) {
  if (text == infoText_) return;
  infoText_ = std::move(text);
  allChanged_ = true;
}

void PanDisplay::SetStatus(StatusArea area, double lowMHz, double highMHz) {
  if (!area.Shown && !status_.Shown) return;
  // The span's texts stand outside the inset.
  if (area.Shown != status_.Shown || area.ScaleLeft != status_.ScaleLeft) allChanged_ = true;
  status_ = std::move(area);
  tunedLowMHz_ = lowMHz;
  tunedHighMHz_ = highMHz;
  statusChanged_ = statusStale_ = placesStale_ = true;
}

void PanDisplay::SetHover(std::optional<QPointF> logical) {
  if (logical) logical = LogicalToPlot(*logical);
  if (logical == hover_) return;
  hover_ = logical;
  allChanged_ = true;
}

void PanDisplay::SetGeometry(const FrameGeometry& geometry) {
  FrameGeometry ours = geometry;
  ours.PlotWidth = layout_.PlotWidth;
  if (ours == scale_.Geometry) return;
  scale_.Geometry = ours;
  scaleDirty_ = placesStale_ = true;
}

void PanDisplay::ShowFrame(const Frame& frame) {
  SetGeometry(frame.Geometry);
  const SpectrumLine& line = frame.Line;
  const auto map = [&](DisplayTrace& mapping, std::span<const float> levels, std::vector<float>& pixels) {
    const int end = std::min(line.EndIndex(), static_cast<int>(levels.size()));
    pixels.resize(static_cast<std::size_t>(layout_.PlotWidth));
    mapping.Map(scale_.Geometry, line.FirstIndex, end, levels, pixels);
  };
  map(traceMap_, frame.DisplayLevel, trace_);
  frame_.assign(frame.DisplayLevel.begin(), frame.DisplayLevel.end());
  frameFirst_ = line.FirstIndex;
  if (frame.BackgroundPeak.empty()) {
    peak_.clear();
  } else {
    map(peakMap_, frame.BackgroundPeak, peak_);
  }
  waterfall_.AddLine(trace_, {.LeftMHz = scale_.Geometry.LeftMHz,
                              .RightMHz = scale_.Geometry.RightMHz,
                              .TakenUtc = line.TakenUtc,
                              .BottomLevel = line.BottomLevel,
                              .TopLevel = line.TopLevel,
                              .Dimmed = transmitting_});
  traceDirty_ = lineAdded_ = true;
}

void PanDisplay::DrawScale(const ScaleState& scale) {
  ScaleState ours = scale;
  ours.Geometry.PlotWidth = layout_.PlotWidth;
  if (ours == scale_) return;
  const FrameGeometry before = std::exchange(scale_, ours).Geometry;
  if (!(before == scale_.Geometry)) Remap(before);
  scaleDirty_ = allChanged_ = placesStale_ = true;
}

/// The levels belong to columns of the old mapping; a trace must not stand under other frequencies. Zoomed or
/// panned, the same points still are where they were; of another line nothing is left.
void PanDisplay::Remap(const FrameGeometry& before) {
  const auto mhzAt = [](const FrameGeometry& geometry, int point) {
    return geometry.FrequencyAt(geometry.PointX(point));
  };
  const FrameGeometry& now = scale_.Geometry;
  const int end = static_cast<int>(frame_.size());
  constexpr double kSameMHz = 1e-9;
  const bool samePoints = now.Valid() && before.Valid() && end > 0 &&
                          std::abs(mhzAt(now, 0) - mhzAt(before, 0)) < kSameMHz &&
                          std::abs(mhzAt(now, end) - mhzAt(before, end)) < kSameMHz;
  peak_.clear();
  traceDirty_ = true;
  if (!samePoints) {
    frame_.clear();
    std::ranges::fill(trace_, kUndrawnLevel);
    return;
  }
  trace_.resize(static_cast<std::size_t>(layout_.PlotWidth));
  traceMap_.Map(now, frameFirst_, end, frame_, trace_);
}

void PanDisplay::ClearFrames() {
  frame_.clear();
  std::ranges::fill(trace_, kUndrawnLevel);
  peak_.clear();
  waterfall_.Clear();
  traceDirty_ = allChanged_ = true;
}

QRegion PanDisplay::Prepare() {
  UpdatePlot();
  const bool lineAdded = std::exchange(lineAdded_, false);
  QRegion changed = tracePainter_.TakeChanged();
  if (std::exchange(allChanged_, false)) return QRect(0, 0, layout_.Width, layout_.Height);
  if (std::exchange(statusChanged_, false)) {
    changed += std::exchange(statusBox_, Places().Bounds());
    changed += statusBox_;
  }
  if (!lineAdded) return changed;
  changed += QRect(0, layout_.WaterfallTop, layout_.Width, layout_.WaterfallHeight);
  if (hover_) changed += HoverStrip(layout_, textHeight_);
  return changed;
}

QColor PanDisplay::BackgroundColour() const {
  return QColor(ColourAt(options_.Colours, ColourIndex::Background));
}

/// Each picture is made anew only when what it shows changed; a frame alone touches the trace.
void PanDisplay::UpdatePlot() {
  if (scaleDirty_) {
    const ScaleLook look{.Colours = options_.Colours, .SubD = options_.SubD, .MHz = options_.MHz};
    scalePainter_.Render(layout_, scale_, look, labelFont_);
    backgroundDirty_ = true;
  }
  if (backgroundDirty_) {
    allChanged_ = true;
    CopyPixels(scalePainter_.Picture(), background_);
    ShadePassbands(background_, layout_, scale_.Geometry, markers_, options_.Colours);
    tracePainter_.SetBackground(background_, layout_, options_.Colours, options_.Fill);
    traceDirty_ = true;
  }
  if (traceDirty_ && !background_.isNull()) tracePainter_.Draw(background_, {trace_, peak_}, scale_.Levels);
  scaleDirty_ = backgroundDirty_ = traceDirty_ = false;
}

void PanDisplay::Paint(QPainter& painter) {
  UpdatePlot();
  if (layout_.Width <= 0 || layout_.Height <= 0) return;
  painter.save();
  // One of our pixels is one of the device's: nothing is scaled, hairlines stay sharp.
  const double ratio = painter.device()->devicePixelRatioF();
  painter.scale(1 / ratio, 1 / ratio);
  BlitImage(painter, QPoint(0, 0), tracePainter_.Picture(), tracePainter_.Picture().rect());
  if (layout_.WaterfallHeight > 0) {
    waterfall_.Draw(painter, 0, layout_.WaterfallTop);
    painter.fillRect(layout_.PlotWidth, layout_.WaterfallTop, layout_.LabelMargin, layout_.WaterfallHeight,
                     QColor(ColourAt(options_.Colours, ColourIndex::Background)));
  }
  PaintOverlays(painter);
  painter.restore();
}

void PanDisplay::PaintOverlays(QPainter& painter) {
  const OverlayPen pen{painter, layout_, options_.Colours, texts_};
  std::vector<QRect> taken;
  taken.push_back(DrawInfo(pen, infoText_, textFont_));
  if (status_.Shown) {
    PaintStatus(painter);
    DrawScaleEnds(pen, status_, labelFont_);
  }
  DrawMarkers(pen, scale_.Geometry, markers_, flagFont_, taken);
  if (const auto column = HoverColumn()) DrawHover(pen, *column, TextUnderPointer(), textFont_);
  if (layout_.WaterfallHeight > 0) {
    const int apart = static_cast<int>(1.3 * labelFont_.pixelSize());
    DrawTimes(pen, TimeMarks(waterfall_, apart), labelFont_);
  }
}

/// The inset changes less often than the trace beneath it: it is kept as a picture.
void PanDisplay::PaintStatus(QPainter& painter) {
  const QRect box = Places().Bounds();
  if (box.isEmpty()) return;
  if (std::exchange(statusStale_, false) || statusPicture_.size() != box.size()) {
    if (statusPicture_.size() != box.size())
      statusPicture_ = QImage(box.size(), QImage::Format_ARGB32_Premultiplied);
    statusPicture_.fill(Qt::transparent);
    QPainter inset(&statusPicture_);
    const OverlayPen pen{inset, layout_, options_.Colours, texts_};
    inset.translate(-box.topLeft());
    DrawStatus(pen, places_, status_, labelFont_);
  }
  painter.drawImage(box.topLeft(), statusPicture_);
}

const StatusPlaces& PanDisplay::Places() {
  if (std::exchange(placesStale_, false)) {
    places_ = PlaceStatus(layout_, scale_.Geometry, tunedLowMHz_, tunedHighMHz_, status_, texts_, labelFont_);
    statusStale_ = true;
  }
  return places_;
}

std::optional<int> PanDisplay::HoverColumn() const {
  if (!hover_ || !scale_.Geometry.Valid()) return std::nullopt;
  if (hover_->x() < 0 || hover_->x() >= layout_.PlotWidth || hover_->y() < 0 ||
      hover_->y() >= layout_.Height) {
    return std::nullopt;
  }
  return static_cast<int>(hover_->x());
}

/// Row of the waterfall under the pointer; negative above it.
int PanDisplay::HoverRow() const {
  return static_cast<int>(std::floor(hover_->y())) - layout_.WaterfallTop;
}

double PanDisplay::HoverFreqMHz() const {
  if (!hover_) return 0;
  return scale_.Geometry.PixelToFrequency(hover_->x(), hover_->y(), layout_.PlotBottom());
}

float PanDisplay::HoverLevel() const {
  const auto column = HoverColumn();
  if (!column) return kUndrawnLevel;
  return HoverRow() >= 0 ? waterfall_.LevelAt(*column, HoverRow())
                         : trace_[static_cast<std::size_t>(*column)];
}

std::string PanDisplay::TextUnderPointer() const {
  HoverPlace place{.FreqMHz = scale_.Geometry.FrequencyAt(hover_->x()),
                   .FrequencyKnown = scale_.FrequencyKnown,
                   .Level = HoverLevel(),
                   .InDb = scale_.Levels.InDb,
                   .TakenUtc = {}};
  // Below the newest line another frequency may have stood here.
  const int row = HoverRow();
  if (const auto line = row >= 0 ? waterfall_.RowAt(row) : std::nullopt) {
    place.FreqMHz = waterfall_.FrequencyAt(hover_->x(), row);
    place.TakenUtc = line->TakenUtc;
  }
  if (!place.FrequencyKnown) place.FreqMHz -= scale_.LabelCentreMHz;
  return HoverText(place);
}

double PanDisplay::TuneFreqMHz(QPointF logical) const {
  const QPointF at = LogicalToPlot(logical);
  if (!scale_.FrequencyKnown || at.x() < 0 || at.x() >= layout_.PlotWidth) return 0;
  const int row = static_cast<int>(std::floor(at.y())) - layout_.WaterfallTop;
  if (row >= 0) return waterfall_.FrequencyAt(at.x(), row);
  return scale_.Geometry.PixelToFrequency(at.x(), at.y(), layout_.PlotBottom());
}

bool PanDisplay::InRightStrip(QPointF logical) const {
  return logical.x() >= logicalSize_.width() - kRightStrip && logical.x() < logicalSize_.width();
}

MiniPanPassband PanDisplay::MiniPanPassbandAt(QPointF logical) {
  const QPointF at = LogicalToPlot(logical);
  const auto hits = [&at](const MiniPanPlace& place, const MiniPan& pan) {
    if (!place.Trace.contains(at.toPoint())) return false;
    return at.x() >= MiniPanX(place.Trace, pan, pan.PassbandLowMHz) &&
           at.x() <= MiniPanX(place.Trace, pan, pan.PassbandHighMHz);
  };
  const StatusPlaces& places = Places();
  if (hits(places.Main, status_.Main)) return MiniPanPassband::Main;
  return hits(places.Sub, status_.Sub) ? MiniPanPassband::Sub : MiniPanPassband::None;
}

}  // namespace spectrino
