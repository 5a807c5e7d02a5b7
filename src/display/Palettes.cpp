#include "display/Palettes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

namespace spectrino {
namespace {

constexpr QRgb Opaque(double red, double green, double blue) {
  constexpr double kLevels = 255.9999;  // 1.0 stays 255 without a special case
  return 0xFF000000U | (static_cast<QRgb>(red * kLevels) << 16) | (static_cast<QRgb>(green * kLevels) << 8) |
         static_cast<QRgb>(blue * kLevels);
}

constexpr QRgb HueColour(int index) {
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

// Ten evenly spaced colours of two published maps, 0xRRGGBB, straight lines between them.
// Inferno: N. Smith and S. van der Walt, BIDS/colormap, 2015, released under CC0.
constexpr std::array<std::uint32_t, 10> kInfernoPoints{0x000004, 0x1B0C41, 0x4A0C6B, 0x781C6D, 0xA52C60,
                                                       0xCF4446, 0xED6925, 0xFB9B06, 0xF7D13D, 0xFCFFA4};
// Cividis: J. Nunez, C. Anderton and R. Renslow, "Optimizing colormaps with consideration for color vision
// deficiency", PLoS ONE 13(7), 2018. The same to eyes that do not tell red from green.
constexpr std::array<std::uint32_t, 10> kCividisPoints{0x00224E, 0x123570, 0x3B496C, 0x575D6D, 0x707173,
                                                       0x8A8779, 0xA69D75, 0xC4B56C, 0xE4CF5B, 0xFEE838};
constexpr std::array<std::uint32_t, 2> kGreyPoints{0x000000, 0xFFFFFF};

constexpr Palette Hues() {
  Palette colours{};
  for (int i = 0; i < kWaterfallColours; ++i) colours[static_cast<std::size_t>(i)] = HueColour(i);
  return colours;
}

constexpr Palette Between(std::span<const std::uint32_t> points) {
  Palette colours{};
  const int last = kWaterfallColours - 1;
  const int pieces = static_cast<int>(points.size()) - 1;
  for (int i = 0; i <= last; ++i) {
    const int piece = std::min(i * pieces / last, pieces - 1);
    const int along = i * pieces - piece * last;  // of last
    QRgb colour = 0xFFU;
    for (const int shift : {16, 8, 0}) {
      const auto channel = [&](int point) {
        return static_cast<int>(points[static_cast<std::size_t>(point)] >> shift & 0xFFU);
      };
      const int sum = channel(piece) * (last - along) + channel(piece + 1) * along;
      colour = colour << 8 | static_cast<QRgb>((sum + last / 2) / last);
    }
    colours[static_cast<std::size_t>(i)] = colour;
  }
  return colours;
}

constexpr std::array<Palette, palette::kCount> kPalettes{Hues(), Between(kInfernoPoints),
                                                         Between(kCividisPoints), Between(kGreyPoints)};

constexpr std::array<Palette, palette::kCount> kDimmed = [] {
  std::array<Palette, palette::kCount> all = kPalettes;
  for (Palette& colours : all)
    for (QRgb& colour : colours) colour = 0xFF000000U | (colour >> 1 & 0x7F7F7FU);
  return all;
}();

std::size_t IndexOf(int palette) {
  return palette > 0 && palette < palette::kCount ? static_cast<std::size_t>(palette) : 0;
}

}  // namespace

const Palette& WaterfallPalette(int palette) {
  return kPalettes[IndexOf(palette)];
}

const Palette& DimmedPalette(int palette) {
  return kDimmed[IndexOf(palette)];
}

double Luminance(QRgb colour) {
  const auto linear = [](int channel) {
    const double share = channel / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

}  // namespace spectrino
