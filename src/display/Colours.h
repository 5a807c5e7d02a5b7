// The colours of the plot: the user's table by name, and the waterfall's own palette.
// Does not know where the table is kept or edited.
#pragma once

#include <QRgb>
#include <cstdint>

#include "settings/ColourTable.h"

namespace spectrino {

/// Places in the user's colour table, and the table itself: 13 values 0x00BBGGRR.
using PlotColour = ColourIndex;
using DisplayColours = ColourTable;

/// 0x00BBGGRR to an opaque colour of Qt's.
[[nodiscard]] constexpr QRgb FromBgr(std::uint32_t bgr) {
  return 0xFF000000U | (bgr & 0xFFU) << 16 | (bgr & 0xFF00U) | (bgr >> 16 & 0xFFU);
}

[[nodiscard]] constexpr QRgb RgbOf(const DisplayColours& colours, PlotColour colour) {
  return FromBgr(colours[static_cast<std::size_t>(colour)]);
}

/// under with share (0..1) of over on it; opaque.
[[nodiscard]] QRgb Blend(QRgb under, QRgb over, double share);

/// How bright a colour looks, 0 black .. 1 white (ITU-R BT.601 luma).
[[nodiscard]] double Luma(QRgb colour);

/// The waterfall's colour for an index 0..256 (clamped): hue 256 - index degrees, full saturation, brightness
/// 3 * index percent up to 100. 0 is black, 256 pure red.
[[nodiscard]] QRgb WaterfallColour(int index);

/// The same at half brightness, for lines taken while the radio transmits.
[[nodiscard]] QRgb DimmedWaterfallColour(int index);

}  // namespace spectrino
