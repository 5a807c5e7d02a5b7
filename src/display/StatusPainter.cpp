#include "display/StatusPainter.h"

#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <vector>

#include "display/Colours.h"
#include "display/Palettes.h"
#include "dsp/WaterfallColourIndex.h"

namespace spectrino {
namespace {

constexpr double kS9Share = 54.0 / 114;

void DrawText(const OverlayPen& pen, int x, int y, const std::string& text, QRgb colour, const QFont& font) {
  pen.Painter.setPen(QColor(colour));
  pen.Painter.drawStaticText(x, y, pen.Texts.Get(text, font).Text);
}

/// The strongest of the points that fall on each column.
std::vector<float> Columns(const std::vector<float>& levels, int columns) {
  std::vector<float> strongest(static_cast<std::size_t>(columns));
  const std::size_t count = levels.size();
  for (std::size_t x = 0; x < strongest.size(); ++x) {
    const std::size_t first = std::min(x * count / strongest.size(), count - 1);
    const std::size_t end = std::clamp((x + 1) * count / strongest.size(), first + 1, count);
    strongest[x] = *std::max_element(levels.begin() + static_cast<std::ptrdiff_t>(first),
                                     levels.begin() + static_cast<std::ptrdiff_t>(end));
  }
  return strongest;
}

/// Two columns of dots.
void DrawGrip(const OverlayPen& pen, const QRect& grip) {
  const int dot = pen.Layout.Px(2);
  for (int column = 0; column < 2; ++column)
    for (int row = 0; row < 3; ++row)
      pen.Painter.fillRect(grip.left() + dot * (1 + 2 * column), grip.top() + dot * 2 * row + dot / 2, dot,
                           dot, QColor(status_colour::kQuiet));
}

/// The bar, its nine ticks up to S9, one every six units, and their names where there is room below.
void DrawMeter(const OverlayPen& pen, const QRect& bar, double share, const QFont* labelFont) {
  pen.Painter.fillRect(bar, QColor(0x1d, 0x23, 0x2b));
  pen.Painter.fillRect(QRectF(bar.left(), bar.top(), bar.width() * share, bar.height()),
                       QColor(0x00, 0xc8, 0xc8));
  constexpr const char* kNames[] = {"S1", "", "3", "", "5", "", "7", "", "9"};
  for (int tick = 1; tick <= 9; ++tick) {
    const double x = bar.left() + bar.width() * kS9Share * tick / 9;
    pen.Painter.fillRect(QRectF(x, bar.bottom() - pen.Layout.Px(2), 1, pen.Layout.Px(3)),
                         QColor(status_colour::kQuiet));
    const char* name = kNames[tick - 1];
    if (labelFont == nullptr || *name == 0) continue;
    const TextCache::Entry& text = pen.Texts.Get(name, *labelFont);
    pen.Painter.setPen(QColor(status_colour::kQuiet));
    pen.Painter.drawStaticText(static_cast<int>(x) - text.Size.width() / 2, bar.bottom() + pen.Layout.Px(1),
                               text.Text);
  }
}

void DrawHistory(const OverlayPen& pen, const QRect& place, const MiniPan& pan) {
  const int rowHeight = std::max(1, pen.Layout.Px(1));
  const auto& palette = WaterfallPalette(pen.Palette);
  const int rows = std::min(static_cast<int>(pan.History.size()), place.height() / rowHeight);
  QImage picture(place.width(), std::max(1, rows), QImage::Format_RGB32);
  for (int y = 0; y < rows; ++y) {
    const std::vector<float> columns = Columns(pan.History[static_cast<std::size_t>(y)], place.width());
    auto* pixels = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < place.width(); ++x) {
      const int index =
          WaterfallColourIndex(columns[static_cast<std::size_t>(x)], pan.BottomLevel, pan.TopLevel);
      pixels[x] = palette[static_cast<std::size_t>(index)];
    }
  }
  if (rows > 0)
    pen.Painter.drawImage(QRect(place.left(), place.top(), place.width(), rows * rowHeight), picture);
}

void DrawTraceOf(const OverlayPen& pen, const QRect& place, const MiniPan& pan) {
  const std::vector<float> columns = Columns(pan.History.front(), place.width());
  const double range = std::max(1.0F, pan.TopLevel - pan.BottomLevel);
  QPolygonF line;
  line.reserve(place.width());
  for (int x = 0; x < place.width(); ++x) {
    const double share =
        std::clamp((columns[static_cast<std::size_t>(x)] - pan.BottomLevel) / range, 0.0, 1.0);
    line << QPointF(place.left() + x, place.bottom() - share * (place.height() - 1));
  }
  pen.Painter.setPen(QColor(ColourAt(pen.Colours, ColourIndex::Signal)));
  pen.Painter.drawPolyline(line);
}

void DrawMiniPan(const OverlayPen& pen, const MiniPanPlace& place, const MiniPan& pan, const QFont& font) {
  const PlotLayout& layout = pen.Layout;
  DrawText(pen, place.Box.left() + layout.Px(4), place.Box.top() - layout.Px(3), pan.Label,
           status_colour::kBright, font);
  DrawMeter(pen, place.Meter, pan.SMeterShare, place.Labelled ? &font : nullptr);
  const QRect& trace = place.Trace;
  pen.Painter.fillRect(trace, QColor(0, 0, 0, 90));
  QColor shade(ColourAt(pen.Colours, ColourIndex::Filter));
  shade.setAlphaF(0.6F);
  const double left = MiniPanX(trace, pan, pan.PassbandLowMHz);
  pen.Painter.fillRect(
      QRectF(left, trace.top(), MiniPanX(trace, pan, pan.PassbandHighMHz) - left, trace.height()), shade);
  if (!pan.History.empty()) DrawTraceOf(pen, trace, pan);
  if (pan.NotchMHz != 0) {
    pen.Painter.fillRect(QRectF(MiniPanX(trace, pan, pan.NotchMHz), trace.top(), 2, trace.height()),
                         QColor(status_colour::kRed));
  }
  if (place.History.isEmpty()) return;
  DrawHistory(pen, place.History, pan);
  const int y = place.History.bottom() + 1;
  DrawText(pen, place.Box.left() + layout.Px(4), y, pan.ScaleLeft, status_colour::kQuiet, font);
  const int rightWidth = pen.Texts.Get(pan.ScaleRight, font).Size.width();
  DrawText(pen, place.Box.right() - rightWidth - layout.Px(2), y, pan.ScaleRight, status_colour::kQuiet,
           font);
}

}  // namespace

