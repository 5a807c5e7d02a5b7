#include "civ/IcomFilters.h"

#include <cmath>

#include "state/RadioState.h"

namespace spectrino {
namespace {

int LastNumber(int radioMode) {
  switch (radioMode) {
    case mode::kUnknown:
    case mode::kFm:
      return -1;
    case mode::kAm:
      return 49;
    case mode::kData:
    case mode::kDataReverse:
      return 31;
    default:
      return 40;
  }
}

}  // namespace

double IcomFilterHz(int radioMode, int number) {
  if (number < 0 || number > LastNumber(radioMode)) return 0;
  if (radioMode == mode::kAm) return 200.0 * (number + 1);
  return number < 10 ? 50.0 * (number + 1) : 100.0 * (number - 4);
}

int IcomFilterNumber(int radioMode, double hz) {
  int nearest = -1;
  for (int number = 0; number <= LastNumber(radioMode); ++number)
    if (nearest < 0 ||
        std::abs(IcomFilterHz(radioMode, number) - hz) < std::abs(IcomFilterHz(radioMode, nearest) - hz))
      nearest = number;
  return nearest;
}

}  // namespace spectrino
