// The limits that entries of the setup dialog meet before they are saved.
// Limits on loading belong to the keys themselves.
#pragma once

#include <algorithm>
#include <array>

namespace spectrino {

[[nodiscard]] constexpr double LimitOffsetKHz(double offsetKHz) {
  return std::clamp(offsetKHz, -20.0, 20.0);
}

[[nodiscard]] constexpr double LimitAutoSpanKHz(double spanKHz) {
  return std::clamp(spanKHz, 6.0, 368.0);
}

/// The second quick-split offset stands at least 1 kHz above the first.
[[nodiscard]] constexpr std::array<double, 2> LimitQSplitKHz(double first, double second) {
  first = std::clamp(first, 0.0, 98.9);
  return {first, std::min(std::max(second, first + 1), 99.9)};
}

}  // namespace spectrino
