#include "adapters/sound/SampleRing.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>

namespace spectrino {
namespace {

// The writer claims at most this many frames at a time, so that claimed and written stay close together.
constexpr std::size_t kChunkFrames = 1024;

// Twice the stale distance: a reader at the limit still has as much time again to copy its block.
std::size_t SlotCount(std::size_t staleFrames) {
  return std::bit_ceil(2 * staleFrames + kChunkFrames);
}

}  // namespace

SampleRing::SampleRing(std::size_t staleFrames) : slots_(SlotCount(staleFrames)), staleFrames_(staleFrames) {
  assert(staleFrames > 0);
}

void SampleRing::Write(std::span<const std::int16_t> samples) {
  assert(samples.size() % 2 == 0);
  while (!samples.empty()) {
    const auto chunk = samples.first(std::min(samples.size(), 2 * kChunkFrames));
    WriteChunk(chunk);
    samples = samples.subspan(chunk.size());
  }
}

void SampleRing::WriteChunk(std::span<const std::int16_t> samples) {
  const std::uint64_t first = written_.load(std::memory_order_relaxed);
  const std::uint64_t end = first + samples.size() / 2;
  claimed_.store(end, std::memory_order_relaxed);
  // Whoever sees one of the new samples below also sees the claim above.
  std::atomic_thread_fence(std::memory_order_release);
  const std::uint64_t mask = slots_.size() - 1;
  for (std::uint64_t frame = first; frame < end; ++frame, samples = samples.subspan(2)) {
    std::uint32_t word = 0;
    std::memcpy(&word, samples.data(), sizeof word);
    slots_[frame & mask].store(word, std::memory_order_relaxed);
  }
  written_.store(end, std::memory_order_release);
}

bool SampleRing::TakeBlock(std::span<std::int16_t> block) {
  const std::uint64_t frames = block.size() / 2;
  assert(block.size() % 2 == 0 && frames <= staleFrames_);
  for (;;) {
    const std::uint64_t written = written_.load(std::memory_order_acquire);
    if (written - read_ < frames) return false;
    if (written - read_ > staleFrames_) read_ = written - frames;
    CopyOut(read_, block);
    std::atomic_thread_fence(std::memory_order_acquire);
    if (claimed_.load(std::memory_order_relaxed) - read_ <= slots_.size()) break;
    // The writer came round while the block was copied. That puts the reader beyond the stale distance, so
    // the next turn takes the newest block, which lies a whole ring away from the writer.
  }
  read_ += frames;
  return true;
}

void SampleRing::CopyOut(std::uint64_t first, std::span<std::int16_t> block) const {
  const std::uint64_t mask = slots_.size() - 1;
  for (std::uint64_t frame = first; !block.empty(); ++frame, block = block.subspan(2)) {
    const std::uint32_t word = slots_[frame & mask].load(std::memory_order_relaxed);
    std::memcpy(block.data(), &word, sizeof word);
  }
}

}  // namespace spectrino
