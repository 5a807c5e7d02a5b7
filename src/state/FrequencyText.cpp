#include "state/FrequencyText.h"

#include <cmath>
#include <cstdio>
#include <vector>

#include "state/Val.h"

namespace spectrino {

namespace {
constexpr double kHighestTypedMHz = 1300;  // 23 cm; "14074.5" is meant in kHz
}

std::string FrequencyText(double mhz) {
  if (!(mhz >= 0.00001) || mhz > 1e6) return "---------";
  const long long hz = std::llround(mhz * 1e6);
  char text[40];
  std::snprintf(text, sizeof text, "%lld.%03lld.%03lld", hz / 1000000, hz / 1000 % 1000, hz % 1000);
  return text;
}

std::string GridFrequencyText(double mhz, bool withMHz) {
  std::string text = FrequencyText(mhz);
  if (text.front() != '-') text.resize(text.size() - 2);
  return withMHz ? text : text.substr(text.size() - 5);
}

double TypedMHz(std::string_view text) {
  std::string digits;
  std::vector<std::size_t> dots;
  for (const char c : Trim(text)) {
    const bool dot = c == '.' || c == ',';
    if (!dot && (c < '0' || c > '9')) return 0;
    if (!dot)
      digits += c;
    else
      dots.push_back(digits.size());
  }
  if (digits.empty() || digits.size() > 12 || dots.size() > 2) return 0;
  // A second dot parts kHz from Hz; for the number it means nothing.
  if (dots.size() == 2 && dots[1] != dots[0] + 3) return 0;
  const std::size_t whole = dots.empty() ? digits.size() : dots[0];
  const double value = Val(digits.substr(0, whole) + "." + digits.substr(whole));
  if (dots.size() == 2 || value < (dots.empty() ? 1e3 : kHighestTypedMHz)) return value;
  return value < 1e6 ? value / 1e3 : value / 1e6;
}

std::string GridFrequencyText(double mhz, double stepHz, bool withMHz) {
  const double hundreds = stepHz / 100;
  if (std::fabs(hundreds - std::round(hundreds)) < 1e-6) return GridFrequencyText(mhz, withMHz);
  const std::string text = FrequencyText(mhz);
  return withMHz ? text : text.substr(text.size() - 7);
}

std::string GridOffsetText(double offsetHz, double stepHz) {
  int decimals = 0;
  double unit = 1000;  // Hz, of the last digit
  while (decimals < 3 && std::fabs(std::remainder(stepHz, unit)) > 1e-6) {
    ++decimals;
    unit /= 10;
  }
  // A hair more, so that a half that lost its last bit is still one.
  const double rounded = std::round(std::fabs(offsetHz) / unit + 1e-9) * unit / 1000;
  if (rounded == 0) return "0";
  char text[40];
  std::snprintf(text, sizeof text, "%.*f", decimals, rounded);
  std::string number = text;
  if (number.starts_with("0.")) number.erase(0, 1);
  return (offsetHz < 0 ? "-" : "+") + number + "K";
}

}  // namespace spectrino
