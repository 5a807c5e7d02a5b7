// The frames of a recording, read from its file by a thread that is always some seconds ahead.
// Whoever takes them never waits for the disk. What the file is, is IqFile's business.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <istream>
#include <memory>
#include <span>
#include <vector>

#include "sim/IqFile.h"

namespace spectrino {

class ReadAhead {
 public:
  enum class Got {
    All,     ///< the frames were copied
    NotYet,  ///< they are still being read
    Never,   ///< the file has become shorter, or cannot be read any more
  };

  explicit ReadAhead(const IqFile& file);
  /// Never waits: a read that is under way ends by itself.
  ~ReadAhead();
  ReadAhead(const ReadAhead&) = delete;
  ReadAhead& operator=(const ReadAhead&) = delete;

  /// Interleaved left, right samples from firstFrame on; the file begins anew behind its last frame. From one
  /// thread, and never backwards; at most 2^18 frames at once.
  [[nodiscard]] Got Take(std::uint64_t firstFrame, std::span<std::int16_t> block);

 private:
  static constexpr std::uint64_t kChunkFrames = 1 << 16;  // 0.3 s at 192000 Hz, 256 KiB
  static constexpr std::uint64_t kAhead = 6;              // chunks that are read from the first wanted on
  static constexpr std::uint64_t kNone = ~std::uint64_t{0};

  // Chunk n stands in slot n % kSlots. The thread fills chunks [wanted, wanted + kAhead) only, so what it
  // overwrites is kSlots - kAhead chunks or more behind what is being taken: nothing is locked.
  static constexpr std::size_t kSlots = 8;
  struct Slot {
    std::atomic<std::uint64_t> Chunk{kNone};
    std::vector<std::int16_t> Samples = std::vector<std::int16_t>(2 * kChunkFrames);
  };
  // The thread's as well: a disk that hangs keeps it alive beyond the recording.
  struct Shared {
    explicit Shared(const IqFile& file) : File(file) {}

    const IqFile File;
    std::array<Slot, kSlots> Slots{};
    std::atomic<std::uint64_t> Wanted{0};  // the first chunk that may still be taken; kNone: stop
    std::atomic<bool> Broken{false};
  };

  static void Run(Shared& shared);
  [[nodiscard]] static bool Fill(std::istream& input, const IqFile& file, std::uint64_t chunk, Slot& slot);

  std::shared_ptr<Shared> shared_;
};

}  // namespace spectrino
