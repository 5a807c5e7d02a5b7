// The loops that touch every pixel of the plot, one row at a time.
// Plain arithmetic on pixels: no geometry, no Qt drawing.
#pragma once

#include <QImage>
#include <QRgb>
#include <QSize>
#include <cstddef>
#include <cstdint>
#include <span>

namespace spectrino {

/// target[x] = row >= firstFilled[x] ? filled[x] : plain[x]. All spans equally long.
void SelectRow(int row, std::span<const std::int32_t> firstFilled, std::span<const QRgb> plain,
               std::span<const QRgb> filled, std::span<QRgb> target);

/// How much of each pixel of a column a polyline covers, 0..256, as an antialiased stroke has it: by the
/// distance of the pixel's centre to the legs from the column's own point to its neighbours, one column to
/// either side. firstDy: the first pixel's centre below that point; climbs: how far below it the neighbours
/// are; reach: half the stroke and half a pixel. Legs further away cannot come near enough.
void CoverColumn(float firstDy, float leftClimb, float rightClimb, float reach,
                 std::span<std::int32_t> coverage);

/// target = base with colour over it; alpha256: 0 leaves base, 256 gives colour. Opaque.
void BlendRow(std::span<const QRgb> base, QRgb colour, int alpha256, std::span<QRgb> target);

/// An opaque picture whose rows lie an odd number of cache lines apart. Down a column of an ordinary picture,
/// 1280 or 3840 wide, the rows fall into four of the cache's 64 sets, and drawing a trace took twice as long.
[[nodiscard]] QImage MakePixels(QSize size);

/// Copies the pixels and lets target keep its own memory: nothing is shared, so nothing is copied again on
/// write.
void CopyPixels(const QImage& source, QImage& target);

[[nodiscard]] inline QRgb* PixelRow(QImage& image, int y) {
  return reinterpret_cast<QRgb*>(image.scanLine(y));
}
[[nodiscard]] inline const QRgb* PixelRow(const QImage& image, int y) {
  return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

/// The pixels of a picture from row top on by column and row, for loops down a column.
template <typename Pixel>
class PixelGrid {
 public:
  template <typename Image>
  PixelGrid(Image& image, int top) : stride_(static_cast<std::size_t>(image.bytesPerLine()) / sizeof(QRgb)) {
    if (!image.isNull()) pixels_ = PixelRow(image, top);
  }
  [[nodiscard]] Pixel& At(std::size_t x, std::int32_t y) const {
    return pixels_[static_cast<std::size_t>(y) * stride_ + x];
  }

 private:
  Pixel* pixels_ = nullptr;
  std::size_t stride_;
};

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
