// What has to hold whatever comes in. Ends the program where it does not, as libFuzzer wants it.
#pragma once

#include <cstdlib>

namespace spectrino::fuzz {

inline void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace spectrino::fuzz
