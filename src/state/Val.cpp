#include "state/Val.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace spectrino {
namespace {

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
constexpr bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

template <typename Integer>
Integer RoundTo(double value) {
  if (std::isnan(value)) return 0;
  // nearbyint follows the rounding mode, which nothing in this program changes: halves go to even.
  const double rounded = std::nearbyint(value);
  const double low = std::numeric_limits<Integer>::min();
  const double high = std::numeric_limits<Integer>::max();
  return static_cast<Integer>(std::clamp(rounded, low, high));
}

}  // namespace

double Val(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size() && IsBlank(text[at])) ++at;
  const bool negative = at < text.size() && text[at] == '-';
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
  const std::size_t start = at;
  while (at < text.size() && IsDigit(text[at])) ++at;
  if (at < text.size() && text[at] == '.') {
    ++at;
    while (at < text.size() && IsDigit(text[at])) ++at;
  }
  double value = 0;
  const auto [end, error] =
      std::from_chars(text.data() + start, text.data() + at, value, std::chars_format::fixed);
  if (error == std::errc::result_out_of_range)
    value = std::numeric_limits<double>::max();
  else if (error != std::errc{})
    return 0;
  return negative ? -value : value;
}

std::int32_t RoundToInt32(double value) {
  return RoundTo<std::int32_t>(value);
}
std::int16_t RoundToInt16(double value) {
  return RoundTo<std::int16_t>(value);
}

std::string NumberText(double value) {
  char buffer[400];
  const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
  return error == std::errc{} ? std::string(buffer, end) : std::string("0");
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace spectrino
