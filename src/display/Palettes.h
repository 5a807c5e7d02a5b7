// The palettes that the waterfall can be drawn in.
// Colours by index only: which level has which index is dsp/WaterfallColourIndex's.
#pragma once

#include <QRgb>
#include <array>

namespace spectrino {

inline constexpr int kWaterfallColours = 257;
using Palette = std::array<QRgb, kWaterfallColours>;

/// Setting "WFPalette". The numbers are stored, so they never change.
namespace palette {
inline constexpr int kHues = 0;
inline constexpr int kInferno = 1;
inline constexpr int kCividis = 2;
inline constexpr int kGrey = 3;
inline constexpr int kCount = 4;
}  // namespace palette

/// kHues: hue 256 - index degrees, full saturation, brightness min(3 * index, 100) %: black at 0,
/// violet-blue, blue, cyan, green, yellow, red at 256. The others rise steadily in luminance; any other
/// number is kHues.
[[nodiscard]] const Palette& WaterfallPalette(int palette = palette::kHues);
/// The same at half brightness.
[[nodiscard]] const Palette& DimmedPalette(int palette);

/// Relative luminance of a colour on the screen, 0 black to 1 white (IEC 61966-2-1).
[[nodiscard]] double Luminance(QRgb colour);

}  // namespace spectrino
