#include "display/TracePainter.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>
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

/// The pixels of a plot by column and row, for loops down a column.
template <typename Pixel>
class PixelGrid {
 public:
  template <typename Image>
  PixelGrid(Image& image, int top) : stride_(static_cast<std::size_t>(image.bytesPerLine()) / sizeof(QRgb)) {
    if (!image.isNull()) pixels_ = PixelRow(image, top);
  }
  [[nodiscard]] Pixel& At(std::size_t x, std::int32_t y) const {
    return pixels_[static_cast<std::size_t>(y) * stride_ + x];
  }

 private:
  Pixel* pixels_ = nullptr;
  std::size_t stride_;
};

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
  lineRows_.assign(columns, {});
  fresh_ = true;
  CopyPixels(plain, picture_);
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

/// Row by row, as memory lies: for a new background.
void TracePainter::FillAll(const QImage& plain) {
  const std::size_t columns = heights_.size();
  for (std::size_t x = 0; x < columns; ++x) firstFilled_[x] = FirstFilled(heights_[x]);
  for (int y = 0; fill_ && y < layout_.PlotHeight; ++y) {
    SelectRow(y, firstFilled_, {PixelRow(plain, layout_.TopMargin + y), columns},
              {PixelRow(std::as_const(filled_), y), columns},
              {PixelRow(picture_, layout_.TopMargin + y), columns});
  }
}

/// Only the rows where the last lines were or the fill's edge moved: a tenth of the plot in an ordinary band.
void TracePainter::FillChanged(const QImage& plain) {
  const PixelGrid<QRgb> target(picture_, layout_.TopMargin);
  const PixelGrid<const QRgb> above(plain, layout_.TopMargin);
  const PixelGrid<const QRgb> below(std::as_const(filled_), 0);
  for (std::size_t x = 0; x < heights_.size(); ++x) {
    const std::int32_t before = firstFilled_[x];
    const std::int32_t now = FirstFilled(heights_[x]);
    firstFilled_[x] = now;
    const Rows line = std::exchange(lineRows_[x], {});
    std::int32_t first = std::min(before, now);
    std::int32_t end = std::max(before, now);
    if (line.First < line.End) {
      first = std::min(first, line.First);
      end = std::max(end, line.End);
    }
    for (std::int32_t y = first; y < end; ++y) target.At(x, y) = y >= now ? below.At(x, y) : above.At(x, y);
  }
}

std::int32_t TracePainter::FirstFilled(float height) const {
  if (!fill_ || height == kNoHeight) return layout_.PlotHeight;
  return static_cast<std::int32_t>(
      std::lrint(std::clamp(height, 0.0F, static_cast<float>(layout_.PlotHeight))));
}

/// Coverage of a pixel is its distance to the polyline through the columns' centres, as an antialiased stroke
/// has it. Only the legs to both neighbours can come near enough.
void TracePainter::DrawLine(const Heights& heights, QRgb colour) {
  const auto reach = static_cast<float>(0.75 + 0.25 * layout_.Scale);  // half the stroke and half a pixel
  const auto rows = static_cast<float>(layout_.PlotHeight);
  const PixelGrid<QRgb> target(picture_, layout_.TopMargin);
  for (std::size_t x = 0; x < heights.size(); ++x) {
    const float y = heights[x];
    if (y == kNoHeight) continue;
    const Leg left(y, x > 0 ? heights[x - 1] : kNoHeight);
    const Leg right(y, x + 1 < heights.size() ? heights[x + 1] : kNoHeight);
    const float top = y + std::min({0.0F, left.Climb, right.Climb}) - reach;
    const float bottom = y + std::max({0.0F, left.Climb, right.Climb}) + reach;
    const int first = static_cast<int>(std::clamp(top, 0.0F, rows));
    const int end = static_cast<int>(std::clamp(bottom + 1, 0.0F, rows));
    for (int row = first; row < end; ++row) {
      const float dy = static_cast<float>(row) + 0.5F - y;
      const float coverage = reach - std::min(left.Distance(dy), right.Distance(dy));
      if (coverage <= 0) continue;
      QRgb& pixel = target.At(x, row);
      pixel = BlendPixel(pixel, colour, static_cast<int>(std::min(coverage, 1.0F) * 256));
    }
    Rows& drawn = lineRows_[x];
    const bool none = drawn.First >= drawn.End;
    drawn = {none ? first : std::min(drawn.First, first), none ? end : std::max(drawn.End, end)};
  }
}

void TracePainter::Draw(const QImage& plain, const TraceLevels& levels, const LevelScale& scale) {
  assert(picture_.size() == plain.size());
  if (layout_.PlotHeight <= 0 || layout_.PlotWidth <= 0) return;
  FindHeights(levels.Trace, scale, heights_);
  if (std::exchange(fresh_, false)) {
    FillAll(plain);
  } else {
    FillChanged(plain);
  }
  if (!levels.BackgroundPeak.empty()) {
    FindHeights(levels.BackgroundPeak, scale, peakHeights_);
    DrawLine(peakHeights_, peakColour_);
  }
  DrawLine(heights_, lineColour_);
}

}  // namespace spectrino
