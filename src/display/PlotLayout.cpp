#include "display/PlotLayout.h"

#include <QFontMetrics>
#include <algorithm>
#include <cmath>

namespace spectrino {
namespace {

constexpr double kTopMargin = 4;
constexpr double kLeastWaterfallTop = 100;
constexpr double kLabelGap = 4;   ///< between plot and label, and around the frequency labels
constexpr double kFontSize = 10;  ///< logical pixels; smaller than 9 cannot be read

}  // namespace

WaterfallArea LayoutWaterfall(int pictureHeight, int topMargin, int waterfallSel, int leastTop) {
  if (waterfallSel < 1 || waterfallSel > 3) return {pictureHeight, 0};
  const int usable = pictureHeight - topMargin;
  const int parts = waterfallSel == 3 ? 2 : waterfallSel == 2 ? 4 : 8;
  const int height = static_cast<int>(std::lround(static_cast<double>(usable) / parts));
  const int top = pictureHeight - height;
  if (top >= leastTop) return {top, std::max(height, 0)};
  return {leastTop, std::max(pictureHeight - leastTop, 0)};
}

int PlotLayout::Pixels(double logical) const {
  return std::max(1, static_cast<int>(std::lround(logical * Scale)));
}

PlotLayout MakePlotLayout(QSize size, double scale, int waterfallSel, const TextMetrics& text) {
  PlotLayout layout;
  layout.Scale = scale;
  layout.Width = std::max(size.width(), 0);
  layout.Height = std::max(size.height(), 0);
  layout.TopMargin = layout.Pixels(kTopMargin);
  layout.LabelMargin = text.WidestLabel + 2 * layout.Pixels(kLabelGap);
  layout.PlotWidth = std::max(layout.Width - layout.LabelMargin, 0);
  const WaterfallArea waterfall =
      LayoutWaterfall(layout.Height, layout.TopMargin, waterfallSel, layout.Pixels(kLeastWaterfallTop));
  layout.WaterfallTop = waterfall.Top;
  layout.WaterfallHeight = waterfall.Height;
  const int gap = text.Height + layout.Pixels(kLabelGap);
  layout.BottomMargin = waterfall.Height + gap;
  layout.PlotHeight = std::max(layout.Height - layout.TopMargin - layout.BottomMargin, 0);
  return layout;
}

QFont PlotFont(double scale) {
  QFont font;
  font.setPixelSize(static_cast<int>(std::lround(kFontSize * scale)));
  return font;
}

TextMetrics MeasureText(const QFont& font) {
  const QFontMetrics metrics(font);
  const int widest = std::max(metrics.horizontalAdvance(QStringLiteral("-000")),
                              metrics.horizontalAdvance(QStringLiteral("00:00Z")));
  return {metrics.height(), widest};
}

}  // namespace spectrino
