// Sound inputs: what there is, and one open 16-bit stereo stream.
// Implemented by the sound server, the demo signal and I/Q files.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "state/SourceId.h"

namespace spectrino {

struct SoundDevice {
  std::string Name;        ///< as the desktop shows it
  std::string StableId;    ///< survives replugging and reordering; unique among all inputs
  bool HasFormats = true;  ///< a device without any usable format is not listed
  int FixedRateHz = 0;     ///< the only rate it runs at; 0 when any may be asked for
  SourceKind Kind = SourceKind::SoundInput;
  int UsualRateHz = 0;  ///< what it ran at when it was listed; 0 when that is not known
};

enum class BlockState {
  Pending,  ///< the block has not arrived yet
  Done,     ///< the block was copied
  Failed,   ///< the stream has ended; Failure() tells why
};

/// One open stream. Closes when destroyed, with or without a block pending, without waiting for one.
class SoundStream {
 public:
  virtual ~SoundStream() = default;
  SoundStream() = default;
  SoundStream(const SoundStream&) = delete;
  SoundStream& operator=(const SoundStream&) = delete;

  /// Copies the next block of interleaved left, right samples (block.size() / 2 stereo frames) when all of it
  /// has arrived. Never blocks. Blocks follow one another without gap or overlap, but after a pause of the
  /// caller of more than four blocks (or a quarter of a second, if that is longer) the old ones are dropped
  /// and the newest is returned.
  virtual BlockState TakeBlock(std::span<std::int16_t> block) = 0;
  /// After Failed: what happened, in the user's terms, without a full stop.
  [[nodiscard]] virtual std::string Cause() const = 0;
  /// After Failed: the same with what to do, as whole sentences.
  [[nodiscard]] virtual std::string Failure() const { return Cause() + "."; }
  /// What is wrong with the levels though the stream runs (muted, volume not 100 %); empty when nothing is.
  [[nodiscard]] virtual std::string Warning() const { return {}; }
};

/// Both functions may wait for a server, seconds at most, and may be called from several threads at once.
class SoundInput {
 public:
  virtual ~SoundInput() = default;
  /// Every input, in device order. Never fails: no server means no devices.
  [[nodiscard]] virtual std::vector<SoundDevice> Devices() = 0;
  /// Opens a 16-bit stereo stream at exactly rateHz, delivering blocks of blockFrames stereo frames.
  /// Null when the device is gone, busy or does not run at that rate; reason then says which, as a sentence.
  [[nodiscard]] virtual std::unique_ptr<SoundStream> Open(const SoundDevice& device, int rateHz,
                                                          int blockFrames, std::string& reason) = 0;
};

}  // namespace spectrino
