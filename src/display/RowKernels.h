// The loops that touch every pixel of the plot, one row at a time.
// Plain arithmetic on pixels: no geometry, no Qt drawing.
#pragma once

#include <QImage>
#include <QRgb>
#include <cstdint>
#include <span>

namespace spectrino {

/// target[x] = row >= firstFilled[x] ? filled[x] : plain[x]. All spans equally long.
void SelectRow(int row, std::span<const std::int32_t> firstFilled, std::span<const QRgb> plain,
               std::span<const QRgb> filled, std::span<QRgb> target);

/// target = base with colour over it; alpha256: 0 leaves base, 256 gives colour. Opaque.
void BlendRow(std::span<const QRgb> base, QRgb colour, int alpha256, std::span<QRgb> target);

/// Copies the pixels and lets target keep its own memory: nothing is shared, so nothing is copied again on
/// write.
void CopyPixels(const QImage& source, QImage& target);

/// BlendRow for one pixel.
[[nodiscard]] inline QRgb BlendPixel(QRgb base, QRgb colour, int alpha256) {
  // Red and blue in one multiplication, green in another: eight bits lie free above each of them.
  const auto alpha = static_cast<std::uint32_t>(alpha256);
  const std::uint32_t keep = 256 - alpha;
  const std::uint32_t redBlue = ((base & 0xFF00FFU) * keep + (colour & 0xFF00FFU) * alpha) >> 8 & 0xFF00FFU;
  const std::uint32_t green = ((base & 0x00FF00U) * keep + (colour & 0x00FF00U) * alpha) >> 8 & 0x00FF00U;
  return 0xFF000000U | redBlue | green;
}

}  // namespace spectrino
