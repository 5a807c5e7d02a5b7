#include "display/Colours.h"

#include <algorithm>

namespace spectrino {
namespace {

constexpr int kLastIndex = 256;
using Palette = std::array<QRgb, kLastIndex + 1>;

constexpr QRgb Opaque(double red, double green, double blue) {
  const auto component = [](double c) { return static_cast<std::uint32_t>(c * 255.9999); };
  return 0xFF000000U | component(red) << 16 | component(green) << 8 | component(blue);
}

/// Hue to colour by sextants of the colour circle.
constexpr QRgb PaletteColour(int index, double brightness) {
  double hue = (kLastIndex - index) / 60.0;
  if (hue >= 6) hue = 0;
  const double v = brightness * std::min(3 * index, 100) / 100.0;
  const int sextant = static_cast<int>(hue);
  const double f = hue - sextant;
  const double q = v * (1 - f);
  const double t = v * f;
  switch (sextant) {
    case 0:
      return Opaque(v, t, 0);
    case 1:
      return Opaque(q, v, 0);
    case 2:
      return Opaque(0, v, t);
    case 3:
      return Opaque(0, q, v);
    case 4:
      return Opaque(t, 0, v);
    default:
      return Opaque(v, 0, q);
  }
}

constexpr Palette BuildPalette(double brightness) {
  Palette palette{};
  for (int index = 0; index <= kLastIndex; ++index) {
    palette[static_cast<std::size_t>(index)] = PaletteColour(index, brightness);
  }
  return palette;
}

constexpr Palette kPalette = BuildPalette(1.0);
constexpr Palette kDimmedPalette = BuildPalette(0.5);

}  // namespace

QRgb Blend(QRgb under, QRgb over, double share) {
  const auto mix = [share](int a, int b) { return static_cast<int>(a + (b - a) * share + 0.5); };
  return qRgb(mix(qRed(under), qRed(over)), mix(qGreen(under), qGreen(over)), mix(qBlue(under), qBlue(over)));
}

double Luma(QRgb colour) {
  return (0.299 * qRed(colour) + 0.587 * qGreen(colour) + 0.114 * qBlue(colour)) / 255;
}

QRgb WaterfallColour(int index) {
  return kPalette[static_cast<std::size_t>(std::clamp(index, 0, kLastIndex))];
}

QRgb DimmedWaterfallColour(int index) {
  return kDimmedPalette[static_cast<std::size_t>(std::clamp(index, 0, kLastIndex))];
}

}  // namespace spectrino
