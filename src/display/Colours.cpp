#include "display/Colours.h"

#include <cmath>
#include <cstddef>

namespace spectrino {
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

}  // namespace spectrino
