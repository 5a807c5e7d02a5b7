#include "state/FrequencyText.h"

#include <cmath>
#include <cstdio>

namespace spectrino {

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

std::string GridOffsetText(double offsetHz) {
  char text[40];
  std::snprintf(text, sizeof text, "%.1f", std::fabs(offsetHz) / 1000);
  std::string number = text;
  if (number.starts_with("0.")) number.erase(0, 1);
  return "+" + number + "K";
}

}  // namespace spectrino
