#include "dsp/ColumnMap.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>

#include "dsp/kernels/Kernels.h"
#include "state/SpectrumLine.h"

namespace spectrino {

ColumnMap::ColumnMap() : ColumnMap(BestKernels()) {}
ColumnMap::ColumnMap(const Kernels& kernels) : kernels_(&kernels) {}

void ColumnMap::Map(const FrameGeometry& geometry, int firstIndex, int endIndex,
                    std::span<const float> levels, std::span<float> pixels) {
  assert(firstIndex >= 0 && endIndex <= static_cast<int>(levels.size()));
  if (!geometry.Valid() || pixels.empty() || firstIndex >= endIndex) {
    std::ranges::fill(pixels, kUndrawnLevel);
    return;
  }
  if (geometry != geometry_ || firstIndex != firstIndex_ || endIndex != endIndex_ ||
      bounds_.size() != pixels.size() + 1) {
    FindBounds(geometry, firstIndex, endIndex, static_cast<int>(pixels.size()));
  }
  const int pixelCount = static_cast<int>(pixels.size());
  kernels_->StrongestPerPixel(levels.data(), bounds_.data(), usualRun_, kUndrawnLevel, pixels.data(),
                              pixelCount);
  for (const Between& between : between_) {
    const float left = levels[static_cast<std::size_t>(between.right) - 1];
    const float right = levels[static_cast<std::size_t>(between.right)];
    const bool drawn = left != kUndrawnLevel && right != kUndrawnLevel;
    pixels[static_cast<std::size_t>(between.pixel)] =
        drawn ? left + (right - left) * between.share : kUndrawnLevel;
  }
}

void ColumnMap::FindBounds(const FrameGeometry& geometry, int firstIndex, int endIndex, int pixelCount) {
  geometry_ = geometry;
  firstIndex_ = firstIndex;
  endIndex_ = endIndex;
  bounds_.resize(static_cast<std::size_t>(pixelCount) + 1);
  const double pointsPerPixel = 1 / geometry.PixelsPerPoint();
  for (int c = 0; c <= pixelCount; ++c) {
    double point = std::ceil(geometry.FirstPoint + c * pointsPerPixel);
    // The last pixel keeps its right end: a radio's last point stands exactly there. Not reckoned pixel by
    // pixel, which at many widths ends a hair before it.
    if (c == pixelCount)
      point = pixelCount == geometry.PlotWidth ? geometry.LastPoint + 1
                                               : std::floor(geometry.FirstPoint + c * pointsPerPixel) + 1;
    const double limited = std::clamp(point, static_cast<double>(firstIndex), static_cast<double>(endIndex));
    bounds_[static_cast<std::size_t>(c)] = static_cast<int>(limited);
  }
  usualRun_ = std::max(1, static_cast<int>(pointsPerPixel));
  between_.clear();
  for (int c = 0; c < pixelCount; ++c) {
    const int right = bounds_[static_cast<std::size_t>(c)];
    if (right != bounds_[static_cast<std::size_t>(c) + 1] || right == firstIndex || right == endIndex)
      continue;
    const double share = (c + 0.5 - geometry.PointX(right - 1)) * pointsPerPixel;
    between_.push_back({.pixel = c, .right = right, .share = static_cast<float>(share)});
  }
}

}  // namespace spectrino
