// A level as an S-meter reading: "S9+20" or "+20".
// Text only; which level is metered and where the text stands are the callers' business.
#pragma once

#include <cstdint>
#include <string>

namespace spectrino {

/// S9 is -73 dBm, 6 dB an S unit below it, dB in steps of 5 above. displayDesign 1: "S7", "S9", "S9+20"
/// (whole S units, halves rounded up); any other: "7.5", "9.0", "+20" (half units; ".0" at the bottom).
[[nodiscard]] std::string SMeterText(std::int16_t levelDbm, int displayDesign);

}  // namespace spectrino
