#include "display/TracePainter.h"

#include <QColor>
#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <limits>

#include "display/Colours.h"
#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

constexpr float kNoLine = std::numeric_limits<float>::max();
constexpr double kLineWidth = 1.2;  ///< logical pixels
constexpr double kFillOpacity = 0.75;
/// Keeps y of absurd levels (-500 dB: never filled) within what float and int carry exactly.
constexpr float kFarOutside = 1e5F;

const QRgb* Row(const QImage& image, int y) {
  return reinterpret_cast<const QRgb*>(image.constScanLine(y));  // rows of RGB32 are QRgb by definition
}

/// Fill colour at a height of the plot, 0 at the top: lit at the top, deep at the bottom.
QRgb FillColour(QRgb fill, double depth) {
  const QRgb top = Blend(QColor(fill).lighter(175).rgb(), qRgb(255, 255, 255), 0.12);
  const QRgb bottom = QColor(fill).darker(165).rgb();
  return Blend(top, bottom, depth);
}

/// Each pixel from filled at and below the column's first filled row, else from plain.
void SelectRow(const QRgb* plain, const QRgb* filled, const std::int32_t* firstRows, std::int32_t row,
               int count, QRgb* out) {
  for (int x = 0; x < count; ++x) out[x] = row >= firstRows[x] ? filled[x] : plain[x];
}

/// share256: 0..256 of colour on the pixel.
QRgb MixPixel(QRgb pixel, QRgb colour, std::uint32_t share256) {
  // Red and blue, then green: two components in one multiplication, 8 bits of room between them.
  constexpr std::uint32_t kRedBlue = 0x00FF00FF;
  constexpr std::uint32_t kGreen = 0x0000FF00;
  const std::uint32_t rest = 256 - share256;
  const std::uint32_t redBlue = ((pixel & kRedBlue) * rest + (colour & kRedBlue) * share256) >> 8;
  const std::uint32_t green = ((pixel & kGreen) * rest + (colour & kGreen) * share256) >> 8;
  return 0xFF000000U | (redBlue & kRedBlue) | (green & kGreen);
}

void PlaceColumns(std::span<const float> levels, const PlotLayout& layout, const LevelScale& scale,
                  std::vector<float>& heights) {
  heights.assign(static_cast<std::size_t>(layout.PlotWidth), kNoLine);
  const float range = scale.TopLevel - scale.BottomLevel;
  if (!(range > 0)) return;
  const float rowsPerDb = static_cast<float>(layout.PlotHeight) / range;
  const std::size_t count = std::min(heights.size(), levels.size());
  for (std::size_t x = 0; x < count; ++x) {
    if (levels[x] == kUndrawnLevel || std::isnan(levels[x])) continue;
    heights[x] = std::clamp((scale.TopLevel - levels[x]) * rowsPerDb, -kFarOutside, kFarOutside);
  }
}

/// Mean of u limited to 0..1 while u runs evenly from one value to another.
float LimitedMean(float from, float to) {
  const float distance = to - from;
  if (std::fabs(distance) < 1e-3F) return std::clamp((from + to) / 2, 0.0F, 1.0F);
  // Integral of the limited u: 0, then a parabola, then a straight line.
  const auto integral = [](float u) {
    const float inside = std::clamp(u, 0.0F, 1.0F);
    return inside * inside / 2 + std::max(u - 1, 0.0F);
  };
  return (integral(to) - integral(from)) / distance;
}

