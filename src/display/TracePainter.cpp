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
  const QRgb top = Blend(QColor(fill).lighter(160).rgb(), qRgb(255, 255, 255), 0.1);
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
    PaintLine(peakHeights_, layout, input.BackgroundPeak, picture);
  }
  PaintLine(traceHeights_, layout, input.Signal, picture);
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

void TracePainter::FindExtents(const Heights& heights, double scale) {
  const auto halfWidth = static_cast<float>(kLineWidth * scale / 2);
  slopes_.resize(heights.size());
  for (std::size_t x = 0; x < heights.size(); ++x) {
    const float here = heights[x];
    if (here == kNoLine) {
      slopes_[x] = {kNoLine, -kNoLine};
      continue;
    }
    const bool hasLeft = x > 0 && heights[x - 1] != kNoLine;
    const bool hasRight = x + 1 < heights.size() && heights[x + 1] != kNoLine;
    // Half way to each neighbour, so that the columns join without a gap.
    const float left = hasLeft ? (heights[x - 1] + here) / 2 : here;
    const float right = hasRight ? (heights[x + 1] + here) / 2 : here;
    slopes_[x] = {std::min({left, here, right}) - halfWidth, std::max({left, here, right}) + halfWidth};
  }
  // A steep line is one column wide; on a finer screen it takes its neighbours along.
  const auto columns = static_cast<std::size_t>(std::max(1L, std::lround(scale)));
  extents_ = slopes_;
  for (std::size_t step = 1; step < columns; ++step) {
    for (std::size_t x = step; x < extents_.size(); ++x) {
      extents_[x].Top = std::min(extents_[x].Top, slopes_[x - step].Top);
      extents_[x].Bottom = std::max(extents_[x].Bottom, slopes_[x - step].Bottom);
    }
  }
}

void TracePainter::PaintLine(const Heights& heights, const PlotLayout& layout, QRgb colour, QImage& picture) {
  FindExtents(heights, layout.Scale);
  const auto stride =
      static_cast<std::ptrdiff_t>(picture.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb)));
  auto* plot = reinterpret_cast<QRgb*>(picture.scanLine(layout.TopMargin));
  for (std::size_t x = 0; x < extents_.size(); ++x) {
    const float top = std::max(extents_[x].Top, 0.0F);
    const float bottom = std::min(extents_[x].Bottom, static_cast<float>(layout.PlotHeight));
    if (!(bottom > top)) continue;
    const int lastRow = std::min(static_cast<int>(bottom), layout.PlotHeight - 1);
    for (int row = static_cast<int>(top); row <= lastRow; ++row) {
      const auto y = static_cast<float>(row);
      const float covered = std::min(bottom, y + 1) - std::max(top, y);
      QRgb& pixel = plot[row * stride + static_cast<std::ptrdiff_t>(x)];
      pixel = MixPixel(pixel, colour, static_cast<std::uint32_t>(covered * 256));
    }
  }
}

}  // namespace spectrino
