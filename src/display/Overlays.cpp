#include "display/Overlays.h"

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

constexpr float kStoppedVeil = 0.62F;

/// "14:03:22"
std::string SecondText(std::chrono::system_clock::time_point utc) {
  const auto second = std::chrono::floor<std::chrono::seconds>(utc);
  const std::chrono::hh_mm_ss time(second - std::chrono::floor<std::chrono::days>(second));
  char text[16];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
  return text;
}

std::string MinuteText(std::chrono::sys_time<std::chrono::minutes> minute) {
  const std::chrono::hh_mm_ss time(minute - std::chrono::floor<std::chrono::days>(minute));
  char text[16];
  std::snprintf(text, sizeof text, "%02d:%02dZ", static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()));
  return text;
}

/// Text over grid and trace, on a veil of the background so that it stays readable there.
void DrawVeiled(const OverlayPen& pen, const QRect& box, const TextCache::Entry& text, ColourIndex colour) {
  QColor veil(ColourAt(pen.Colours, ColourIndex::Background));
  veil.setAlphaF(0.6F);
  pen.Painter.fillRect(box.adjusted(-pen.Layout.Px(2), 0, pen.Layout.Px(2), 0), veil);
  pen.Painter.setPen(QColor(ColourAt(pen.Colours, colour)));
  pen.Painter.drawStaticText(box.topLeft(), text.Text);
}

}  // namespace

std::string HoverText(const HoverPlace& place) {
  char text[40];
  std::string result = FrequencyText(place.FreqMHz);
  if (!place.FrequencyKnown) {
    std::snprintf(text, sizeof text, "%+.2fK", place.FreqMHz * 1e3);
    result = text;
  }
  if (place.Level != kUndrawnLevel && std::isfinite(place.Level)) {
    std::snprintf(text, sizeof text, "  %ld%s", std::lround(place.Level), place.InDb ? " dBm" : "");
    result += text;
  }
  if (place.TakenUtc) result += "  " + SecondText(*place.TakenUtc) + "Z";
  if (!place.Segment.empty()) result += "  " + place.Segment;
  return result;
}

QRect HoverStrip(const PlotLayout& layout, int textHeight) {
  return {0, layout.TopMargin + textHeight + layout.Px(4), layout.PlotWidth, textHeight};
}

QRect DrawHover(const OverlayPen& pen, const HoverLine& line, const std::string& text, const QFont& font) {
  const PlotLayout& layout = pen.Layout;
  const QColor colour(ColourAt(pen.Colours, ColourIndex::Cursor));
  const int dash = layout.Px(kDashPx);
  const int x = line.X;
  for (int y = line.Top; y < line.Bottom; y += 2 * dash) {
    pen.Painter.fillRect(x, y, layout.LineWidth(), std::min(dash, line.Bottom - y), colour);
  }
  const TextCache::Entry& shown = pen.Texts.Get(text, font);
  const int width = shown.Size.width();
  const int room = layout.Px(5);
  QRect strip = HoverStrip(layout, shown.Size.height());
  if (line.Within.width() > 2 * (width + 2 * room) && line.Within.height() > strip.height())
    strip = {line.Within.topLeft(), QSize(line.Within.width(), strip.height())};
  const int least = strip.left() + layout.Px(2);
  const int most = strip.left() + strip.width() - layout.Px(2) - width;
  int left = x + layout.LineWidth() + room;
  if (left > most) left = std::max(least, std::min(most, x - room - width));
  const QRect box(left, strip.top(), width, strip.height());
  pen.Painter.setFont(font);
  DrawVeiled(pen, box, shown, ColourIndex::Cursor);
  return box;
}

QRect DrawInfo(const OverlayPen& pen, const std::string& text, const QFont& font) {
  if (text.empty()) return {};
  const PlotLayout& layout = pen.Layout;
  const int left = layout.Px(6);
  const TextCache::Entry& shown = pen.Texts.GetElided(text, font, std::max(0, layout.PlotWidth - 2 * left));
  if (shown.Size.width() <= 0 || layout.PlotHeight < shown.Size.height()) return {};
  const QRect box(QPoint(left, layout.TopMargin + layout.Px(2)), shown.Size);
  pen.Painter.setFont(font);
  DrawVeiled(pen, box, shown, ColourIndex::Info);
  return box;
}

QRect DrawStopped(const OverlayPen& pen, std::chrono::system_clock::time_point lastLineUtc,
                  const QFont& font) {
  const PlotLayout& layout = pen.Layout;
  QColor veil(ColourAt(pen.Colours, ColourIndex::Background));
  veil.setAlphaF(kStoppedVeil);
  pen.Painter.fillRect(0, 0, layout.PictureWidth, layout.Height, veil);
  const TextCache::Entry& text = pen.Texts.Get("Last line " + SecondText(lastLineUtc) + " UTC", font);
  // Below the information line and the pointer's text, and at the right: in a low plot a long status text
  // stands as high as this, from the left.
  const QRect strip = HoverStrip(layout, text.Size.height());
  QRect box(QPoint(layout.PlotWidth * 47 / 100, strip.bottom() + 1), text.Size);
  const int room = layout.PlotBottom() - box.bottom() - 1;
  if (room > 0) box.translate(0, room / 4);
  QColor ground(ColourAt(pen.Colours, ColourIndex::Background));
  pen.Painter.fillRect(box.adjusted(-layout.Px(6), -layout.Px(2), layout.Px(6), layout.Px(2)), ground);
  pen.Painter.setFont(font);
  pen.Painter.setPen(QColor(status_colour::kAmber));
  pen.Painter.drawStaticText(box.topLeft(), text.Text);
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

void DrawTimes(const OverlayPen& pen, const std::vector<TimeMark>& marks, const QFont& font) {
  const PlotLayout& layout = pen.Layout;
  QColor colour(ColourAt(pen.Colours, ColourIndex::Frequency));
  colour.setAlphaF(0.82F);
  pen.Painter.setFont(font);
  pen.Painter.setPen(colour);
  for (const TimeMark& mark : marks) {
    const TextCache::Entry& text = pen.Texts.Get(mark.Text, font);
    if (mark.Y + text.Size.height() > layout.WaterfallHeight) continue;
    const int y = layout.WaterfallTop + mark.Y;
    pen.Painter.fillRect(layout.PlotWidth, y, layout.Px(3), layout.LineWidth(), colour);
    pen.Painter.drawStaticText(layout.PlotWidth + layout.Px(4), y, text.Text);
  }
}

}  // namespace spectrino
