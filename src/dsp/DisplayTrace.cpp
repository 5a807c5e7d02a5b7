#include "dsp/DisplayTrace.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>

#include "dsp/kernels/Kernels.h"
#include "state/SpectrumLine.h"

namespace spectrino {

DisplayTrace::DisplayTrace() : DisplayTrace(BestKernels()) {}
DisplayTrace::DisplayTrace(const Kernels& kernels) : kernels_(&kernels) {}

void DisplayTrace::Map(const FrameGeometry& geometry, int firstIndex, int endIndex,
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
  const double pixelsPerPoint = geometry.PixelsPerPoint();
  for (std::size_t c = 0; c < pixels.size(); ++c) {
    const int begin = bounds_[c];
    const int end = bounds_[c + 1];
    if (begin < end) {
      pixels[c] = kernels_->Strongest(levels.data() + begin, kUndrawnLevel, end - begin);
      continue;
    }
    pixels[c] = kUndrawnLevel;
    if (begin == firstIndex || begin == endIndex) continue;
    const float left = levels[static_cast<std::size_t>(begin) - 1];
    const float right = levels[static_cast<std::size_t>(begin)];
    if (left == kUndrawnLevel || right == kUndrawnLevel) continue;
    const double centre = static_cast<double>(c) + 0.5;
    const double share = (centre - geometry.PointX(begin - 1)) / pixelsPerPoint;
    pixels[c] = static_cast<float>(left + (right - left) * share);
  }
}

void DisplayTrace::FindBounds(const FrameGeometry& geometry, int firstIndex, int endIndex, int pixelCount) {
  geometry_ = geometry;
  firstIndex_ = firstIndex;
  endIndex_ = endIndex;
  bounds_.resize(static_cast<std::size_t>(pixelCount) + 1);
  const double pointsPerPixel = 1 / geometry.PixelsPerPoint();
  for (int c = 0; c <= pixelCount; ++c) {
    double point = std::ceil(geometry.FirstPoint + c * pointsPerPixel);
    // The last pixel keeps its right end: a radio's last point stands exactly there.
    if (c == pixelCount) point = std::floor(geometry.FirstPoint + c * pointsPerPixel) + 1;
    const double limited = std::clamp(point, static_cast<double>(firstIndex), static_cast<double>(endIndex));
    bounds_[static_cast<std::size_t>(c)] = static_cast<int>(limited);
  }
}

int ColourIndex(float level, float bottom, float top) {
  if (!(top > bottom)) return 0;
  const float index = (level - bottom) / (top - bottom) * 256;
  return static_cast<int>(std::lrint(std::clamp(index, 0.0F, 256.0F)));
}

double LevelToY(double level, double bottom, double top, double plotBottom, double plotHeight) {
  return plotBottom - (level - bottom) / (top - bottom) * plotHeight;
}

}  // namespace spectrino
