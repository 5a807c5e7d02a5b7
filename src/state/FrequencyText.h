// Frequencies as operators read them: 14.074.000.
#pragma once

#include <string>
#include <string_view>

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

/// MHz from what an operator typed: "14.074", "14,074", "14.074.000" (MHz, kHz, Hz), "14074.5" (kHz, from
/// 1300 on), or digits alone, which are MHz below 1000, kHz below a million, else Hz. 0 for anything else.
[[nodiscard]] double TypedMHz(std::string_view text);

}  // namespace spectrino
