#include "dsp/SlidingMaximum.h"

#include <algorithm>

#include "dsp/kernels/Kernels.h"

namespace spectrino {

void LevelRing::Reset(std::size_t points, int rows, float level) {
  // Rows a power of two apart would all fall into the same few sets of the cache.
  stride_ = points + 80;
  rows_ = rows;
  levels_.assign(static_cast<std::size_t>(rows) * stride_, level);
}

void SlidingMaximum::Update(const Kernels& kernels, LevelRing& ring, long frame, std::size_t begin, int count,
                            float* maximum) {
  const float* newest = ring.Row(frame) + begin;
  float* running = running_.data() + begin;
  const long sinceStart = frame - start_;
  const long inBlock = (sinceStart + static_cast<long>(begin / kChunk)) % window_;
  const long oldest = std::max(start_, frame - window_ + 1);
  if (inBlock == 0 || sinceStart == 0) {
    for (long older = frame - 2; older >= oldest; --older) {
      float* row = ring.Row(older) + begin;
      kernels.Maximum(row, ring.Row(older + 1) + begin, row, count);
    }
    std::copy_n(newest, count, running);
  } else {
    kernels.Maximum(running, newest, running, count);
  }
  const bool reachesBack = oldest < frame - inBlock;
  kernels.Maximum(running, reachesBack ? ring.Row(oldest) + begin : running, maximum, count);
}

}  // namespace spectrino
