// Bytes and BCD numbers as the hexadecimal text in which CI-V frames are built and parsed.
// Knows no command and no frame.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace spectrino {

/// 0..255 from one or two hexadecimal characters of either case, blanks around them trimmed. A character that
/// is no hexadecimal digit counts as 0; empty or longer text is 0.
[[nodiscard]] int HexByteValue(std::string_view text);

/// Appends two upper-case digits for each byte.
void AppendHexText(std::string& text, std::span<const std::uint8_t> bytes);

/// One byte for each pair of characters, by HexByteValue; a last single character is left out.
[[nodiscard]] std::vector<std::uint8_t> BytesFromHexText(std::string_view text);

/// BCD read most significant digit first: "0128" is 128. Nothing for empty text, for more than nine digits
/// and for text with a character that is no decimal digit.
[[nodiscard]] std::optional<int> BcdNumber(std::string_view text);

/// Five BCD bytes, least significant first, to MHz: "0000231400" is 14.23. Text of any other length, or with
/// a character that is no decimal digit, gives 0; FreqDigits tells these apart from a true 0.
[[nodiscard]] double DecodeFreq(std::string_view hex10);
[[nodiscard]] bool FreqDigits(std::string_view hex10);

/// MHz to five BCD bytes in the same order: 14.074 is "0040071400". Below 1 Hz is cut off; 10 GHz and above
/// lose their top digit; negative is 0.
[[nodiscard]] std::string EncodeFreq(double freqMHz);

}  // namespace spectrino
