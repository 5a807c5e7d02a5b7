// Levels by point to levels by pixel column.
// Draws nothing; trace, background peak and waterfall all take their columns from here.
#pragma once

#include <span>
#include <vector>

#include "state/FrameGeometry.h"

namespace spectrino {

struct Kernels;

class ColumnMap {
 public:
  ColumnMap();
  explicit ColumnMap(const Kernels& kernels);

  /// pixels[c] covers x in [c, c + 1), the last one its right end as well. It takes the strongest of the
  /// points in it; where points stand farther apart than that, the line between the two neighbours, at the
  /// pixel's centre. Pixels without data are kUndrawnLevel, and so is a point of exactly that level: no
  /// value. levels: by point index; firstIndex..endIndex-1 hold points. An invalid geometry draws nothing.
  void Map(const FrameGeometry& geometry, int firstIndex, int endIndex, std::span<const float> levels,
           std::span<float> pixels);

 private:
  /// A pixel without a point of its own, between the points right - 1 and right.
  struct Between {
    int pixel;
    int right;
    float share;  ///< of the way from left to right
  };

  void FindBounds(const FrameGeometry& geometry, int firstIndex, int endIndex, int pixelCount);

  const Kernels* kernels_;
  FrameGeometry geometry_;  ///< what bounds_ was made for
  int firstIndex_ = 0;
  int endIndex_ = 0;
  int usualRun_ = 1;  ///< points of most pixels, or one less
  std::vector<Between> between_;
  std::vector<int> bounds_;  ///< pixel c takes the points bounds_[c]..bounds_[c + 1]-1
};

}  // namespace spectrino
