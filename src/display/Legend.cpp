#include "display/Legend.h"

#include <algorithm>
#include <cmath>

#include "display/Blit.h"
#include "display/Colours.h"
#include "display/Palettes.h"

namespace spectrino {
namespace {

constexpr double kBarWidth = 5;  // logical pixels
constexpr double kEdge = 2;
constexpr double kTick = 2;
constexpr double kTextHeightsApart = 2.5;

int YOf(const LevelRange& range, double level, int height) {
  return static_cast<int>(std::lround((range.Top - level) / (range.Top - range.Bottom) * height));
}

}  // namespace

std::vector<int> LegendLevels(const LevelRange& range, int height, int textHeight) {
  std::vector<int> levels;
  const double span = static_cast<double>(range.Top) - range.Bottom;
  if (!(span > 0) || height <= 2 * textHeight) return levels;
  for (const int step : {5, 10, 20, 50}) {
    if (step / span * height < kTextHeightsApart * textHeight) continue;
    const double edge = span * textHeight / 2 / height;
    for (auto n = static_cast<int>(std::floor((range.Top - edge) / step)); n * step >= range.Bottom + edge;
         --n)
      levels.push_back(n * step);
    break;
  }
  return levels;
}

void Legend::Draw(const OverlayPen& pen, const LevelRange& range, const std::vector<TimeMark>& times,
                  const QFont& font) {
  const PlotLayout& layout = pen.Layout;
  const int height = layout.WaterfallHeight;
  const int width = layout.Px(kBarWidth);
  const int left = layout.Width - layout.Px(kEdge) - width;
  if (height <= 1 || width <= 0 || left <= layout.PlotWidth) return;
  if (bar_.size() != QSize(width, height) || barPalette_ != pen.Palette) {
    bar_ = QImage(width, height, QImage::Format_RGB32);
    barPalette_ = pen.Palette;
    for (int y = 0; y < height; ++y) {
      const int index = (kWaterfallColours - 1) * (height - 1 - y) / (height - 1);
      auto* const row = reinterpret_cast<QRgb*>(bar_.scanLine(y));
      std::fill(row, row + width, WaterfallPalette(pen.Palette)[static_cast<std::size_t>(index)]);
    }
  }
  BlitImage(pen.Painter, QPoint(left, layout.WaterfallTop), bar_, bar_.rect());
  const QColor quiet(status_colour::kQuiet);
  pen.Painter.setFont(font);
  pen.Painter.setPen(quiet);
  const int textHeight = pen.Texts.Get("0", font).Size.height();
  for (const int level : LegendLevels(range, height, textHeight)) {
    const int y = YOf(range, level, height);
    const int top = y - textHeight / 2;
    const auto touches = [&](const TimeMark& mark) { return std::abs(mark.Y - top) < textHeight; };
    if (std::ranges::any_of(times, touches)) continue;
    const TextCache::Entry& text = pen.Texts.Get(std::to_string(level), font);
    const int tick = layout.Px(kTick);
    pen.Painter.fillRect(left - tick, layout.WaterfallTop + y, tick, layout.LineWidth(), quiet);
    pen.Painter.drawStaticText(left - tick - layout.Px(1) - text.Size.width(), layout.WaterfallTop + top,
                               text.Text);
  }
}

}  // namespace spectrino
