#include "display/SMeterText.h"

#include <algorithm>

namespace spectrino {
namespace {

constexpr int kS9Dbm = -73;

/// dB over S9 in steps of 5; 1, 2 round down, 3..7 to 5, 8, 9 up.
int OverS9(int overDb) {
  const int rest = overDb % 10;
  const int step = rest <= 2 ? 0 : rest <= 7 ? 5 : 10;
  return overDb - rest + step;
}

/// Twice the S units, to whole numbers. belowDb: level - S9, 0 or less, so 6 dB are one unit.
int HalfSUnits(int belowDb) {
  // In twelfths of a unit nothing is lost: f <= 0.25 is 3 twelfths, f <= 0.75 is 9.
  const int twelfths = std::max(belowDb * 2 + 9 * 12, 0);
  const int rest = twelfths % 12;
  return twelfths / 12 * 2 + (rest <= 3 ? 0 : rest <= 9 ? 1 : 2);
}

}  // namespace

std::string SMeterText(std::int16_t levelDbm, int displayDesign) {
  const bool withS = displayDesign == 1;
  const int relativeDb = levelDbm - kS9Dbm;
  if (relativeDb > 0) {
    const int over = OverS9(relativeDb);
    if (over == 0) return withS ? "S9" : "9.0";
    return (withS ? "S9+" : "+") + std::to_string(over);
  }
  const int halves = HalfSUnits(relativeDb);
  if (withS) return "S" + std::to_string((halves + 1) / 2);
  const std::string whole = halves < 2 ? "" : std::to_string(halves / 2);
  return whole + (halves % 2 == 0 ? ".0" : ".5");
}

}  // namespace spectrino
