#include "dsp/WindowTable.h"

#include <array>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace spectrino {
namespace {

struct WindowRow {
  std::array<double, 5> cosines;  ///< factors of cos 0, cos phi, cos 2 phi ...
  double gain;
};

constexpr std::array<WindowRow, 6> kWindows = {{
    {{1.0, 0.0, 0.0, 0.0, 0.0}, 1.0},
    {{0.54, -0.46, 0.0, 0.0, 0.0}, 0.5},
    {{0.42, -0.5, 0.08, 0.0, 0.0}, 0.38},
    {{0.35875, -0.48829, 0.14128, -0.01168, 0.0}, 0.38},
    {{0.3635819, -0.4891775, 0.1365995, -0.0106144, 0.0}, 0.38},
    {{1.0, -1.93, 1.29, -0.388, 0.032}, 0.38},
}};

const WindowRow& RowOf(WindowType type) {
  const auto index = static_cast<std::size_t>(type);
  assert(index < kWindows.size());
  return kWindows[index];
}

}  // namespace

std::vector<double> BuildWindowTable(WindowType type, int points) {
  assert(points > 1);
  const WindowRow& row = RowOf(type);
  std::vector<double> table(static_cast<std::size_t>(points) + 1);
  for (std::size_t k = 0; k < table.size(); ++k) {
    const double phi = 4 * std::numbers::pi * static_cast<double>(k) / (points - 1);
    double sum = 0;
    for (std::size_t n = 0; n < row.cosines.size(); ++n) {
      sum += row.cosines[n] * std::cos(static_cast<double>(n) * phi);
    }
    table[k] = sum;
  }
  return table;
}

double WindowGain(WindowType type) {
  return RowOf(type).gain;
}

}  // namespace spectrino