void DrawScaleEnds(const OverlayPen& pen, const StatusArea& area, const QFont& font) {
  pen.Painter.setFont(font);
  pen.Painter.setPen(QColor(status_colour::kQuiet));
  const TextCache::Entry& left = pen.Texts.Get(area.ScaleLeft, font);
  const int y = pen.Layout.PlotBottom() - left.Size.height() - pen.Layout.Px(1);
  pen.Painter.drawStaticText(pen.Layout.Px(4), y, left.Text);
  const TextCache::Entry& right = pen.Texts.Get(area.ScaleRight, font);
  pen.Painter.drawStaticText(pen.Layout.PlotWidth - right.Size.width() - pen.Layout.Px(4), y, right.Text);
}

void DrawInsetTarget(const OverlayPen& pen, const QRect& outline) {
  QColor colour(status_colour::kAmber);
  colour.setAlphaF(0.18F);
  pen.Painter.fillRect(outline, colour);
  pen.Painter.setPen(QPen(QColor(status_colour::kAmber), pen.Layout.Px(2)));
  pen.Painter.drawRect(outline.adjusted(1, 1, -2, -2));
}

void DrawStatus(const OverlayPen& pen, const StatusPlaces& places, const StatusArea& area,
                const QFont& font) {
  pen.Painter.setFont(font);
  QColor veil(ColourAt(pen.Colours, ColourIndex::Background));
  veil.setAlphaF(pen.Layout.Inset == InsetPlace::OverWaterfall ? 0.86F : 0.72F);
  for (const QRect& rect : QRegion(places.Texts).united(places.Main.Box).united(places.Sub.Box))
    pen.Painter.fillRect(rect, veil);
  const int rowHeight = pen.Texts.Get("A", font).Size.height();
  int y = places.Texts.top();
  for (const StatusRow& row : places.Rows) {
    for (const StatusWord& word : row)
      DrawText(pen, places.Texts.left() + word.X, y, word.Text, word.Colour, font);
    y += rowHeight;
  }
  if (!places.Main.Box.isEmpty()) DrawMiniPan(pen, places.Main, area.Main, font);
  if (!places.Sub.Box.isEmpty()) DrawMiniPan(pen, places.Sub, area.Sub, font);
  if (!places.Grip.isEmpty()) DrawGrip(pen, places.Grip);
}

}  // namespace spectrino
