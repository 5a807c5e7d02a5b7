// One line of a simulated Icom's scope: what it shows, its amplitude bytes, its frames.
// Not when it is sent: see IcomRadio.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "sim/icom/IcomSimControl.h"

namespace spectrino {

struct SimScopeView {
  bool Fixed = false;
  std::int64_t LowHz = 0;
  std::int64_t HighHz = 0;
  bool OutOfRange = false;  ///< the radio is tuned to a place that the fixed picture does not show
  double RefDb = 0;

  [[nodiscard]] std::int64_t CentreHz() const { return (LowHz + HighHz) / 2; }
  [[nodiscard]] std::int64_t HalfSpanHz() const { return (HighHz - LowHz) / 2; }
};

[[nodiscard]] SimScopeView ScopeViewOf(const IcomSimControl& control);

/// Amplitude bytes, 0..fullScale for 80 dB: at reference level 0 the bottom is -133 dBm, and a higher
/// reference level lifts the picture.
[[nodiscard]] SimBytes ScopeAmplitudes(std::span<const double> dBm, double refDb, int fullScale);

/// The line as 1..15 commands without addresses. One division carries header and amplitudes together; with
/// more, the first one is the header alone.
///
///   27 00 | 00 | division (BCD) | divisions (BCD) | mode | centre or low edge (5 BCD)
///         | half span or high edge (5 BCD) | out of range | amplitudes ...
///   27 00 | 00 | division (BCD) | divisions (BCD) | amplitudes ...
[[nodiscard]] std::vector<SimBytes> ScopeFrames(const SimScopeView& view, SimByteView amplitudes,
                                                int divisions);

}  // namespace spectrino
