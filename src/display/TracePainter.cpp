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
constexpr int kFillAlpha256 = 190;         // lets the grid speak through
constexpr std::size_t kTileColumns = 256;  // what changed is told for so many columns together

QRgb Brighter(QRgb colour, double factor) {
  const auto channel = [factor](int value) { return std::min(255, static_cast<int>(value * factor)); };
  return qRgb(channel(qRed(colour)), channel(qGreen(colour)), channel(qBlue(colour)));
}

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
  changed_.assign((columns + kTileColumns - 1) / kTileColumns, {});
  coverage_.resize(static_cast<std::size_t>(layout.PlotHeight));
  fresh_ = true;
  CopyPixels(plain, picture_);
  firstFilled_.assign(columns, layout.PlotHeight);
  const QSize size(layout.PlotWidth, layout.PlotHeight);
  if (!fill) {
    filled_ = QImage();
    return;
  }
  if (filled_.size() != size) filled_ = MakePixels(size);
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
    Rows rows = std::exchange(lineRows_[x], {});
    Widen(rows, {std::min(before, now), std::max(before, now)});
    Widen(changed_[x / kTileColumns], rows);
    const std::int32_t edge = std::clamp(now, rows.First, rows.End);
    for (std::int32_t y = rows.First; y < edge; ++y) target.At(x, y) = above.At(x, y);
    for (std::int32_t y = edge; y < rows.End; ++y) target.At(x, y) = below.At(x, y);
  }
}

std::int32_t TracePainter::FirstFilled(float height) const {
  if (!fill_ || height == kNoHeight) return layout_.PlotHeight;
  return static_cast<std::int32_t>(
      std::lrint(std::clamp(height, 0.0F, static_cast<float>(layout_.PlotHeight))));
}

/// Which rows of a column the line touches, and how much of each.
TracePainter::Rows TracePainter::Cover(const Heights& heights, std::size_t x) {
  const float y = heights[x];
  if (y == kNoHeight) return {};
  const float before = x > 0 ? heights[x - 1] : kNoHeight;
  const float after = x + 1 < heights.size() ? heights[x + 1] : kNoHeight;
  const float left = before == kNoHeight ? 0 : before - y;
  const float right = after == kNoHeight ? 0 : after - y;
  const auto reach = static_cast<float>(0.75 + 0.25 * layout_.Scale);  // half the stroke and half a pixel
  const auto rows = static_cast<float>(layout_.PlotHeight);
  const Rows touched{
      static_cast<std::int32_t>(std::clamp(y + std::min({0.0F, left, right}) - reach, 0.0F, rows)),
      static_cast<std::int32_t>(std::clamp(y + std::max({0.0F, left, right}) + reach + 1, 0.0F, rows))};
  CoverColumn(static_cast<float>(touched.First) + 0.5F - y, before == kNoHeight ? right : left,
              after == kNoHeight ? left : right, reach,
              {coverage_.data(), static_cast<std::size_t>(touched.End - touched.First)});
  return touched;
}

void TracePainter::DrawLine(const Heights& heights, QRgb colour) {
  const PixelGrid<QRgb> target(picture_, layout_.TopMargin);
  for (std::size_t x = 0; x < heights.size(); ++x) {
    const Rows rows = Cover(heights, x);
    for (std::int32_t y = rows.First; y < rows.End; ++y) {
      const std::int32_t alpha256 = coverage_[static_cast<std::size_t>(y - rows.First)];
      QRgb& pixel = target.At(x, y);
      if (alpha256 > 0) pixel = BlendPixel(pixel, colour, alpha256);
    }
    Widen(lineRows_[x], rows);
    Widen(changed_[x / kTileColumns], rows);
  }
}

void TracePainter::Widen(Rows& rows, Rows more) {
  if (more.First >= more.End) return;
  const bool none = rows.First >= rows.End;
  rows = {none ? more.First : std::min(rows.First, more.First),
          none ? more.End : std::max(rows.End, more.End)};
}

QRegion TracePainter::TakeChanged() {
  QRegion region;
  for (std::size_t tile = 0; tile < changed_.size(); ++tile) {
    const Rows rows = std::exchange(changed_[tile], {});
    const int left = static_cast<int>(tile * kTileColumns);
    region +=
        QRect(left, layout_.TopMargin + rows.First,
              std::min(static_cast<int>(kTileColumns), layout_.PlotWidth - left), rows.End - rows.First);
  }
  return region;
}

void TracePainter::Draw(const QImage& plain, const TraceLevels& levels, const LevelScale& scale) {
  assert(picture_.size() == plain.size());
  if (layout_.PlotHeight <= 0 || layout_.PlotWidth <= 0) return;
  const bool hasPeak = !levels.BackgroundPeak.empty();
  FindHeights(levels.Trace, scale, heights_);
  if (hasPeak) FindHeights(levels.BackgroundPeak, scale, peakHeights_);
  if (std::exchange(fresh_, false)) {
    FillAll(plain);
  } else {
    FillChanged(plain);
  }
  if (hasPeak) DrawLine(peakHeights_, peakColour_);
  DrawLine(heights_, lineColour_);
}

}  // namespace spectrino
