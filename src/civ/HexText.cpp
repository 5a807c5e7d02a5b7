#include "civ/HexText.h"

#include <algorithm>

#include "state/Val.h"

namespace spectrino {
namespace {

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr int DigitValue(char c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return 0;
}

}  // namespace

int HexByteValue(std::string_view text) {
  const std::string_view digits = Trim(text);
  if (digits.size() == 1) return DigitValue(digits[0]);
  if (digits.size() == 2) return 16 * DigitValue(digits[0]) + DigitValue(digits[1]);
  return 0;
}

void AppendHexText(std::string& text, std::span<const std::uint8_t> bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (const std::uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
}

std::vector<std::uint8_t> BytesFromHexText(std::string_view text) {
  std::vector<std::uint8_t> bytes(text.size() / 2);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<std::uint8_t>(HexByteValue(text.substr(2 * i, 2)));
  }
  return bytes;
}

std::optional<int> BcdNumber(std::string_view text) {
  if (text.empty() || text.size() > 9 || !std::ranges::all_of(text, IsDigit)) return std::nullopt;
  int number = 0;
  for (const char digit : text) number = 10 * number + (digit - '0');
  return number;
}

bool FreqDigits(std::string_view hex10) {
  return hex10.size() == 10 && std::ranges::all_of(hex10, IsDigit);
}

double DecodeFreq(std::string_view hex10) {
  if (!FreqDigits(hex10)) return 0;
  std::int64_t hertz = 0;
  for (int byte = 4; byte >= 0; --byte) {
    hertz = 100 * hertz + *BcdNumber(hex10.substr(static_cast<std::size_t>(2 * byte), 2));
  }
  return static_cast<double>(hertz) / 1e6;
}

std::string EncodeFreq(double freqMHz) {
  // The tenth of a hertz lifts products such as 14.0740 * 1e6, which come out a hair below the integer.
  const double limited = freqMHz > 0 ? std::min(freqMHz, 1e9) : 0;
  auto hertz = static_cast<std::int64_t>(limited * 1e6 + 0.1);
  std::string text;
  for (int byte = 0; byte < 5; ++byte) {
    text += static_cast<char>('0' + hertz / 10 % 10);
    text += static_cast<char>('0' + hertz % 10);
    hertz /= 100;
  }
  return text;
}

}  // namespace spectrino
