// The demo band: I/Q samples of an endless amateur band around any frequency, at any of the seven rates.
// Keeps no time of its own; pacing is the stream's business (DemoInput).
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "sim/DemoSignal.h"

namespace spectrino {

/// The rates that a sound input can be opened at.
inline constexpr std::array<int, 7> kSoundRatesHz{11025, 22050, 44100, 48000, 88200, 96000, 192000};
[[nodiscard]] bool IsSoundRate(int rateHz);

class DemoBand {
 public:
  /// rateHz: one of kSoundRatesHz. The same rate and seed give the same band.
  DemoBand(int rateHz, std::uint32_t seed);

  /// Fills block with interleaved left, right samples of the frames from firstFrame on. The band stands at
  /// absolute frequencies and repeats every 200 kHz; centreMHz is what 0 Hz receives, 0 when unknown.
  /// A signal f Hz above the centre is L = cos(2 pi f t), R = -sin(2 pi f t), which the spectrum shows on the
  /// right. Any frame can be asked for in any order, and how frames are cut into blocks changes nothing.
  void Render(std::uint64_t firstFrame, double centreMHz, std::span<std::int16_t> block);

 private:
  struct Visible {
    DemoSignal* Signal = nullptr;
    Placement Place;
  };

  void Retune(double centreMHz);
  void RenderSlice(std::uint64_t number);

  int rateHz_;
  int sliceFrames_;
  std::uint64_t noiseKey_;
  std::vector<std::unique_ptr<DemoSignal>> signals_;
  std::vector<Visible> visible_;
  std::optional<double> centreMHz_;           ///< that visible_ was made for
  std::optional<std::uint64_t> sliceNumber_;  ///< whose samples slice_ holds
  std::array<std::int16_t, 2 * kMaxSliceFrames> slice_{};
};

}  // namespace spectrino
