// A filter's width or place that is changed in steps. While they follow one another they count on from what
// was asked last: the radio still answers the earlier ones, or tells rounded values.
#pragma once

#include <algorithm>
#include <chrono>
#include <optional>

namespace spectrino {

class SteppedHz {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// counts: how long after a step the next one goes on from it.
  explicit SteppedHz(std::chrono::milliseconds counts) : counts_(counts) {}

  /// What to ask for: by deltaHz from what was asked last or, when that is long ago, from what the radio
  /// tells; not below leastHz.
  [[nodiscard]] double Step(double toldHz, double deltaHz, double leastHz, Time now) {
    const bool goesOn = sent_ && now - *sent_ < counts_;
    hz_ = std::max(leastHz, (goesOn ? hz_ : toldHz) + deltaHz);
    sent_ = now;
    return hz_;
  }

 private:
  std::chrono::milliseconds counts_;
  double hz_ = 0;
  std::optional<Time> sent_;
};

}  // namespace spectrino
