#include "display/PanDisplay.h"

#include <QPainter>
#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

#include "dsp/DisplayTrace.h"

namespace spectrino {

PanDisplay::PanDisplay() : columns_(std::make_unique<DisplayTrace>()) {}
PanDisplay::~PanDisplay() = default;

void PanDisplay::Resize(QSize logical, double devicePixelRatio) {
  assert(devicePixelRatio > 0);
  if (logical == logicalSize_ && devicePixelRatio == devicePixelRatio_) return;
  logicalSize_ = logical;
  devicePixelRatio_ = devicePixelRatio;
  UpdateLayout();
}

void PanDisplay::SetOptions(const DisplayOptions& options) {
  if (options == options_) return;
  options_ = options;
  UpdateLayout();
}

void PanDisplay::UpdateLayout() {
  font_ = PlotFont(devicePixelRatio_);
  // Rounded up: a picture half a pixel short would leave a line of the window unpainted.
  const QSize size(static_cast<int>(std::ceil(logicalSize_.width() * devicePixelRatio_)),
                   static_cast<int>(std::ceil(logicalSize_.height() * devicePixelRatio_)));
  layout_ = MakePlotLayout(size, devicePixelRatio_, options_.WaterfallSel, MeasureText(font_));
  geometry_.PlotWidth = layout_.PlotWidth;
  waterfall_.Resize(layout_.PlotWidth, layout_.WaterfallHeight);
  // The trace stays in view until the next frame, which a stopped run never sends.
  for (std::vector<float>* levels : {&trace_, &peak_}) {
    if (levels->empty()) continue;
    const std::vector<float> old =
        std::exchange(*levels, std::vector<float>(static_cast<std::size_t>(layout_.PlotWidth)));
    ResampleColumns(old, *levels);
  }
  MarkDirty();
}

void PanDisplay::SetMarkers(std::span<const PlotMarker> markers) {
  if (std::ranges::equal(markers, markers_)) return;
  markers_.assign(markers.begin(), markers.end());
  MarkDirty();
}

void PanDisplay::SetInfoText(std::string text) {
  if (text == infoText_) return;
  infoText_ = std::move(text);
  MarkDirty();
}

void PanDisplay::SetHover(std::optional<QPointF> pointer) {
  if (pointer == pointer_) return;
  pointer_ = pointer;
  MarkDirty();
}

void PanDisplay::SetDimmed(bool isDimmed) {
  isDimmed_ = isDimmed;
}

void PanDisplay::ShowFrame(const Frame& frame) {
  geometry_ = frame.Geometry;
  // A frame computed for the width before a resize is drawn at the width of now.
  geometry_.PlotWidth = layout_.PlotWidth;
  const SpectrumLine& line = frame.Line;
  const auto map = [&](std::span<const float> levels, std::vector<float>& columns) {
    columns.resize(static_cast<std::size_t>(layout_.PlotWidth));
    const int end = std::min(line.EndIndex(), static_cast<int>(levels.size()));
    columns_->Map(geometry_, line.FirstIndex, end, levels, columns);
  };
  map(frame.DisplayLevel, trace_);
  if (frame.BackgroundPeak.empty()) {
    peak_.clear();
  } else {
    map(frame.BackgroundPeak, peak_);
  }
  waterfall_.AddLine(trace_, {geometry_.LeftMHz, geometry_.RightMHz, line.TakenUtc, line.BottomLevel,
                              line.TopLevel, isDimmed_});
  MarkDirty();
}

void PanDisplay::DrawScale(const ScaleState& scale) {
  geometry_ = scale.Geometry;
  geometry_.PlotWidth = layout_.PlotWidth;
  if (scale == scale_) return;
  scale_ = scale;
  MarkDirty();
}

void PanDisplay::ClearFrames() {
  trace_.clear();
  peak_.clear();
  waterfall_.Clear();
  MarkDirty();
}

void PanDisplay::MarkDirty() {
  isComposed_ = false;
  isDirty_ = true;
}

bool PanDisplay::TakeDirty() {
  return std::exchange(isDirty_, false);
}

QPointF PanDisplay::LogicalToPlot(QPointF logical) const {
  return logical * devicePixelRatio_ - QPointF(0, layout_.TopMargin);
}

double PanDisplay::HoverFreqMHz() const {
  if (!pointer_) return 0;
  const QPointF at = LogicalToPlot(*pointer_);
  return geometry_.PixelToFrequency(at.x(), at.y(), layout_.PlotHeight);
}

std::optional<int> PanDisplay::HoverColumn() const {
  if (!pointer_) return std::nullopt;
  const QPointF at = LogicalToPlot(*pointer_);
  if (at.x() < 0 || at.x() >= layout_.PlotWidth || at.y() < 0 || at.y() >= layout_.PlotHeight)
    return std::nullopt;
  return static_cast<int>(at.x());
}

float PanDisplay::HoverLevel() const {
  const std::optional<int> column = HoverColumn();
  if (!column || static_cast<std::size_t>(*column) >= trace_.size()) return kUndrawnLevel;
  return trace_[static_cast<std::size_t>(*column)];
}

std::optional<WaterfallRow> PanDisplay::RowAt(QPointF logical) const {
  const QPointF at = logical * devicePixelRatio_;
  if (at.x() < 0 || at.x() >= layout_.PlotWidth || at.y() < layout_.WaterfallTop) return std::nullopt;
  return waterfall_.RowAt(static_cast<int>(at.y()) - layout_.WaterfallTop);
}

std::string PanDisplay::HoverLabel() const {
  if (!geometry_.Valid()) return "";
  const double mhz = HoverFreqMHz();
  const float level = HoverLevel();
  return HoverText(mhz, scale_.FrequencyKnown, (mhz - scale_.LabelCentreMHz) * 1e6,
                   level == kUndrawnLevel ? std::nullopt : std::optional(level));
}

void PanDisplay::Paint(QPainter& painter) {
  painter.save();
  // From here on device pixels: nothing that is drawn is scaled, so nothing blurs.
  painter.scale(1 / devicePixelRatio_, 1 / devicePixelRatio_);
  if (layout_.PlotWidth == 0 || layout_.PlotHeight == 0) {
    painter.fillRect(0, 0, layout_.Width, layout_.Height, RgbOf(options_.Colours, PlotColour::Background));
  } else {
    if (!isComposed_) Compose();
    painter.drawImage(0, 0, picture_);
    if (layout_.WaterfallHeight > 0) PaintWaterfall(painter);
  }
  painter.restore();
}

void PanDisplay::Compose() {
  ScaleState scale = scale_;
  scale.Geometry = geometry_;
  const DisplayColours& colours = options_.Colours;
  const QImage& backdrop =
      scalePainter_.Picture(scale, layout_, {colours, options_.ShowSubDivisions, options_.ShowMHz}, font_,
                            PassbandShades(markers_, geometry_, layout_, colours));
  if (picture_.size() != backdrop.size()) picture_ = QImage(backdrop.size(), QImage::Format_RGB32);
  TraceInput input;
  input.Levels = trace_;
  input.Peak = peak_;
  input.Scale = scale.Levels;
  input.Signal = RgbOf(colours, PlotColour::Signal);
  input.BackgroundPeak = RgbOf(colours, PlotColour::BackgroundPeak);
  if (options_.Fill) input.Fill = RgbOf(colours, PlotColour::Fill);
  tracePainter_.Paint(backdrop, layout_, input, picture_);
  ComposeOverlays();
  isComposed_ = true;
}

void PanDisplay::ComposeOverlays() {
  QPainter painter(&picture_);
  OverlayPainter overlay(painter, layout_, options_.Colours, font_);
  const std::vector<std::optional<MarkerFlag>> flags = PlaceFlags(markers_, geometry_, layout_);
  overlay.DrawMarkers(markers_, flags);
  std::vector<QRect> taken;
  for (const std::optional<MarkerFlag>& flag : flags) {
    if (flag) taken.push_back(flag->Area);
  }
  taken.push_back(overlay.DrawInfo(infoText_, taken));
  if (const std::optional<int> column = HoverColumn()) {
    overlay.DrawHoverLine(*column, 0, picture_.height());
    overlay.DrawHoverText(*column, HoverLabel(), taken);
  }
}

void PanDisplay::PaintWaterfall(QPainter& painter) const {
  const DisplayColours& colours = options_.Colours;
  const QRgb background = RgbOf(colours, PlotColour::Background);
  const int lines = waterfall_.LineCount();
  painter.fillRect(layout_.PlotWidth, layout_.WaterfallTop, layout_.Width - layout_.PlotWidth,
                   layout_.WaterfallHeight, background);
  painter.fillRect(0, layout_.WaterfallTop + lines, layout_.PlotWidth, layout_.WaterfallHeight - lines,
                   background);
  waterfall_.Draw(painter, QPoint(0, layout_.WaterfallTop));
  OverlayPainter overlay(painter, layout_, colours, font_);
  overlay.DrawTimes(TimeMarks(waterfall_, painter.fontMetrics().height()));
  if (const std::optional<int> column = HoverColumn()) {
    overlay.DrawHoverLine(*column, layout_.WaterfallTop, layout_.WaterfallTop + layout_.WaterfallHeight);
  }
}

}  // namespace spectrino
