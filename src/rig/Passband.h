// Which frequencies around the dial the main filter lets through.
// Numbers for shading and the S-meter; no filter is built from them.
#pragma once

#include "state/RadioState.h"

namespace spectrino {

/// Edges relative to the dial frequency, Hz; LowHz < HighHz.
struct Passband {
  double LowHz = 0;
  double HighHz = 2700;
};

/// The main receiver's passband from mode, bandwidth and shift. SSB and DATA lie on their side of the dial,
/// CW, AM and FM around it. A bandwidth that the radio does not tell is the usual one of the mode; no mode
/// counts as USB.
[[nodiscard]] Passband MainPassband(const RadioState& radio);
/// The sub receiver's, by the same rules.
[[nodiscard]] Passband SubPassband(const RadioState& radio);

}  // namespace spectrino
