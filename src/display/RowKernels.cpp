#include "display/RowKernels.h"

#include <cassert>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace spectrino {

QImage MakePixels(QSize size) {
  constexpr std::size_t kLine = 64;
  if (size.isEmpty()) return {};
  const std::size_t lines = (static_cast<std::size_t>(size.width()) * sizeof(QRgb) + kLine - 1) / kLine;
  const std::size_t stride = (lines | 1U) * kLine;
  void* const pixels = std::aligned_alloc(kLine, stride * static_cast<std::size_t>(size.height()));
  if (pixels == nullptr) return {};
  return QImage(static_cast<uchar*>(pixels), size.width(), size.height(), static_cast<qsizetype>(stride),
                QImage::Format_RGB32, std::free, pixels);
}

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

void CoverColumn(float firstDy, float leftClimb, float rightClimb, float reach,
                 std::span<std::int32_t> coverage) {
  const float leftSlope = leftClimb / (1 + leftClimb * leftClimb);
  const float rightSlope = rightClimb / (1 + rightClimb * rightClimb);
  std::int32_t* __restrict out = coverage.data();
  const auto count = static_cast<std::int32_t>(coverage.size());
  // Squared distance to a leg whose foot lies along it; clamped, so that beyond the ends the end point
  // counts.
  const auto squared = [](float dy, float climb, float slope) {
    float along = dy * slope;
    along = along < 0 ? 0 : along;
    along = along > 1 ? 1 : along;
    const float rest = dy - along * climb;
    return along * along + rest * rest;
  };
  for (std::int32_t i = 0; i < count; ++i) {
    const float dy = firstDy + static_cast<float>(i);
    const float left = squared(dy, leftClimb, leftSlope);
    const float right = squared(dy, rightClimb, rightSlope);
    float cover = reach - std::sqrt(left < right ? left : right);
    cover = cover < 0 ? 0 : cover;
    cover = cover > 1 ? 1 : cover;
    out[i] = static_cast<std::int32_t>(cover * 256);
  }
}

void BlendRow(std::span<const QRgb> base, QRgb colour, int alpha256, std::span<QRgb> target) {
  assert(base.size() == target.size());
  for (std::size_t x = 0; x < target.size(); ++x) target[x] = BlendPixel(base[x], colour, alpha256);
}

void CopyPixels(const QImage& source, QImage& target) {
  if (target.size() != source.size()) target = MakePixels(source.size());
  const auto rowBytes = static_cast<std::size_t>(source.width()) * sizeof(QRgb);
  for (int y = 0; y < source.height(); ++y)
    std::memcpy(target.scanLine(y), source.constScanLine(y), rowBytes);
}

}  // namespace spectrino
