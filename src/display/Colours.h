// Display colours as Qt wants them. The waterfall's are Palettes'.
// Which colour means what is settings/ColourTable.h; nothing is chosen here.
#pragma once

#include <QRgb>
#include <cstdint>

#include "settings/ColourTable.h"

namespace spectrino {

/// Of the texts in a radio's status area, which has no entries in the colour table.
namespace status_colour {
inline constexpr QRgb kAmber = 0xFFFFD08A;
inline constexpr QRgb kRed = 0xFFFF6A5A;
inline constexpr QRgb kQuiet = 0xFF8D9AA9;
inline constexpr QRgb kBright = 0xFFCFD8E3;
}  // namespace status_colour

/// 0x00BBGGRR to an opaque QRgb.
[[nodiscard]] QRgb ToRgb(std::uint32_t bgr);
/// The colour with this index of the table; an index outside it gives the grid colour.
[[nodiscard]] QRgb ColourAt(const ColourTable& colours, int index);
[[nodiscard]] inline QRgb ColourAt(const ColourTable& colours, enum ColourIndex index) {
  return ToRgb(ColourOf(colours, index));
}

/// base where alpha is 0, over where it is 1.
[[nodiscard]] QRgb Mix(QRgb base, QRgb over, double alpha);

}  // namespace spectrino
