#include "display/StatusPainter.h"

#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <vector>

#include "display/Colours.h"
#include "dsp/DisplayTrace.h"

namespace spectrino {
namespace {

constexpr double kShareOfPlot = 0.44;
constexpr double kWidestPx = 460;
constexpr double kTallestPx = 190;
constexpr double kLeastHeightPx = 40;
constexpr double kLeastWidthPx = 120;
constexpr double kLeastPanPx = 34;
constexpr double kLabelledPanPx = 84;
constexpr double kS9Share = 54.0 / 114;
constexpr QRgb kAmber = 0xFFFFD08A;
constexpr QRgb kRed = 0xFFFF6A5A;
constexpr QRgb kQuiet = 0xFF8D9AA9;
constexpr QRgb kBright = 0xFFCFD8E3;

struct Word {
  std::string Text;
  QRgb Colour;
};

/// Words one after another, cut off at the right edge of the box.
void DrawWords(const OverlayPen& pen, const QRect& box, int y, const std::vector<Word>& words,
               const QFont& font) {
  int x = box.left() + pen.Layout.Px(4);
  for (const Word& word : words) {
    if (word.Text.empty()) continue;
    const TextCache::Entry& text = pen.Texts.Get(word.Text, font);
    if (x + text.Size.width() > box.right()) return;
    pen.Painter.setPen(QColor(word.Colour));
    pen.Painter.drawStaticText(x, y, text.Text);
    x += text.Size.width() + pen.Layout.Px(7);
  }
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

/// The bar, its nine ticks up to S9, one every six units, and their names where there is room below.
void DrawMeter(const OverlayPen& pen, const QRect& bar, double share, const QFont* labelFont) {
  pen.Painter.fillRect(bar, QColor(0x1d, 0x23, 0x2b));
  pen.Painter.fillRect(QRectF(bar.left(), bar.top(), bar.width() * share, bar.height()),
                       QColor(0x00, 0xc8, 0xc8));
  constexpr const char* kNames[] = {"S1", "", "3", "", "5", "", "7", "", "9"};
  for (int tick = 1; tick <= 9; ++tick) {
    const double x = bar.left() + bar.width() * kS9Share * tick / 9;
    pen.Painter.fillRect(QRectF(x, bar.bottom() - pen.Layout.Px(2), 1, pen.Layout.Px(3)), QColor(kQuiet));
    const char* name = kNames[tick - 1];
    if (labelFont == nullptr || *name == 0) continue;
    const TextCache::Entry& text = pen.Texts.Get(name, *labelFont);
    pen.Painter.setPen(QColor(kQuiet));
    pen.Painter.drawStaticText(static_cast<int>(x) - text.Size.width() / 2, bar.bottom() + pen.Layout.Px(1),
                               text.Text);
  }
}

void DrawHistory(const OverlayPen& pen, const QRect& place, const MiniPan& pan) {
  const int rowHeight = std::max(1, pen.Layout.Px(1));
  const auto& palette = WaterfallPalette();
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

void DrawMiniPan(const OverlayPen& pen, const QRect& box, const MiniPan& pan, const QFont& font) {
  const int textHeight = pen.Texts.Get(pan.Label, font).Size.height();
  const QRect meter(box.left() + pen.Layout.Px(14), box.top() + pen.Layout.Px(2),
                    box.width() - pen.Layout.Px(18), pen.Layout.Px(5));
  DrawWords(pen, box, box.top() - pen.Layout.Px(3), {{pan.Label, kBright}}, font);
  const bool labelled = box.height() >= pen.Layout.Px(kLabelledPanPx);
  DrawMeter(pen, meter, pan.SMeterShare, labelled ? &font : nullptr);
  const int meterHeight = pen.Layout.Px(labelled ? 8 : 11) + (labelled ? textHeight : 0);
  const int historyHeight = std::min(MiniPan::kHistory * std::max(1, pen.Layout.Px(1)), box.height() / 3);
  QRect trace = box.adjusted(0, meterHeight, 0, -textHeight - historyHeight);
  if (trace.height() < 8) trace = box.adjusted(0, meterHeight, 0, 0);
  pen.Painter.fillRect(trace, QColor(0, 0, 0, 90));
  const double span = pan.HighMHz - pan.LowMHz;
  const auto at = [&](double mhz) {
    return std::clamp(trace.left() + (mhz - pan.LowMHz) / span * trace.width(),
                      static_cast<double>(trace.left()), static_cast<double>(trace.right()));
  };
  QColor shade(ColourAt(pen.Colours, ColourIndex::Filter));
  shade.setAlphaF(0.6F);
  pen.Painter.fillRect(QRectF(at(pan.PassbandLowMHz), trace.top(),
                              at(pan.PassbandHighMHz) - at(pan.PassbandLowMHz), trace.height()),
                       shade);
  DrawTraceOf(pen, trace, pan);
  if (pan.NotchMHz != 0)
    pen.Painter.fillRect(QRectF(at(pan.NotchMHz), trace.top(), 2, trace.height()), QColor(kRed));
  if (trace.bottom() + historyHeight + textHeight > box.bottom() + 1) return;
  DrawHistory(pen, QRect(trace.left(), trace.bottom() + 1, trace.width(), historyHeight), pan);
  const int y = trace.bottom() + 1 + historyHeight;
  DrawWords(pen, box, y, {{pan.ScaleLeft, kQuiet}}, font);
  const TextCache::Entry& right = pen.Texts.Get(pan.ScaleRight, font);
  pen.Painter.drawStaticText(box.right() - right.Size.width() - pen.Layout.Px(2), y, right.Text);
}

}  // namespace

QRect StatusBox(const PlotLayout& layout, const FrameGeometry& geometry, double lowMHz, double highMHz) {
  const int top = layout.TopMargin + layout.Px(20);
  const int height = std::min(layout.Px(kTallestPx), layout.PlotBottom() - top - layout.Px(20));
  if (height < layout.Px(kLeastHeightPx) || !geometry.Valid()) return {};
  const double plotWidth = layout.PlotWidth;
  const double roomLeft = std::clamp(geometry.FrequencyToPixel(lowMHz), 0.0, plotWidth);
  const double roomRight = plotWidth - std::clamp(geometry.FrequencyToPixel(highMHz), 0.0, plotWidth);
  const int room = static_cast<int>(std::max(roomLeft, roomRight)) - layout.Px(8);
  const int width = std::min({layout.Px(kWidestPx), static_cast<int>(plotWidth * kShareOfPlot), room});
  if (width < layout.Px(kLeastWidthPx)) return {};
  const int left = roomLeft >= roomRight ? layout.Px(4) : layout.PlotWidth - width - layout.Px(4);
  return {left, top, width, height};
}

void DrawScaleEnds(const OverlayPen& pen, const StatusArea& area, const QFont& font) {
  pen.Painter.setFont(font);
  pen.Painter.setPen(QColor(kQuiet));
  const TextCache::Entry& left = pen.Texts.Get(area.ScaleLeft, font);
  const int y = pen.Layout.PlotBottom() - left.Size.height() - pen.Layout.Px(1);
  pen.Painter.drawStaticText(pen.Layout.Px(4), y, left.Text);
  const TextCache::Entry& right = pen.Texts.Get(area.ScaleRight, font);
  pen.Painter.drawStaticText(pen.Layout.PlotWidth - right.Size.width() - pen.Layout.Px(4), y, right.Text);
}

void DrawStatus(const OverlayPen& pen, const QRect& box, const StatusArea& area, const QFont& font) {
  if (box.isEmpty()) return;
  pen.Painter.setFont(font);
  QColor veil(ColourAt(pen.Colours, ColourIndex::Background));
  veil.setAlphaF(0.72F);
  pen.Painter.fillRect(box, veil);
  const int line = pen.Texts.Get("A", font).Size.height();
  int y = box.top() + pen.Layout.Px(1);
  // What is always there comes first: it is never the one that finds no room.
  DrawWords(pen, box, y,
            {{area.Transmitting ? "TX" : "", kRed},
             {area.Test ? "TEST" : "", kRed},
             {"VOX", area.VoxOn ? kAmber : kQuiet},
             {area.Antenna, kBright},
             {area.Split, area.SplitOn ? kAmber : kQuiet},
             {area.SplitOffset, area.SplitOn ? kAmber : kQuiet},
             {area.RitXit, kAmber},
             {area.Receivers, kBright},
             {area.Bset ? "BSET" : "", kAmber}},
            font);
  DrawWords(pen, box, y += line,
            {{"A", kBright},
             {area.MainFreq, kBright},
             {area.MainFilter, kAmber},
             {area.FilterText, kQuiet},
             {area.MainLine, kBright}},
            font);
  DrawWords(pen, box, y += line,
            {{"B", kBright}, {area.SubFreq, kBright}, {area.SubFilter, kAmber}, {area.SubLine, kBright}},
            font);
  y += line + pen.Layout.Px(3);
  if (area.NeedsDualPanOff) {
    DrawWords(pen, box, y, {{"Operation requires", kAmber}}, font);
    DrawWords(pen, box, y + line, {{"DUAL Pan to be OFF", kAmber}}, font);
    return;
  }
  const QRect room(box.left() + pen.Layout.Px(3), y, box.width() - pen.Layout.Px(6), box.bottom() - y);
  if (room.height() < pen.Layout.Px(kLeastPanPx) || !area.Main.Shown) return;
  QRect main = room;
  if (area.Sub.Shown) {
    main.setWidth(room.width() / 2 - pen.Layout.Px(3));
    DrawMiniPan(pen, QRect(main.right() + pen.Layout.Px(6), room.top(), main.width(), room.height()),
                area.Sub, font);
  }
  DrawMiniPan(pen, main, area.Main, font);
}

}  // namespace spectrino
