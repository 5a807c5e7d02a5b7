// Numbers from text and back, the one lenient rule used for settings, protocols and text boxes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace spectrino {

/// Leading blanks skipped, optional sign, digits with an optional "." up to the first other character.
/// Text without a leading number is 0. No exponents, whatever the locale.
[[nodiscard]] double Val(std::string_view text);

/// Nearest integer, halves to even, clamped to the range of the type.
[[nodiscard]] std::int32_t RoundToInt32(double value);
[[nodiscard]] std::int16_t RoundToInt16(double value);

/// A number as the settings store writes it: shortest form that reads back the same, "." as separator.
[[nodiscard]] std::string NumberText(double value);

/// Text without leading and trailing blanks.
[[nodiscard]] std::string_view Trim(std::string_view text);

}  // namespace spectrino
