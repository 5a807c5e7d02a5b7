#include "display/SMeterText.h"

#include <algorithm>
#include <cmath>

namespace spectrino {
namespace {

constexpr int kS9Dbm = -73;
constexpr double kDbPerUnit = 6;

std::string AboveS9(int overDb, bool withS) {
  const int rest = overDb % 10;
  const int step = rest <= 2 ? 0 : rest <= 7 ? 5 : 10;
  const int value = overDb - rest + step;
  if (value == 0) return withS ? "S9" : "9.0";
  return (withS ? "S9+" : "+") + std::to_string(value);
}

/// S units in halves; a quarter belongs to the half below.
int HalfUnits(int levelDbm) {
  const double units = (levelDbm - kS9Dbm) / kDbPerUnit + 9;
  const double whole = std::floor(units);
  const double f = units - whole;
  const int halves = f <= 0.25 ? 0 : f <= 0.75 ? 1 : 2;
  return std::max(0, 2 * static_cast<int>(whole) + halves);
}

}  // namespace

std::string SMeterText(std::int16_t levelDbm, int displayDesign) {
  const bool withS = displayDesign == 1;
  if (levelDbm > kS9Dbm) return AboveS9(levelDbm - kS9Dbm, withS);
  const int halves = HalfUnits(levelDbm);
  if (withS) return "S" + std::to_string((halves + 1) / 2);
  const std::string whole = halves < 2 ? "" : std::to_string(halves / 2);
  return whole + (halves % 2 == 0 ? ".0" : ".5");
}

}  // namespace spectrino
