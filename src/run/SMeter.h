// The level that the S-meter shows, and its peak hold.
#pragma once

#include <chrono>
#include <optional>

#include "run/RunView.h"
#include "settings/PanSettings.h"
#include "state/RadioState.h"

namespace spectrino {

/// The strongest level of a line between two frequencies; nothing when none of its points lies there.
[[nodiscard]] std::optional<float> StrongestLevel(const SpectrumLine& line, double lowMHz, double highMHz);

struct Readings {
  float SMeterDbm = -200;      ///< level of the tuned signal
  float SMeterHeldDbm = -200;  ///< the highest of the last seconds
  bool SMeterKnown = false;
};

class SMeter {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  /// With each new line: the radio's own reading where it tells one and "OptSM" asks for it, else the
  /// strongest level in the main passband, as it is at the antenna.
  void Update(const RunView& run, const RadioState& radio, const PanSettings& settings, TimePoint now);
  void Reset() { *this = {}; }
  [[nodiscard]] const Readings& Shown() const { return readings_; }

 private:
  /// A hold of 0 s or less shows the level itself.
  void Hold(double holdSeconds, TimePoint now);

  Readings readings_;
  std::optional<float> held_;
  TimePoint heldSince_{};
};

}  // namespace spectrino
