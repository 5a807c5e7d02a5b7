#include "display/Overlays.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "display/WaterfallImage.h"
#include "state/FrequencyText.h"

namespace spectrino {
namespace {

constexpr double kFlagSize = 13;    ///< logical pixels
constexpr double kInfoIndent = 6;   ///< of the information text
constexpr double kHoverIndent = 5;  ///< of the hover text from its line
constexpr double kTextMargin = 2;   ///< of texts from the plot's top

std::optional<int> ColumnOf(double mhz, const FrameGeometry& geometry, const PlotLayout& layout) {
  if (!geometry.Valid()) return std::nullopt;
  const double x = geometry.FrequencyToPixel(mhz);
  if (!(x >= 0 && x < layout.PlotWidth)) return std::nullopt;
  return static_cast<int>(x);
}

QRgb RgbAt(const DisplayColours& colours, int index) {
  const auto last = static_cast<int>(colours.size()) - 1;
  return FromBgr(colours[static_cast<std::size_t>(std::clamp(index, 0, last))]);
}

/// Bright colours shade less, so that grid and trace stay readable in the passband.
double ShadeOpacity(QRgb colour) {
  const double brightness = std::clamp((Luma(colour) - 0.25) / 0.25, 0.0, 1.0);
  return 0.75 - brightness * (0.75 - 0.28);
}

bool MeetsAny(const QRect& area, std::span<const QRect> taken) {
  return std::ranges::any_of(taken, [&](const QRect& other) { return area.intersects(other); });
}

long long MinuteOf(const WaterfallRow& row) {
  return std::chrono::floor<std::chrono::minutes>(row.Utc.time_since_epoch()).count();
}

std::string MinuteText(long long minute) {
  const long long ofDay = (minute % 1440 + 1440) % 1440;
  char text[16];
  std::snprintf(text, sizeof text, "%02d:%02dZ", static_cast<int>(ofDay / 60), static_cast<int>(ofDay % 60));
  return text;
}

QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

std::vector<PlotShade> PassbandShades(std::span<const PlotMarker> markers, const FrameGeometry& geometry,
                                      const PlotLayout& layout, const DisplayColours& colours) {
  std::vector<PlotShade> shades;
  if (!geometry.Valid()) return shades;
  for (const PlotMarker& marker : markers) {
    if (!(marker.PassbandHighMHz > marker.PassbandLowMHz)) continue;
    const double low = geometry.FrequencyToPixel(marker.PassbandLowMHz);
    const double high = geometry.FrequencyToPixel(marker.PassbandHighMHz);
    if (!(low < layout.PlotWidth && high >= 0)) continue;
    const int left = std::max(static_cast<int>(std::floor(std::max(low, 0.0))), 0);
    const int right = std::max(
        static_cast<int>(std::lround(std::min(high, static_cast<double>(layout.PlotWidth)))), left + 1);
    const QRgb colour = RgbAt(colours, marker.FilterColourIndex);
    shades.push_back({left, right, colour, ShadeOpacity(colour)});
  }
  return shades;
}

std::vector<std::optional<MarkerFlag>> PlaceFlags(std::span<const PlotMarker> markers,
                                                  const FrameGeometry& geometry, const PlotLayout& layout) {
  std::vector<std::optional<MarkerFlag>> flags;
  std::vector<QRect> taken;
  const int size = layout.Pixels(kFlagSize);
  for (const PlotMarker& marker : markers) {
    const std::optional<int> column = ColumnOf(marker.FreqMHz, geometry, layout);
    if (!column) {
      flags.push_back(std::nullopt);
      continue;
    }
    const QRect right(*column, layout.TopMargin, size, size);
    const QRect left = right.translated(-size, 0);
    const bool rightFits = right.right() < layout.PlotWidth;
    QRect area = rightFits || left.left() < 0 ? right : left;
    // Two VFOs close together stand back to back; where even that does not fit, one below the other.
    if (MeetsAny(area, taken) && left.left() >= 0 && !MeetsAny(left, taken)) area = left;
    area = MoveBelow(area, taken);
    taken.push_back(area);
    flags.push_back(MarkerFlag{*column, area});
  }
  return flags;
}

std::string HoverText(double freqMHz, bool frequencyKnown, double offsetHz, std::optional<float> levelDbm) {
  char text[48];
  std::string result;
  if (frequencyKnown) {
    if (freqMHz < 0.00001) return "";
    result = FrequencyText(freqMHz);
  } else {
    std::snprintf(text, sizeof text, "%+.2fK", offsetHz / 1000);
    result = text;
  }
  if (!levelDbm) return result;
  std::snprintf(text, sizeof text, "  %ld dBm", std::lround(*levelDbm));
  return result + text;
}

QRect MoveBelow(QRect area, std::span<const QRect> taken) {
  // Each round passes at least one of taken for good, so there are no more rounds than that.
  for (std::size_t round = 0; round < taken.size(); ++round) {
    const auto hit = std::ranges::find_if(taken, [&](const QRect& other) { return area.intersects(other); });
    if (hit == taken.end()) break;
    area.moveTop(hit->bottom() + 1);
  }
  return area;
}

std::vector<TimeMark> TimeMarks(const WaterfallImage& waterfall, int distance) {
  std::vector<TimeMark> marks;
  for (int y = 0; y < waterfall.LineCount(); ++y) {
    const long long minute = MinuteOf(*waterfall.RowAt(y));
    const std::optional<WaterfallRow> older = waterfall.RowAt(y + 1);
    const bool opensMinute = older && MinuteOf(*older) != minute;
    const bool hasRoom = marks.empty() || y - marks.back().Y >= distance;
    if (y == 0 || (opensMinute && hasRoom)) marks.push_back({y, MinuteText(minute)});
  }
  return marks;
}

OverlayPainter::OverlayPainter(QPainter& painter, const PlotLayout& layout, const DisplayColours& colours,
                               const QFont& font)
    : painter_(painter), layout_(layout), colours_(colours), font_(font) {
  painter_.setFont(font_);
}

void OverlayPainter::DrawMarkers(std::span<const PlotMarker> markers,
                                 std::span<const std::optional<MarkerFlag>> flags) {
  QFont bold = font_;
  bold.setBold(true);
  painter_.setFont(bold);
  for (std::size_t i = 0; i < markers.size(); ++i) {
    if (!flags[i]) continue;
    const QRgb colour = RgbAt(colours_, markers[i].ColourIndex);
    painter_.fillRect(flags[i]->Column, layout_.TopMargin, layout_.Pixels(1), layout_.PlotHeight, colour);
    painter_.fillRect(flags[i]->Area, colour);
    painter_.setPen(Luma(colour) < 0.35 ? Qt::white : Qt::black);
    painter_.drawText(flags[i]->Area, Qt::AlignCenter, ToQt(markers[i].Label));
  }
  painter_.setFont(font_);
}

QRect OverlayPainter::DrawInfo(std::string_view text, std::span<const QRect> taken) {
  const QFontMetrics metrics(font_);
  const int indent = layout_.Pixels(kInfoIndent);
  const QString shown = metrics.elidedText(ToQt(text), Qt::ElideRight, layout_.PlotWidth - 2 * indent);
  const QRect wanted(indent, layout_.TopMargin + layout_.Pixels(kTextMargin),
                     metrics.horizontalAdvance(shown), metrics.height());
  const QRect area = MoveBelow(wanted, taken);
  if (shown.isEmpty() || area.bottom() >= layout_.PlotBottom()) return {};
  DrawText(area, shown, PlotColour::Info);
  return area;
}

void OverlayPainter::DrawHoverLine(int column, int top, int bottom) {
  const int dash = layout_.Pixels(3);
  const QRgb colour = RgbOf(colours_, PlotColour::Cursor);
  // Counted from the plot's top, so that the dashes of plot and waterfall meet.
  for (int y = layout_.TopMargin; y < bottom; y += 2 * dash) {
    const int first = std::max(y, top);
    const int end = std::min(y + dash, bottom);
    if (end > first) painter_.fillRect(column, first, layout_.Pixels(1), end - first, colour);
  }
}

void OverlayPainter::DrawHoverText(int column, std::string_view text, std::span<const QRect> taken) {
  const QFontMetrics metrics(font_);
  const QString shown = ToQt(text);
  const int width = metrics.horizontalAdvance(shown);
  const int indent = layout_.Pixels(kHoverIndent);
  int left = column + indent;
  if (left + width > layout_.PlotWidth) left = column - indent - width;
  left = std::max(left, 0);
  const int top = layout_.TopMargin + layout_.Pixels(kTextMargin) + metrics.height();
  const QRect area = MoveBelow(QRect(left, top, width, metrics.height()), taken);
  DrawText(area, shown, PlotColour::Cursor);
}

void OverlayPainter::DrawText(const QRect& area, const QString& text, PlotColour colour) {
  // On a veil of the background: readable over trace and grid, which still shine through.
  QColor veil(RgbOf(colours_, PlotColour::Background));
  veil.setAlphaF(0.55F);
  painter_.fillRect(area.adjusted(-layout_.Pixels(2), 0, layout_.Pixels(2), 0), veil);
  painter_.setPen(QColor(RgbOf(colours_, colour)));
  painter_.drawText(area.left(), area.top() + QFontMetrics(font_).ascent(), text);
}

void OverlayPainter::DrawTimes(std::span<const TimeMark> marks) {
  const QFontMetrics metrics(font_);
  const int left = layout_.PlotWidth + layout_.Pixels(4);
  painter_.setPen(
      QColor(Blend(RgbOf(colours_, PlotColour::Background), RgbOf(colours_, PlotColour::Frequency), 0.8)));
  for (const TimeMark& mark : marks) {
    const int y = layout_.WaterfallTop + mark.Y;
    // The newest line's time hangs from it, the others stand at the line where their minute begins.
    const int top = mark.Y == 0 ? y : y - metrics.height() / 2;
    if (top + metrics.height() > layout_.Height) continue;
    painter_.drawText(left, top + metrics.ascent(), ToQt(mark.Text));
    if (mark.Y > 0)
      painter_.fillRect(layout_.PlotWidth, y, layout_.Pixels(3), layout_.Pixels(1), painter_.pen().color());
  }
}

}  // namespace spectrino
