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

/// The label of a line of a grid of stepHz: as above, with the last two digits where the step needs them.
[[nodiscard]] std::string GridFrequencyText(double mhz, double stepHz, bool withMHz);

/// A scale label while no frequency is known: the sign and the offset in kHz with as many decimals, up to
/// three, as multiples of stepHz need, halves away from zero, no leading zero: "+5K", "-12.5K", "+.5K"; "0".
[[nodiscard]] std::string GridOffsetText(double offsetHz, double stepHz);

/// MHz from what an operator typed: "14.074", "14,074", "14.074.000" (MHz, kHz, Hz), "14074.5" (kHz, from
/// 1300 on), or digits alone, which are MHz below 1000, kHz below a million, else Hz. 0 for anything else.
[[nodiscard]] double TypedMHz(std::string_view text);

}  // namespace spectrino
