#include "run/SMeterLevel.h"

#include <algorithm>
#include <cmath>

namespace spectrino {

std::optional<float> StrongestLevel(const SpectrumLine& line, double lowMHz, double highMHz) {
  const double spanMHz = line.RightMHz - line.LeftMHz;
  if (line.PointCount < 2 || !(spanMHz > 0)) return std::nullopt;
  // A radio's last point stands at the right edge, a transform's one step before it.
  const double steps = line.FirstIndex == 0 ? line.PointCount : line.PointCount - 1;
  const auto index = [&](double mhz) { return line.FirstIndex + (mhz - line.LeftMHz) / spanMHz * steps; };
  // Rounded to the nearest points, so that a filter narrower than a point still meets one.
  const double first = std::max(std::round(index(lowMHz)), static_cast<double>(line.FirstIndex));
  const double last = std::min(std::round(index(highMHz)), static_cast<double>(line.EndIndex() - 1));
  if (!(first <= last)) return std::nullopt;
  const auto begin = line.Levels.begin();
  const float strongest =
      *std::max_element(begin + static_cast<long>(first), begin + static_cast<long>(last) + 1);
  if (strongest <= kEmptyLevel) return std::nullopt;
  return strongest;
}

float SMeterHold::Update(float levelDbm, double holdSeconds, TimePoint now) {
  const bool expired = std::chrono::duration<double>(now - heldSince_).count() >= holdSeconds;
  if (!held_ || levelDbm >= *held_ || expired) {
    held_ = levelDbm;
    heldSince_ = now;
  }
  return *held_;
}

}  // namespace spectrino
