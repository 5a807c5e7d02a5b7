#include "display/Colours.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace spectrino {
namespace {

constexpr QRgb Opaque(double red, double green, double blue) {
  constexpr double kLevels = 255.9999;  // 1.0 stays 255 without a special case
  return 0xFF000000U | (static_cast<QRgb>(red * kLevels) << 16) | (static_cast<QRgb>(green * kLevels) << 8) |
         static_cast<QRgb>(blue * kLevels);
}

constexpr QRgb PaletteColour(int index) {
  double hue = (256 - index) / 60.0;
  if (hue >= 6) hue = 0;
  const double value = std::min(3 * index, 100) / 100.0;
  const int sextant = static_cast<int>(hue);
  const double f = hue - sextant;
  const double falling = value * (1 - f);
  const double rising = value * f;
  switch (sextant) {
    case 0:
      return Opaque(value, rising, 0);
    case 1:
      return Opaque(falling, value, 0);
    case 2:
      return Opaque(0, value, rising);
    case 3:
      return Opaque(0, falling, value);
    case 4:
      return Opaque(rising, 0, value);
    default:
      return Opaque(value, 0, falling);
  }
}

constexpr std::array<QRgb, kWaterfallColours> kPalette = [] {
  std::array<QRgb, kWaterfallColours> palette{};
  for (int i = 0; i < kWaterfallColours; ++i) palette[static_cast<std::size_t>(i)] = PaletteColour(i);
  return palette;
}();

}  // namespace

QRgb ToRgb(std::uint32_t bgr) {
  return qRgb(static_cast<int>(bgr & 0xFF), static_cast<int>(bgr >> 8 & 0xFF),
              static_cast<int>(bgr >> 16 & 0xFF));
}

QRgb ColourAt(const ColourTable& colours, int index) {
  if (index < 0 || index >= static_cast<int>(kColourCount)) return ColourAt(colours, ColourIndex::Grid);
  return ToRgb(colours[static_cast<std::size_t>(index)]);
}

QRgb Mix(QRgb base, QRgb over, double alpha) {
  const auto channel = [alpha](int from, int to) {
    return static_cast<int>(std::lround(from + (to - from) * alpha));
  };
  return qRgb(channel(qRed(base), qRed(over)), channel(qGreen(base), qGreen(over)),
              channel(qBlue(base), qBlue(over)));
}

const std::array<QRgb, kWaterfallColours>& WaterfallPalette() {
  return kPalette;
}

}  // namespace spectrino
