// Tells when the samples of an input stand still: no cable, no power, or the wrong input.
// A quiet band is no silence; its noise moves the samples.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <span>
#include <string>

namespace spectrino {

class SilenceWatch {
 public:
  using Time = std::chrono::steady_clock::time_point;
  /// So long without any change is told.
  static constexpr std::chrono::seconds kPatience{2};

  /// The next block of interleaved left, right samples, which began and ended at these times.
  void Heard(std::span<const std::int16_t> block, Time begin, Time end);
  void Restart() { *this = {}; }
  /// Nothing moved in the last block, on neither channel: it holds no signal at all.
  [[nodiscard]] bool StandsStill() const { return channels_[0].Still && channels_[1].Still; }
  /// What the user is told about the input of that name; empty while both channels live.
  [[nodiscard]] std::string Warning(const std::string& name) const;

 private:
  struct Channel {
    bool Still = false;  ///< since Since it has had this one value
    std::int16_t Value = 0;
    Time Since{};
  };
  [[nodiscard]] bool Silent(const Channel& channel) const {
    return channel.Still && end_ - channel.Since >= kPatience;
  }

  std::array<Channel, 2> channels_;
  Time end_{};
};

}  // namespace spectrino
