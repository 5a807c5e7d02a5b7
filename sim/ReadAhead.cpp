#include "sim/ReadAhead.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <fstream>
#include <system_error>
#include <thread>

namespace spectrino {
namespace {

void FromLittleEndian(std::span<std::int16_t> samples) {
  if constexpr (std::endian::native == std::endian::big) {
    for (std::int16_t& sample : samples) {
      const auto raw = static_cast<std::uint16_t>(sample);
      sample = static_cast<std::int16_t>(static_cast<std::uint16_t>(raw << 8 | raw >> 8));
    }
  }
}

}  // namespace

ReadAhead::ReadAhead(const IqFile& file) : shared_(std::make_shared<Shared>(file)) {
  assert(file.Frames > 0);
  try {
    std::thread([shared = shared_] { Run(*shared); }).detach();
  } catch (const std::system_error&) {
    shared_->Broken = true;
  }
}

ReadAhead::~ReadAhead() {
  shared_->Wanted = kNone;
  shared_->Wanted.notify_one();
}

void ReadAhead::Run(Shared& shared) {
  std::ifstream input(shared.File.Path, std::ios::binary);
  for (std::uint64_t first = shared.Wanted; first != kNone; first = shared.Wanted) {
    std::uint64_t chunk = first;
    while (chunk < first + kAhead && shared.Slots[chunk % kSlots].Chunk == chunk) ++chunk;
    if (chunk == first + kAhead) {
      shared.Wanted.wait(first);
      continue;
    }
    Slot& slot = shared.Slots[chunk % kSlots];
    if (!Fill(input, shared.File, chunk, slot)) {
      shared.Broken = true;
      return;
    }
    slot.Chunk.store(chunk, std::memory_order_release);
  }
}

bool ReadAhead::Fill(std::istream& input, const IqFile& file, std::uint64_t chunk, Slot& slot) {
  std::uint64_t at = chunk * kChunkFrames % file.Frames;
  std::span<std::int16_t> rest(slot.Samples);
  while (!rest.empty()) {
    const auto frames = std::min<std::uint64_t>(rest.size() / 2, file.Frames - at);
    input.seekg(static_cast<std::streamoff>(file.DataAt + 4 * at));
    if (!input.read(reinterpret_cast<char*>(rest.data()), static_cast<std::streamsize>(4 * frames)))
      return false;
    rest = rest.subspan(2 * frames);
    at = 0;
  }
  FromLittleEndian(slot.Samples);
  return true;
}

ReadAhead::Got ReadAhead::Take(std::uint64_t firstFrame, std::span<std::int16_t> block) {
  assert(block.size() / 2 <= (kAhead - 2) * kChunkFrames);
  const std::uint64_t first = firstFrame / kChunkFrames;
  const std::uint64_t last = (firstFrame + block.size() / 2 - 1) / kChunkFrames;
  if (shared_->Wanted != first) {
    shared_->Wanted = first;
    shared_->Wanted.notify_one();
  }
  for (std::uint64_t chunk = first; chunk <= last; ++chunk) {
    if (shared_->Slots[chunk % kSlots].Chunk.load(std::memory_order_acquire) != chunk)
      return shared_->Broken ? Got::Never : Got::NotYet;
  }
  std::uint64_t from = firstFrame % kChunkFrames;
  for (std::uint64_t chunk = first; chunk <= last; ++chunk) {
    const std::span<const std::int16_t> samples(shared_->Slots[chunk % kSlots].Samples);
    const auto frames = std::min<std::uint64_t>(block.size() / 2, kChunkFrames - from);
    std::copy_n(samples.begin() + static_cast<std::ptrdiff_t>(2 * from), 2 * frames, block.begin());
    block = block.subspan(2 * frames);
    from = 0;
  }
  return Got::All;
}

}  // namespace spectrino
