// Frequencies as operators read them: 14.074.000.
#pragma once

#include <string>

namespace spectrino {

/// MHz without leading zeros, three digits of kHz, three of Hz: "14.074.000", "1296.100.000".
/// Below 0.00001 MHz: "---------".
[[nodiscard]] std::string FrequencyText(double mhz);

/// The same without the last two digits, for the scale: "14.074.0"; without MHz the last five characters:
/// "074.0".
[[nodiscard]] std::string GridFrequencyText(double mhz, bool withMHz);

/// A scale label while no frequency is known: "+" and the offset in kHz, one decimal, no leading zero:
/// "+5.0K", "+.5K".
[[nodiscard]] std::string GridOffsetText(double offsetHz);

}  // namespace spectrino
