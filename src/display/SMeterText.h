// The S-meter reading as text: S9 is -73 dBm, 6 dB an S unit below it, dB over S9 above.
// Measures nothing; the level comes from outside.
#pragma once

#include <cstdint>
#include <string>

namespace spectrino {

/// levelDbm: whole dBm, any value. displayDesign 0: "7.5", "9.0", "+20" (no zero before the point: ".5");
/// 1: "S7", "S9", "S9+20", half S units rounded away from zero.
[[nodiscard]] std::string SMeterText(std::int16_t levelDbm, int displayDesign);

}  // namespace spectrino
