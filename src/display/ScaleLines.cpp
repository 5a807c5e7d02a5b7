#include "display/ScaleLines.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "state/FrequencyText.h"

namespace spectrino {
namespace {

bool IsMultiple(double level, double step) {
  return std::fabs(std::remainder(level, step)) < 1e-3;
}

/// A label of the level grid, moved inside the picture at both ends; empty when it would touch the one above.
void AddLevelLabel(const PlotLayout& layout, const LabelMetrics& metrics, double level, double y,
                   std::vector<ScaleLabel>& labels) {
  ScaleLabel label;
  label.Text = std::to_string(std::lround(level));
  label.Width = metrics.TextWidth(label.Text);
  label.Height = metrics.TextHeight;
  label.Left = layout.PlotWidth + layout.Px(4);
  const int lowest = std::max(0, layout.PlotBottom() - label.Height);
  label.Top = std::clamp(static_cast<int>(std::lround(y - label.Height / 2.0)), 0, lowest);
  const int room = layout.Px(3);
  if (!labels.empty() && label.Top < labels.back().Top + labels.back().Height + room) return;
  labels.push_back(std::move(label));
}

void PlaceLevels(const PlotLayout& layout, const LevelScale& levels, bool subDivisions,
                 const LabelMetrics& metrics, ScaleLines& lines) {
  if (levels.RangeUnits <= 0 || levels.GridStep <= 0 || layout.PlotHeight <= 0) return;
  const double range = static_cast<double>(levels.TopLevel) - levels.BottomLevel;
  for (int n = 0; n <= levels.RangeUnits; ++n) {
    const double level = levels.TopLevel - n * range / levels.RangeUnits;
    const double y = layout.TopMargin + static_cast<double>(n) * layout.PlotHeight / levels.RangeUnits;
    const bool named = IsMultiple(level, levels.GridStep);
    const bool edge = n == 0 || n == levels.RangeUnits;
    const bool sub = !named && !edge;
    if (sub && !(subDivisions && IsMultiple(level, levels.GridStep / 5.0))) continue;
    const int lineY =
        layout.TopMargin + LinePixel(y - layout.TopMargin, layout.PlotHeight, layout.LineWidth());
    lines.Levels.push_back({lineY, sub});
    if (named) AddLevelLabel(layout, metrics, level, y, lines.LevelLabels);
  }
}

constexpr double kLabelRoom = 12;      // logical pixels
constexpr double kLowestNamedHz = 10;  // below it there is no frequency to name

bool Touches(const ScaleLabel& a, const ScaleLabel& b, int room) {
  return a.Left < b.Left + b.Width + room && b.Left < a.Left + a.Width + room;
}

void AddFrequencyLabel(const PlotLayout& layout, const LabelMetrics& metrics, std::string text, double x,
                       std::vector<ScaleLabel>& labels) {
  ScaleLabel label;
  label.Text = std::move(text);
  label.Width = metrics.TextWidth(label.Text);
  label.Height = metrics.TextHeight;
  label.Left = static_cast<int>(std::lround(x - label.Width / 2.0));
  const int row = layout.BottomMargin - layout.WaterfallHeight - layout.StripHeight;
  label.Top = layout.PlotBottom() + layout.StripHeight + (row - label.Height) / 2;
  if (label.Left < 0 || label.Left + label.Width > layout.Width) return;
  const int room = layout.Px(kLabelRoom);
  for (const ScaleLabel& other : labels) {
    if (Touches(label, other, room)) return;
  }
  labels.push_back(std::move(label));
}

/// offsetHz: from the labels' centre, stepHz: between the lines.
std::string LabelText(const ScaleState& scale, double offsetHz, double stepHz, bool withMHz) {
  if (!scale.FrequencyKnown) return GridOffsetText(offsetHz, stepHz);
  return GridFrequencyText(scale.LabelCentreMHz + offsetHz / 1e6, stepHz, withMHz);
}

/// The smallest of 1, 2, 5, 10 ... Hz at which the labels of neighbouring lines stay apart; 0 when none does.
double ZoomedStepHz(const PlotLayout& layout, const ScaleState& scale, bool withMHz,
                    const LabelMetrics& metrics) {
  const double spanHz = scale.Geometry.ShownSpanHz();
  const double farthestHz = std::max(std::fabs(scale.Geometry.LeftMHz - scale.LabelCentreMHz),
                                     std::fabs(scale.Geometry.RightMHz - scale.LabelCentreMHz)) *
                            1e6;
  for (double decade = 1; decade <= spanHz; decade *= 10) {
    for (const double stepHz : {decade, 2 * decade, 5 * decade}) {
      const double gridHz = std::ceil(farthestHz / stepHz) * stepHz;
      const int widest = metrics.TextWidth(LabelText(scale, -gridHz, stepHz, withMHz));
      if (stepHz / spanHz * layout.PlotWidth >= widest + layout.Px(kLabelRoom)) return stepHz;
    }
  }
  return 0;
}

/// One side of the centre, outwards, so that the lines that were drawn are equally far apart.
class FrequencySide {
 public:
  FrequencySide(const PlotLayout& layout, const ScaleState& scale, double sign)
      : layout_(layout), scale_(scale), sign_(sign) {}

