#include "sim/PacedStream.h"

#include <algorithm>
#include <utility>

namespace spectrino {

PacedStream::PacedStream(const Clock& clock, int rateHz, Render render)
    : clock_(clock), rateHz_(rateHz), render_(std::move(render)), start_(clock.Now()) {}

std::uint64_t PacedStream::FramesDue() const {
  const auto passed = std::chrono::duration_cast<std::chrono::microseconds>(clock_.Now() - start_).count();
  return static_cast<std::uint64_t>(std::max<std::int64_t>(passed, 0)) * static_cast<std::uint64_t>(rateHz_) /
         1'000'000;
}

BlockState PacedStream::TakeBlock(std::span<std::int16_t> block) {
  const std::uint64_t frames = block.size() / 2;
  const std::uint64_t due = FramesDue();
  if (frames == 0 || due < taken_ + frames) return BlockState::Pending;
  const std::uint64_t kept = std::max(4 * frames, static_cast<std::uint64_t>(rateHz_) / 4);
  // A caller that paused gets what is new, on the grid of blocks, so that what it missed is not shown late.
  if (due - taken_ > kept) taken_ += (due - taken_ - frames) / frames * frames;
  render_(taken_, block);
  taken_ += frames;
  return BlockState::Done;
}

}  // namespace spectrino
