// A sound stream without hardware: blocks become due as the clock goes on.
// What is in the blocks is the business of whoever derives from it.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <span>
#include <string>

#include "platform/Clock.h"
#include "platform/SoundInput.h"

namespace spectrino {

class PacedStream : public SoundStream {
 public:
  /// The first frame is recorded now. clock must outlive the stream.
  PacedStream(const Clock& clock, int rateHz) : clock_(clock), rateHz_(rateHz), start_(clock.Now()) {}

  BlockState TakeBlock(std::span<std::int16_t> block) final {
    const std::uint64_t frames = block.size() / 2;
    if (frames == 0) return BlockState::Pending;
    const std::uint64_t arrived = ArrivedFrames();
    if (arrived < nextFrame_ + frames) return BlockState::Pending;
    // Nobody wants to see late what was on the air while the window was busy.
    const std::uint64_t waiting = arrived - nextFrame_;
    if (waiting > std::max(4 * frames, static_cast<std::uint64_t>(rateHz_) / 4)) {
      nextFrame_ += (waiting / frames - 1) * frames;
    }
    const BlockState state = Fill(nextFrame_, block);
    if (state == BlockState::Done) nextFrame_ += frames;
    return state;
  }

 protected:
  /// Writes the frames from firstFrame on, counted from the start of the stream; firstFrame never goes back.
  /// Pending: they are due but not to be had yet, and are asked for again.
  virtual BlockState Fill(std::uint64_t firstFrame, std::span<std::int16_t> block) = 0;

 private:
  [[nodiscard]] std::uint64_t ArrivedFrames() const {
    using std::chrono::nanoseconds;
    using std::chrono::seconds;
    const auto elapsed = std::chrono::duration_cast<nanoseconds>(clock_.Now() - start_);
    // Whole seconds apart: nanoseconds times rate would overflow after half a day.
    const auto whole = std::chrono::duration_cast<seconds>(elapsed);
    const auto rate = static_cast<std::int64_t>(rateHz_);
    return static_cast<std::uint64_t>(whole.count() * rate +
                                      nanoseconds(elapsed - whole).count() * rate / 1'000'000'000);
  }

  const Clock& clock_;
  int rateHz_;
  std::chrono::steady_clock::time_point start_;
  std::uint64_t nextFrame_ = 0;
};

}  // namespace spectrino