  /// x of line i, or less than 0 when it is not drawn.
  double Next(std::size_t i) {
    const double offsetHz = sign_ * scale_.GridOffsetHz[i];
    const double x = scale_.Geometry.FrequencyToPixel(scale_.LabelCentreMHz + offsetHz / 1e6);
    if (x < 0 || x > layout_.PlotWidth) return -1;
    if (lastGridX_ >= 0 && std::fabs(x - lastGridX_) < 2 * layout_.Scale) return -1;
    lastGridX_ = x;
    return x;
  }

 private:
  const PlotLayout& layout_;
  const ScaleState& scale_;
  double sign_;
  double lastGridX_ = -1;
};

/// A part of the line is in view: round frequencies, or round offsets, from edge to edge.
void PlaceZoomed(const PlotLayout& layout, const ScaleState& scale, bool withMHz, const LabelMetrics& metrics,
                 ScaleLines& lines) {
  const double stepHz = ZoomedStepHz(layout, scale, withMHz, metrics);
  if (stepHz <= 0) return;
  const FrameGeometry& geometry = scale.Geometry;
  const double centreHz = scale.LabelCentreMHz * 1e6;
  const double zeroHz = scale.FrequencyKnown ? 0 : centreHz;
  const double first = std::ceil((geometry.LeftMHz * 1e6 - zeroHz) / stepHz - 1e-6);
  const double last = std::floor((geometry.RightMHz * 1e6 - zeroHz) / stepHz + 1e-6);
  for (double n = first; n <= last; ++n) {
    const double hz = zeroHz + n * stepHz;
    const double x = std::clamp(geometry.FrequencyToPixel(hz / 1e6), 0.0, geometry.PlotWidth);
    lines.Frequencies.push_back({LinePixel(x, layout.PlotWidth, layout.LineWidth()), false});
    if (n == 0 && !scale.FrequencyKnown && !scale.Running) continue;
    if (scale.FrequencyKnown && hz < kLowestNamedHz) continue;
    AddFrequencyLabel(layout, metrics, LabelText(scale, hz - centreHz, stepHz, withMHz), x,
                      lines.FrequencyLabels);
  }
}

void PlaceFrequencies(const PlotLayout& layout, const ScaleState& scale, bool withMHz,
                      const LabelMetrics& metrics, ScaleLines& lines) {
  if (!scale.Geometry.Valid() || layout.PlotHeight <= 0) return;
  if (scale.Zoomed) {
    PlaceZoomed(layout, scale, withMHz, metrics, lines);
    return;
  }
  FrequencySide right(layout, scale, +1);
  FrequencySide left(layout, scale, -1);
  for (std::size_t i = 0; i < scale.GridOffsetHz.size(); ++i) {
    for (const double sign : {+1.0, -1.0}) {
      const double x = sign > 0 ? right.Next(i) : left.Next(i);
      const bool again = i == 0 && sign < 0;  // the centre belongs to both sides
      if (x < 0 || again) continue;
      lines.Frequencies.push_back({LinePixel(x, layout.PlotWidth, layout.LineWidth()), false});
      if (i == 0 && !scale.Running) continue;
      const double offsetHz = sign * scale.GridOffsetHz[i];
      AddFrequencyLabel(layout, metrics, LabelText(scale, offsetHz, scale.GridOffsetHz[1], withMHz), x,
                        lines.FrequencyLabels);
    }
  }
}

}  // namespace

int LinePixel(double x, int plotWidth, int lineWidth) {
  const int pixel = static_cast<int>(std::floor(x)) - (lineWidth - 1) / 2;
  return std::clamp(pixel, 0, std::max(0, plotWidth - lineWidth));
}

ScaleLines PlaceScale(const PlotLayout& layout, const ScaleState& scale, bool subDivisions, bool withMHz,
                      const LabelMetrics& metrics) {
  ScaleLines lines;
  PlaceLevels(layout, scale.Levels, subDivisions, metrics, lines);
  ScaleState mapped = scale;
  mapped.Geometry.PlotWidth = layout.PlotWidth;
  PlaceFrequencies(layout, mapped, withMHz, metrics, lines);
  return lines;
}

}  // namespace spectrino
