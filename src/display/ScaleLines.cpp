#include "display/ScaleLines.h"

#include <QFontMetrics>
#include <QString>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "state/FrequencyText.h"

namespace spectrino {
namespace {

constexpr double kLabelIndent = 4;         ///< logical pixels between the plot and a level label
constexpr double kLevelLabelDistance = 4;  ///< least logical distance of two level labels
constexpr double kLabelDistance = 8;       ///< least logical distance of two frequency labels
constexpr double kLeastLineDistance = 2;   ///< pixels between two frequency lines

bool IsMultiple(double level, double step) {
  if (step <= 0) return false;
  const double quotient = level / step;
  return std::fabs(quotient - std::round(quotient)) < 1e-4;
}

/// Whether area comes closer to a label than distance, in any direction.
bool Collides(const std::vector<ScaleLabel>& labels, const QRect& area, int distance) {
  const QRect grown = area.adjusted(-distance, -distance, distance, distance);
  return std::ranges::any_of(labels, [&](const ScaleLabel& label) { return label.Area.intersects(grown); });
}

void AddLevelLabel(ScaleLines& lines, int level, int row, const PlotLayout& layout,
                   const QFontMetrics& metrics) {
  const std::string text = std::to_string(level);
  const int height = metrics.height();
  // The first and last label move inside rather than stand half in the margin.
  const int lowest = std::max(layout.PlotBottom() - height, 0);
  const int top = std::clamp(row - height / 2, 0, lowest);
  const QRect area(layout.PlotWidth + layout.Pixels(kLabelIndent), top,
                   metrics.horizontalAdvance(QString::fromStdString(text)), height);
  if (area.right() >= layout.Width || Collides(lines.LevelLabels, area, layout.Pixels(kLevelLabelDistance)))
    return;
  lines.LevelLabels.push_back({text, area});
}

void AddLevelLines(ScaleLines& lines, const LevelScale& levels, const PlotLayout& layout, bool subDivisions,
                   const QFontMetrics& metrics) {
  const int units = levels.RangeUnits;
  for (int n = 0; n <= units; ++n) {
    const double share = static_cast<double>(n) / units;
    const double level = levels.TopLevel - share * (levels.TopLevel - levels.BottomLevel);
    const int row = layout.TopMargin + static_cast<int>(std::lround(share * layout.PlotHeight));
    const bool isMain = IsMultiple(level, levels.GridStep);
    if (isMain || n == 0 || n == units) {
      lines.Levels.push_back({row, false});
      if (isMain) AddLevelLabel(lines, static_cast<int>(std::lround(level)), row, layout, metrics);
    } else if (subDivisions && IsMultiple(level, levels.GridStep / 5.0)) {
      lines.Levels.push_back({row, true});
    }
  }
}

class FrequencyLayout {
 public:
  FrequencyLayout(ScaleLines& lines, const ScaleState& scale, const PlotLayout& layout, bool showMHz,
                  const QFontMetrics& metrics)
      : lines_(lines), scale_(scale), layout_(layout), showMHz_(showMHz), metrics_(metrics) {}

  void Add() {
    AddLine(0, scale_.Running);
    // Outwards on both sides at once: where labels are left out, they are left out alike left and right.
    double lastHz = 0;
    for (std::size_t i = 1; i < scale_.GridOffsetHz.size(); ++i) {
      const double offsetHz = scale_.GridOffsetHz[i];
      if (!(std::fabs(offsetHz - lastHz) * PixelsPerHz() >= kLeastLineDistance)) continue;
      lastHz = offsetHz;
      AddLine(offsetHz, true);
      AddLine(-offsetHz, true);
    }
  }

 private:
  [[nodiscard]] double PixelsPerHz() const {
    return scale_.Geometry.PlotWidth / scale_.Geometry.ShownSpanHz();
  }

  void AddLine(double offsetHz, bool withLabel) {
    const double mhz = scale_.LabelCentreMHz + offsetHz / 1e6;
    const double x = scale_.Geometry.FrequencyToPixel(mhz);
    if (!(x >= 0 && x <= layout_.PlotWidth)) return;
    // A line covers the pixel that its frequency lies in, as the trace's points do.
    const int column = std::min(static_cast<int>(x), layout_.PlotWidth);
    lines_.Frequencies.push_back({column, false});
    if (withLabel) AddLabel(offsetHz, mhz, column);
  }

  void AddLabel(double offsetHz, double mhz, int column) {
    const std::string text =
        scale_.FrequencyKnown ? GridFrequencyText(mhz, showMHz_) : GridOffsetText(offsetHz);
    const int width = metrics_.horizontalAdvance(QString::fromStdString(text));
    const int gap = layout_.SpectrumHeight() - layout_.PlotBottom();
    const QRect area(column - width / 2, layout_.PlotBottom() + (gap - metrics_.height() + 1) / 2, width,
                     metrics_.height());
    if (area.left() < 0 || area.right() >= layout_.Width) return;
    if (Collides(lines_.FrequencyLabels, area, layout_.Pixels(kLabelDistance))) return;
    lines_.FrequencyLabels.push_back({text, area});
  }

  ScaleLines& lines_;
  const ScaleState& scale_;
  const PlotLayout& layout_;
  bool showMHz_;
  const QFontMetrics& metrics_;
};

}  // namespace

ScaleLines LayOutScale(const ScaleState& scale, const PlotLayout& layout, bool showSubDivisions, bool showMHz,
                       const QFont& font) {
  ScaleLines lines;
  if (layout.PlotWidth <= 0 || layout.PlotHeight <= 0) return lines;
  const QFontMetrics metrics(font);
  if (scale.Levels.RangeUnits > 0 && scale.Levels.TopLevel > scale.Levels.BottomLevel) {
    AddLevelLines(lines, scale.Levels, layout, showSubDivisions, metrics);
  }
  if (scale.Geometry.Valid()) FrequencyLayout(lines, scale, layout, showMHz, metrics).Add();
  return lines;
}

}  // namespace spectrino
