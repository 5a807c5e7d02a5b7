// Stereo samples on their way from the capture thread to the frame loop, without a lock.
// Not a queue that waits: the writer never stops for the reader, and a reader that paused loses the old part.
#pragma once

#include <atomic>
#include <cstdint>
#include <span>
#include <vector>

namespace spectrino {

/// One writer thread calls Write, one reader thread calls TakeBlock.
class SampleRing {
 public:
  /// staleFrames: a reader that is further behind than this many stereo frames jumps to the newest block.
  explicit SampleRing(std::size_t staleFrames);

  /// Adds interleaved left, right samples; a whole number of stereo frames. Overwrites what nobody took.
  void Write(std::span<const std::int16_t> samples);

  /// Copies the next block.size() / 2 stereo frames, at most staleFrames, once all of them are there. Blocks
  /// follow one another without gap or overlap; only a reader that is too far behind skips to the newest.
  [[nodiscard]] bool TakeBlock(std::span<std::int16_t> block);

 private:
  void WriteChunk(std::span<const std::int16_t> samples);
  void CopyOut(std::uint64_t first, std::span<std::int16_t> block) const;

  // A stereo frame is one atomic word: the reader may look at a slot that is just being overwritten, finds
  // that out afterwards and looks again.
  std::vector<std::atomic<std::uint32_t>> slots_;
  std::uint64_t staleFrames_;
  std::uint64_t read_ = 0;                 // the reader's own: frames taken or skipped so far
  std::atomic<std::uint64_t> written_{0};  // frames that are complete
  std::atomic<std::uint64_t> claimed_{0};  // frames whose slots may be changing already
};

}  // namespace spectrino
