#include "display/Overlays.h"

#include <QFontMetrics>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "display/Colours.h"
#include "state/FrequencyText.h"
#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

constexpr double kDashPx = 3;

std::string MinuteText(std::chrono::sys_time<std::chrono::minutes> minute) {
  const std::chrono::hh_mm_ss time(minute - std::chrono::floor<std::chrono::days>(minute));
  char text[16];
  std::snprintf(text, sizeof text, "%02d:%02dZ", static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()));
  return text;
}

/// Text over grid and trace, on a veil of the background so that it stays readable there.
void DrawVeiled(QPainter& painter, const PlotLayout& layout, const QRect& box, const QString& text,
                ColourIndex colour, const ColourTable& colours) {
  QColor veil(ColourAt(colours, ColourIndex::Background));
  veil.setAlphaF(0.6F);
  painter.fillRect(box.adjusted(-layout.Px(2), 0, layout.Px(2), 0), veil);
  painter.setPen(QColor(ColourAt(colours, colour)));
  painter.drawText(box.left(), box.top() + QFontMetrics(painter.font()).ascent(), text);
}

}  // namespace

std::string HoverText(double freqMHz, bool frequencyKnown, float level) {
  char text[40];
  std::string result = FrequencyText(freqMHz);
  if (!frequencyKnown) {
    std::snprintf(text, sizeof text, "%+.2fK", freqMHz * 1e3);
    result = text;
  }
  if (level == kUndrawnLevel || !std::isfinite(level)) return result;
  std::snprintf(text, sizeof text, "  %ld dBm", std::lround(level));
  return result + text;
}

QRect DrawHover(QPainter& painter, const PlotLayout& layout, int x, const std::string& text,
                const ColourTable& colours, const QFont& font) {
  const QColor colour(ColourAt(colours, ColourIndex::Cursor));
  const int dash = layout.Px(kDashPx);
  const int bottom = layout.WaterfallHeight > 0 ? layout.Height : layout.PlotBottom();
  for (int y = layout.TopMargin; y < bottom; y += 2 * dash) {
    painter.fillRect(x, y, layout.LineWidth(), std::min(dash, bottom - y), colour);
  }
  const QFontMetrics metrics(font);
  const QString shown = QString::fromStdString(text);
  const int width = metrics.horizontalAdvance(shown);
  const int room = layout.Px(5);
  int left = x + layout.LineWidth() + room;
  if (left + width > layout.PlotWidth - layout.Px(2)) left = std::max(layout.Px(2), x - room - width);
  const QRect box(left, layout.TopMargin + metrics.height() + layout.Px(4), width, metrics.height());
  painter.setFont(font);
  DrawVeiled(painter, layout, box, shown, ColourIndex::Cursor, colours);
  return box;
}

QRect DrawInfo(QPainter& painter, const PlotLayout& layout, const std::string& text,
               const ColourTable& colours, const QFont& font) {
  const QFontMetrics metrics(font);
  const int left = layout.Px(6);
  const QString shown = metrics.elidedText(QString::fromStdString(text), Qt::ElideRight,
                                           std::max(0, layout.PlotWidth - 2 * left));
  if (shown.isEmpty() || layout.PlotHeight < metrics.height()) return {};
  const QRect box(left, layout.TopMargin + layout.Px(2), metrics.horizontalAdvance(shown), metrics.height());
  painter.setFont(font);
  DrawVeiled(painter, layout, box, shown, ColourIndex::Info, colours);
  return box;
}

std::vector<TimeMark> TimeMarks(const WaterfallImage& waterfall, int minDistance) {
  std::vector<TimeMark> marks;
  std::chrono::sys_time<std::chrono::minutes> above{};
  for (int y = 0; y < waterfall.RowCount(); ++y) {
    const auto minute = std::chrono::floor<std::chrono::minutes>(waterfall.RowAt(y)->TakenUtc);
    const bool begins = y == 0 || minute != above;
    above = minute;
    if (!begins || (!marks.empty() && y - marks.back().Y < minDistance)) continue;
    marks.push_back({y, MinuteText(minute)});
  }
  return marks;
}

void DrawTimes(QPainter& painter, const PlotLayout& layout, const std::vector<TimeMark>& marks,
               const ColourTable& colours, const QFont& font) {
  QColor colour(ColourAt(colours, ColourIndex::Frequency));
  colour.setAlphaF(0.82F);
  painter.setFont(font);
  painter.setPen(colour);
  const QFontMetrics metrics(font);
  for (const TimeMark& mark : marks) {
    if (mark.Y + metrics.height() > layout.WaterfallHeight) continue;
    const int y = layout.WaterfallTop + mark.Y;
    painter.fillRect(layout.PlotWidth, y, layout.Px(3), layout.LineWidth(), colour);
    painter.drawText(layout.PlotWidth + layout.Px(4), y + metrics.ascent(),
                     QString::fromStdString(mark.Text));
  }
}

}  // namespace spectrino
