// Which frequencies around or beside the dial a receiver's filter lets through.
// Numbers for shading and the S-meter; no filter is built from them.
#pragma once

#include "state/RadioState.h"

namespace spectrino {

/// Whether what a mode receives lies around the dial: CW, AM and FM. The sidebands and DATA lie beside it; no
/// mode counts as USB.
[[nodiscard]] bool LiesAroundDial(int radioMode);
/// Whether it lies below the dial: LSB and reverse DATA.
[[nodiscard]] bool LiesBelowDial(int radioMode);

/// Edges relative to the dial frequency, Hz; LowHz < HighHz.
struct Passband {
  double LowHz = 0;
  double HighHz = 2700;
};

/// The passband from mode, bandwidth and the shift of the filter's middle, both Hz. Beside the dial a shift
/// counts from it on the mode's own side. A bandwidth of 0 is not known: the usual one of the mode.
[[nodiscard]] Passband PassbandOf(int radioMode, double bandwidthHz, double shiftHz);
/// The main receiver's.
[[nodiscard]] Passband MainPassband(const RadioState& radio);
/// The sub receiver's.
[[nodiscard]] Passband SubPassband(const RadioState& radio);

}  // namespace spectrino
