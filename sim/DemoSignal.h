// One thing on the demo band: what it sends, slice by slice.
// Not where it stands relative to the radio: DemoBand works that out and passes it in.
#pragma once

#include <cmath>
#include <cstdint>
#include <memory>
#include <numbers>
#include <span>
#include <vector>

#include "sim/ToneKernels.h"

namespace spectrino {

/// The level that a steady tone of amplitude 1 (of 32767) shows in a frame of 8192 points.
inline constexpr double kUnitToneLevelDb = 66.2266 - 150 - 6;  // 20 log10(8192 / 4) - 150 - 6 * (13 - 12)

[[nodiscard]] inline double AmplitudeOf(double levelDb) {
  return std::exp((levelDb - kUnitToneLevelDb) * (std::numbers::ln10 / 20));
}

/// A stretch of time of about 1.3 ms, the step of everything that is slower than a keying edge.
struct Slice {
  std::uint64_t FirstFrame = 0;
  int Frames = 0;
  int RateHz = 0;

  [[nodiscard]] double StartS() const { return static_cast<double>(FirstFrame) / RateHz; }
  [[nodiscard]] double LengthS() const { return static_cast<double>(Frames) / RateHz; }
};

/// How a signal stands in the received band at the moment.
struct Placement {
  double OffsetHz = 0;         ///< from the centre; positive is above
  double TimeShiftS = 0;       ///< own time = time + shift, so the repeated band is not in step with itself
  bool LowerSideband = false;  ///< voices use the lower sideband here
  double Gain = 1;             ///< below 1 at the edges of the sampled band
};

/// The phase of the signal's carrier during the slice.
[[nodiscard]] inline PhaseLine CarrierOf(const Slice& slice, const Placement& place) {
  return {place.OffsetHz * slice.StartS(), place.OffsetHz / slice.RateHz};
}

/// Slow fading: the level swings by DepthDb either way in two unrelated periods.
struct Fading {
  double LevelDb = -100;
  double DepthDb = 0;
  double PeriodS = 10;
  double Phase = 0;  ///< cycles

  [[nodiscard]] double AmplitudeAt(double seconds) const {
    const double slow = std::sin(2 * std::numbers::pi * (seconds / PeriodS + Phase));
    const double fast = std::sin(2 * std::numbers::pi * (seconds / (0.381966 * PeriodS) + 3 * Phase));
    return AmplitudeOf(LevelDb + DepthDb * (0.7 * slow + 0.3 * fast));
  }
};

class DemoSignal {
 public:
  /// patternHz: place within the repeated band. halfWidthHz: nothing is sent further away from it.
  DemoSignal(double patternHz, double halfWidthHz) : PatternHz(patternHz), HalfWidthHz(halfWidthHz) {}
  virtual ~DemoSignal() = default;
  DemoSignal(const DemoSignal&) = delete;
  DemoSignal& operator=(const DemoSignal&) = delete;

  /// Adds what the signal sends during the slice. Depends on nothing but the arguments.
  virtual void AddTo(const Slice& slice, const Placement& place, SliceBuffer& out) = 0;

  const double PatternHz;
  const double HalfWidthHz;
};

/// The band repeats after this much.
inline constexpr double kPatternHz = 200000;

/// Everything that stands in one repetition of the band (sim/DemoLayout.cpp).
[[nodiscard]] std::vector<std::unique_ptr<DemoSignal>> MakeDemoSignals(int rateHz, std::uint32_t seed);

}  // namespace spectrino
