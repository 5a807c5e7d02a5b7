#include "display/TracePainter.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <utility>

#include "display/Colours.h"
#include "display/RowKernels.h"
#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

constexpr float kNoHeight = std::numeric_limits<float>::max();
constexpr int kFillAlpha256 = 190;  // lets the grid speak through

QRgb* PixelRow(QImage& image, int y) {
  return reinterpret_cast<QRgb*>(image.scanLine(y));
}
const QRgb* PixelRow(const QImage& image, int y) {
  return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

QRgb Brighter(QRgb colour, double factor) {
  const auto channel = [factor](int value) { return std::min(255, static_cast<int>(value * factor)); };
  return qRgb(channel(qRed(colour)), channel(qGreen(colour)), channel(qBlue(colour)));
}

/// Half a segment of the line as seen from the column where it starts: how far it climbs to the next one.
struct Leg {
  float Climb = 0;
  float InverseLength = 1;
  bool Drawn = false;

  Leg(float from, float to) : Drawn(to != kNoHeight) {
    if (!Drawn) return;
    Climb = to - from;
    InverseLength = 1 / std::sqrt(1 + Climb * Climb);
  }
  /// Distance of a pixel that lies dy below the leg's start, in the same column.
  [[nodiscard]] float Distance(float dy) const {
    const float along = dy * Climb * InverseLength * InverseLength;
    if (!Drawn || along <= 0) return std::fabs(dy);
    if (along >= 1) return std::sqrt(1 + (dy - Climb) * (dy - Climb));
    return std::fabs(dy) * InverseLength;
  }
};

}  // namespace

void TracePainter::SetBackground(const QImage& plain, const PlotLayout& layout, const ColourTable& colours,
                                 bool fill) {
  layout_ = layout;
  fill_ = fill;
  lineColour_ = ColourAt(colours, ColourIndex::Signal);
  peakColour_ = ColourAt(colours, ColourIndex::BackgroundPeak);
  const auto columns = static_cast<std::size_t>(layout.PlotWidth);
  heights_.assign(columns, kNoHeight);
  peakHeights_.assign(columns, kNoHeight);
  firstFilled_.assign(columns, layout.PlotHeight);
  const QSize size(layout.PlotWidth, layout.PlotHeight);
  if (!fill) {
    filled_ = QImage();
    return;
  }
  if (filled_.size() != size) filled_ = QImage(size, QImage::Format_RGB32);
  const QRgb colour = ColourAt(colours, ColourIndex::Fill);
  const QRgb top = Mix(Brighter(colour, 1.45), qRgb(255, 255, 255), 0.12);
  const QRgb bottom = Brighter(colour, 0.6);
  for (int y = 0; y < size.height(); ++y) {
    const QRgb shade = Mix(top, bottom, static_cast<double>(y) / size.height());
    BlendRow({PixelRow(plain, layout.TopMargin + y), columns}, shade, kFillAlpha256,
             {PixelRow(filled_, y), columns});
  }
}

void TracePainter::FindHeights(std::span<const float> levels, const LevelScale& scale,
                               Heights& heights) const {
  assert(levels.size() == heights.size());
  const float range = scale.TopLevel - scale.BottomLevel;
  const auto height = static_cast<float>(layout_.PlotHeight);
  const float perDb = range > 0 ? height / range : 0;
  for (std::size_t x = 0; x < levels.size(); ++x) {
    const float y = height - (levels[x] - scale.BottomLevel) * perDb;
    heights[x] = levels[x] == kUndrawnLevel || !std::isfinite(y) ? kNoHeight : y;
  }
}

void TracePainter::FillBelow(const QImage& plain, QImage& target) {
  const int rows = layout_.PlotHeight;
  const auto columns = heights_.size();
  int highest = rows;
  int lowest = 0;
  for (std::size_t x = 0; x < columns; ++x) {
    const float y = std::clamp(heights_[x], 0.0F, static_cast<float>(rows));
    const auto row = heights_[x] == kNoHeight || !fill_ ? rows : static_cast<int>(std::lrint(y));
    firstFilled_[x] = row;
    highest = std::min(highest, row);
    lowest = std::max(lowest, row);
  }
  for (int y = 0; y < rows; ++y) {
    const QRgb* above = PixelRow(plain, layout_.TopMargin + y);
    QRgb* out = PixelRow(target, layout_.TopMargin + y);
    if (y < highest) {
      std::memcpy(out, above, columns * sizeof(QRgb));
    } else if (y >= lowest) {
      std::memcpy(out, PixelRow(std::as_const(filled_), y), columns * sizeof(QRgb));
    } else {
      SelectRow(y, firstFilled_, {above, columns}, {PixelRow(std::as_const(filled_), y), columns},
                {out, columns});
    }
  }
}

/// Coverage of a pixel is its distance to the polyline through the columns' centres, as an antialiased stroke
/// has it. Only the legs to both neighbours can come near enough.
void TracePainter::DrawLine(const Heights& heights, QRgb colour, QImage& target) const {
  const auto reach = static_cast<float>(0.75 + 0.25 * layout_.Scale);  // half the stroke and half a pixel
  const int columns = layout_.PlotWidth;
  const auto bytesPerLine = static_cast<std::size_t>(target.bytesPerLine()) / sizeof(QRgb);
  QRgb* const plot = PixelRow(target, layout_.TopMargin);
  for (int x = 0; x < columns; ++x) {
    const auto at = static_cast<std::size_t>(x);
    const float y = heights[at];
    if (y == kNoHeight) continue;
    const Leg left(y, x > 0 ? heights[at - 1] : kNoHeight);
    const Leg right(y, x + 1 < columns ? heights[at + 1] : kNoHeight);
    const float top = y + std::min({0.0F, left.Climb, right.Climb}) - reach;
    const float bottom = y + std::max({0.0F, left.Climb, right.Climb}) + reach;
    const auto rows = static_cast<float>(layout_.PlotHeight);
    const int first = static_cast<int>(std::clamp(top, 0.0F, rows));
    const int last = static_cast<int>(std::clamp(bottom + 1, 0.0F, rows));
    for (int row = first; row < last; ++row) {
      const float dy = static_cast<float>(row) + 0.5F - y;
      const float coverage = reach - std::min(left.Distance(dy), right.Distance(dy));
      if (coverage <= 0) continue;
      QRgb& pixel = plot[static_cast<std::size_t>(row) * bytesPerLine + at];
      pixel = BlendPixel(pixel, colour, static_cast<int>(std::min(coverage, 1.0F) * 256));
    }
  }
}

void TracePainter::Draw(const QImage& plain, const TraceLevels& levels, const LevelScale& scale,
                        QImage& target) {
  assert(target.size() == plain.size());
  if (layout_.PlotHeight <= 0 || layout_.PlotWidth <= 0) return;
  FindHeights(levels.Trace, scale, heights_);
  FillBelow(plain, target);
  if (!levels.BackgroundPeak.empty()) {
    FindHeights(levels.BackgroundPeak, scale, peakHeights_);
    DrawLine(peakHeights_, peakColour_, target);
  }
  DrawLine(heights_, lineColour_, target);
}

}  // namespace spectrino
