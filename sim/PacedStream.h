// Real-time pacing of made or recorded samples, block by block.
// Has no thread: a block is made when it is asked for and due.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "platform/Clock.h"
#include "platform/SoundInput.h"

namespace spectrino {

class PacedStream final : public SoundStream {
 public:
  /// Fills a block whose first stereo frame is the given one since the stream began.
  using Render = std::function<void(std::uint64_t firstFrame, std::span<std::int16_t> block)>;

  PacedStream(const Clock& clock, int rateHz, Render render);

  BlockState TakeBlock(std::span<std::int16_t> block) override;
  [[nodiscard]] std::string Failure() const override { return {}; }

 private:
  [[nodiscard]] std::uint64_t FramesDue() const;

  const Clock& clock_;
  int rateHz_;
  Render render_;
  std::chrono::steady_clock::time_point start_;
  std::uint64_t taken_ = 0;  // frames handed out or dropped
};

}  // namespace spectrino
