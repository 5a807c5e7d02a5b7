// Which row of the waterfall's palette a level has.
// The colours themselves are display/Colours.h.
#pragma once

#include <algorithm>

namespace spectrino {

/// 0 at bottom and below, 256 at top and above.
[[nodiscard]] inline int WaterfallColourIndex(float level, float bottom, float top) {
  if (!(top > bottom)) return 0;
  const float index = std::clamp((level - bottom) / (top - bottom) * 256, 0.0F, 256.0F);
  // Adding 1.5 * 2^23 leaves no bits for a fraction: rounded, halves to even, without a library call.
  constexpr float kNoFraction = 12582912.0F;
  return static_cast<int>(index + kNoFraction - kNoFraction);
}

}  // namespace spectrino
