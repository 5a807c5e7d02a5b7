// Powers of two among frame lengths: the check at Start and the exponent that goes with a length.
// Not a bit library.
#pragma once

#include <cstdint>

namespace spectrino {

/// Whether n can be a frame length: 2, 4, 8 ... False below 2.
[[nodiscard]] constexpr bool IsPowerOfTwo(std::int32_t n) {
  return n >= 2 && (n & (n - 1)) == 0;
}

/// The lowest bit of 0..16 that is set in n: for a frame length its exponent. 0 when none of them is set.
[[nodiscard]] constexpr std::uint8_t NumberOfBitsNeeded(std::int32_t n) {
  for (std::uint8_t bit = 0; bit <= 16; ++bit) {
    if ((n & (std::int32_t{1} << bit)) != 0) return bit;
  }
  return 0;
}

}  // namespace spectrino