/// The line through one height per column, smoothed by how much of each pixel it covers.
class LinePainter {
 public:
  LinePainter(QImage& picture, const PlotLayout& layout, QRgb colour)
      : plot_(reinterpret_cast<QRgb*>(picture.scanLine(layout.TopMargin))),
        stride_(picture.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb))),
        width_(layout.PlotWidth),
        height_(static_cast<float>(layout.PlotHeight)),
        halfWidth_(static_cast<float>(kLineWidth * layout.Scale / 2)),
        peakColumns_(std::max(1, static_cast<int>(std::lround(layout.Scale)))),
        colour_(colour) {}

  void Paint(std::span<const float> heights) const {
    for (std::size_t x = 0; x < heights.size(); ++x) {
      const float here = heights[x];
      if (here == kNoLine) continue;
      const float before = x > 0 && heights[x - 1] != kNoLine ? heights[x - 1] : here;
      const float after = x + 1 < heights.size() && heights[x + 1] != kNoLine ? heights[x + 1] : here;
      const bool isPeak = here <= std::min(before, after) || here >= std::max(before, after);
      // Half way to each neighbour, so that the columns join without a gap.
      const float left = (before + here) / 2;
      const float right = (here + after) / 2;
      if (isPeak) {
        PaintPeak(static_cast<int>(x), std::min({left, here, right}), std::max({left, here, right}));
      } else {
        PaintSlope(static_cast<int>(x), {left, right}, std::min(before, after), std::max(before, after));
      }
    }
  }

 private:
  /// An upright bar, as wide as a line is on this screen: a carrier of one point stays visible.
  void PaintPeak(int x, float highest, float lowest) const {
    const int first = std::max(x - (peakColumns_ - 1) / 2, 0);
    const int last = std::min(x + peakColumns_ / 2, width_ - 1);
    const auto whole = [](float, float covered) { return covered; };
    for (int column = first; column <= last; ++column) PaintColumn(column, highest, lowest, whole);
  }

  /// Heights at a column's two edges.
  struct Slope {
    float Left;
    float Right;
  };

  /// A slanted band whose width across is the line's. It spills over the column's own part of the line as far
  /// as the line runs on in the neighbours, from highest to lowest.
  void PaintSlope(int x, Slope edge, float highest, float lowest) const {
    const float rise = edge.Right - edge.Left;
    const float reach = halfWidth_ * std::sqrt(1 + rise * rise);
    PaintColumn(x, highest, lowest, [=](float row, float covered) {
      const float above = LimitedMean(edge.Left - reach - row, edge.Right - reach - row);
      const float below = LimitedMean(edge.Left + reach - row, edge.Right + reach - row);
      return std::min(below - above, covered);
    });
  }

  /// share(row, covered): covered is how much of the pixel lies between highest and lowest, line included.
  template <typename Share>
  void PaintColumn(int x, float highest, float lowest, Share share) const {
    const float top = std::max(highest - halfWidth_, 0.0F);
    const float bottom = std::min(lowest + halfWidth_, height_);
    if (!(bottom > top)) return;
    const int lastRow = std::min(static_cast<int>(bottom), static_cast<int>(height_) - 1);
    for (int row = static_cast<int>(top); row <= lastRow; ++row) {
      const auto y = static_cast<float>(row);
      const float covered = std::max(std::min(bottom, y + 1) - std::max(top, y), 0.0F);
      QRgb& pixel = plot_[row * stride_ + x];
      pixel = MixPixel(pixel, colour_, static_cast<std::uint32_t>(share(y, covered) * 256));
    }
  }

  QRgb* plot_;
  std::ptrdiff_t stride_;
  int width_;
  float height_;
  float halfWidth_;
  int peakColumns_;
  QRgb colour_;
};

}  // namespace

void TracePainter::Paint(const QImage& backdrop, const PlotLayout& layout, const TraceInput& input,
                         QImage& picture) {
  assert(backdrop.size() == picture.size() && backdrop.format() == picture.format());
  assert(layout.PlotBottom() <= picture.height() && layout.PlotWidth <= picture.width());
  if (input.Fill) PrepareFilled(backdrop, layout, *input.Fill);
  PlaceColumns(input.Levels, layout, input.Scale, traceHeights_);
  PaintRows(backdrop, layout, input.Fill.has_value(), picture);
  if (!input.Peak.empty()) {
    // Under the trace: what is on the air now is what counts.
    PlaceColumns(input.Peak, layout, input.Scale, peakHeights_);
    LinePainter(picture, layout, input.BackgroundPeak).Paint(peakHeights_);
  }
  LinePainter(picture, layout, input.Signal).Paint(traceHeights_);
}

void TracePainter::PrepareFilled(const QImage& backdrop, const PlotLayout& layout, QRgb fill) {
  if (filledFrom_ == backdrop.cacheKey() && filledLayout_ == layout && filledWith_ == fill) return;
  filledFrom_ = backdrop.cacheKey();
  filledLayout_ = layout;
  filledWith_ = fill;
  const QSize size(layout.PlotWidth, layout.PlotHeight);
  if (filled_.size() != size) filled_ = QImage(size, QImage::Format_RGB32);
  constexpr auto kShare = static_cast<std::uint32_t>(kFillOpacity * 256);
  for (int y = 0; y < size.height(); ++y) {
    const QRgb colour = FillColour(fill, static_cast<double>(y) / size.height());
    const QRgb* in = Row(backdrop, layout.TopMargin + y);
    auto* out = reinterpret_cast<QRgb*>(filled_.scanLine(y));
    for (int x = 0; x < size.width(); ++x) out[x] = MixPixel(in[x], colour, kShare);
  }
}

void TracePainter::PaintRows(const QImage& backdrop, const PlotLayout& layout, bool isFilled,
                             QImage& picture) {
  firstRows_.assign(traceHeights_.size(), std::numeric_limits<std::int32_t>::max());
  for (std::size_t x = 0; isFilled && x < firstRows_.size(); ++x) {
    if (traceHeights_[x] == kNoLine) continue;
    firstRows_[x] = static_cast<std::int32_t>(std::lrint(traceHeights_[x]));
  }
  const auto [highest, lowest] = std::ranges::minmax(firstRows_);
  for (int y = 0; y < picture.height(); ++y) {
    const QRgb* plain = Row(backdrop, y);
    auto* out = reinterpret_cast<QRgb*>(picture.scanLine(y));
    const int row = y - layout.TopMargin;
    if (row < 0 || row >= layout.PlotHeight || row < highest) {
      std::copy_n(plain, picture.width(), out);
      continue;
    }
    if (row >= lowest) {
      std::copy_n(Row(filled_, row), layout.PlotWidth, out);
    } else {
      SelectRow(plain, Row(filled_, row), firstRows_.data(), row, layout.PlotWidth, out);
    }
    std::copy_n(plain + layout.PlotWidth, picture.width() - layout.PlotWidth, out + layout.PlotWidth);
  }
}

}  // namespace spectrino
