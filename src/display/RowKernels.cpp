#include "display/RowKernels.h"

#include <cassert>
#include <cstddef>
#include <cstring>

namespace spectrino {

void SelectRow(int row, std::span<const std::int32_t> firstFilled, std::span<const QRgb> plain,
               std::span<const QRgb> filled, std::span<QRgb> target) {
  assert(firstFilled.size() == target.size() && plain.size() == target.size() &&
         filled.size() == target.size());
  const std::int32_t* __restrict first = firstFilled.data();
  const QRgb* __restrict above = plain.data();
  const QRgb* __restrict below = filled.data();
  QRgb* __restrict out = target.data();
  const std::size_t count = target.size();
  for (std::size_t x = 0; x < count; ++x) out[x] = row >= first[x] ? below[x] : above[x];
}

void BlendRow(std::span<const QRgb> base, QRgb colour, int alpha256, std::span<QRgb> target) {
  assert(base.size() == target.size());
  for (std::size_t x = 0; x < target.size(); ++x) target[x] = BlendPixel(base[x], colour, alpha256);
}

void CopyPixels(const QImage& source, QImage& target) {
  if (target.size() != source.size()) target = QImage(source.size(), source.format());
  if (source.isNull()) return;
  std::memcpy(target.bits(), source.constBits(), static_cast<std::size_t>(source.sizeInBytes()));
}

}  // namespace spectrino
