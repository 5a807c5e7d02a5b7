// The level that the S-meter shows, and its peak hold.
#pragma once

#include <chrono>
#include <optional>

#include "rig/Passband.h"
#include "state/FrameGeometry.h"
#include "state/SpectrumLine.h"

namespace spectrino {

/// What a level of an Icom's scope, 0..160, is at the antenna, about: the scope tells heights, not powers.
[[nodiscard]] constexpr float IcomScopeDbm(float level, double referenceDb) {
  return static_cast<float>(-133 + level / 2 - referenceDb);
}

/// The strongest level of a line between two frequencies; nothing when none of its points lies there.
[[nodiscard]] std::optional<float> StrongestLevel(const SpectrumLine& line, double lowMHz, double highMHz);

/// The highest level of the last few seconds, for the bar's mark.
class SMeterHold {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  /// Takes a new level; returns the held one. A hold of 0 s or less shows the level itself.
  float Update(float levelDbm, double holdSeconds, TimePoint now);
  void Reset() { held_.reset(); }

 private:
  std::optional<float> held_;
  TimePoint heldSince_{};
};

}  // namespace spectrino
