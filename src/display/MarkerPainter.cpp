#include "display/MarkerPainter.h"

#include <algorithm>
#include <cmath>

#include "display/Colours.h"
#include "display/RowKernels.h"
#include "display/ScaleLines.h"

namespace spectrino {
namespace {

/// The darker the colour, the denser its shade: the trace must stay readable over it.
int ShadeAlpha256(QRgb colour) {
  const double luminance = (0.30 * qRed(colour) + 0.59 * qGreen(colour) + 0.11 * qBlue(colour)) / 255;
  return static_cast<int>(std::clamp(0.9 - 1.2 * luminance, 0.2, 0.75) * 256);
}

bool InView(double mhz, const PlotLayout& layout, const FrameGeometry& geometry) {
  const double x = geometry.FrequencyToPixel(mhz);
  return x >= 0 && x <= layout.PlotWidth;
}

void DrawLine(const OverlayPen& pen, const FrameGeometry& geometry, double mhz, const QColor& colour) {
  const PlotLayout& layout = pen.Layout;
  const int x = LinePixel(geometry.FrequencyToPixel(mhz), layout.PlotWidth, layout.LineWidth());
  pen.Painter.fillRect(x, layout.TopMargin, layout.LineWidth(), layout.PlotHeight, colour);
}

QRect FreeFlagBox(const PlotLayout& layout, int lineX, QSize size, const std::vector<QRect>& taken) {
  const bool flip = lineX + size.width() > layout.PlotWidth;
  QRect box(QPoint(flip ? lineX + layout.LineWidth() - size.width() : lineX, layout.TopMargin), size);
  const auto covers = [&box](const QRect& other) { return other.intersects(box); };
  while (std::ranges::any_of(taken, covers) && box.bottom() + size.height() < layout.PlotBottom()) {
    box.translate(0, size.height() + layout.Px(1));
  }
  return box;
}

}  // namespace

void ShadePassbands(QImage& background, const PlotLayout& layout, const FrameGeometry& geometry,
                    std::span<const PlotMarker> markers, const ColourTable& colours) {
  if (!geometry.Valid()) return;
  for (const PlotMarker& marker : markers) {
    if (!(marker.PassbandHighMHz > marker.PassbandLowMHz)) continue;
    const double width = layout.PlotWidth;
    const double low = std::clamp(geometry.FrequencyToPixel(marker.PassbandLowMHz), 0.0, width);
    const double high = std::clamp(geometry.FrequencyToPixel(marker.PassbandHighMHz), 0.0, width);
    const int first = static_cast<int>(low);
    const int count = static_cast<int>(std::ceil(high)) - first;
    if (count <= 0 || high <= low) continue;
    const QRgb colour = ColourAt(colours, marker.FilterColourIndex);
    const int alpha = ShadeAlpha256(colour);
    for (int y = layout.TopMargin; y < layout.PlotBottom(); ++y) {
      const std::span row(reinterpret_cast<QRgb*>(background.scanLine(y)) + first,
                          static_cast<std::size_t>(count));
      BlendRow(row, colour, alpha, row);
    }
  }
}

void DrawMarkers(const OverlayPen& pen, const FrameGeometry& geometry, std::span<const PlotMarker> markers,
                 const QFont& font, std::vector<QRect>& taken) {
  const PlotLayout& layout = pen.Layout;
  if (!geometry.Valid() || layout.PlotHeight <= 0) return;
  pen.Painter.setFont(font);
  for (const PlotMarker& marker : markers) {
    if (marker.NotchMHz != 0 && InView(marker.NotchMHz, layout, geometry))
      DrawLine(pen, geometry, marker.NotchMHz, status_colour::kRed);
    if (!InView(marker.FreqMHz, layout, geometry)) continue;
    const QColor colour(ColourAt(pen.Colours, marker.ColourIndex));
    const int x = LinePixel(geometry.FrequencyToPixel(marker.FreqMHz), layout.PlotWidth, layout.LineWidth());
    DrawLine(pen, geometry, marker.FreqMHz, colour);
    if (marker.Label.empty()) continue;
    const TextCache::Entry& label = pen.Texts.Get(marker.Label, font);
    const int height = label.Size.height();
    const QSize size(std::max(height, label.Size.width() + layout.Px(4)), height);
    const QRect box = FreeFlagBox(layout, x, size, taken);
    const QColor flag = marker.Transmits ? QColor(status_colour::kAmber) : colour;
    pen.Painter.fillRect(box, flag);
    pen.Painter.setPen(qGray(flag.rgb()) > 90 ? Qt::black : Qt::white);
    pen.Painter.drawStaticText(box.left() + (size.width() - label.Size.width()) / 2, box.top(), label.Text);
    taken.push_back(box);
  }
}

}  // namespace spectrino
