// The largest of the last frames of every point, at the same cost for 2 frames as for 21.
// Part of LevelHistory; keeps no levels of its own but works in a ring of rows.
//
// Frames are taken in blocks of the window's length. Within a block a running maximum is kept; when a block
// is complete its rows are replaced by their maxima from the block's end back, so that the window, which
// reaches from the middle of one block into the next, is one row of the old block and the running maximum of
// the new one (van Herk's scheme). Every chunk of points has its blocks begin at another frame, so that this
// replacing is spread evenly over the frames.
#pragma once

#include <cstddef>
#include <vector>

namespace spectrino {

struct Kernels;

/// Rows of levels, one per frame, the oldest overwritten.
class LevelRing {
 public:
  void Reset(std::size_t points, int rows, float level);
  [[nodiscard]] float* Row(long frame) {
    return levels_.data() + static_cast<std::size_t>(frame % rows_) * stride_;
  }
  [[nodiscard]] const float* Row(long frame) const {
    return levels_.data() + static_cast<std::size_t>(frame % rows_) * stride_;
  }

 private:
  long rows_ = 1;
  std::size_t stride_ = 0;
  std::vector<float> levels_;
};

class SlidingMaximum {
 public:
  /// Points that are handled as one; calls of Update begin at multiples of it.
  static constexpr std::size_t kChunk = 512;

  void Reset(std::size_t points) { running_.assign(points, 0); }
  /// frame is the first that counts from now on. window: frames looked at, at most the rows of the ring.
  void Restart(long frame, int window) {
    start_ = frame;
    window_ = window;
  }
  /// maximum[i] = the largest of the points begin + i in the frames up to frame, whose row was just stored.
  /// Older rows change, but never the one before the newest.
  void Update(const Kernels& kernels, LevelRing& ring, long frame, std::size_t begin, int count,
              float* maximum);

 private:
  std::vector<float> running_;
  long start_ = 0;
  int window_ = 1;
};

}  // namespace spectrino
