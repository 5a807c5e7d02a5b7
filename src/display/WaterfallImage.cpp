#include "display/WaterfallImage.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <cstddef>

#include "display/Blit.h"
#include "display/Colours.h"
#include "dsp/DisplayTrace.h"
#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

std::size_t At(int index) {
  return static_cast<std::size_t>(index);
}

QRgb HalfBright(QRgb colour) {
  return 0xFF000000U | (colour >> 1 & 0x7F7F7FU);
}

}  // namespace

void WaterfallImage::Resize(int width, int height) {
  width = std::max(0, width);
  height = std::max(0, height);
  if (width == Width() && height == Height()) return;
  const int oldWidth = Width();
  const int kept = width > 0 && oldWidth > 0 ? std::min(count_, height) : 0;
  std::vector<float> levels(At(width) * At(height), kUndrawnLevel);
  std::vector<WaterfallRow> rows(At(height));
  for (int y = 0; y < kept; ++y) {
    const int slot = SlotAt(y);
    const auto old = LevelsOf(slot);
    rows[At(y)] = rows_[At(slot)];
    float* const target = levels.data() + At(y) * At(width);
    for (int x = 0; x < width; ++x) target[x] = old[At((2 * x + 1) * oldWidth / (2 * width))];
  }
  levels_ = std::move(levels);
  rows_ = std::move(rows);
  picture_ = width > 0 && height > 0 ? QImage(width, height, QImage::Format_RGB32) : QImage();
  head_ = 0;
  count_ = kept;
  PaintAll();
}

void WaterfallImage::SetEmptyColour(QRgb colour) {
  if (colour == emptyColour_) return;
  emptyColour_ = colour;
  PaintAll();
}

void WaterfallImage::SetFollow(bool follow) {
  if (follow == follow_) return;
  follow_ = follow;
  PaintAll();
}

void WaterfallImage::Clear() {
  head_ = 0;
  count_ = 0;
  if (!picture_.isNull()) picture_.fill(emptyColour_);
}

void WaterfallImage::AddLine(std::span<const float> levels, const WaterfallRow& row) {
  if (picture_.isNull()) return;
  assert(static_cast<int>(levels.size()) == Width());
  // The ring turns by one row; what was at the bottom is overwritten, nothing else moves.
  head_ = (head_ + Height() - 1) % Height();
  count_ = std::min(count_ + 1, Height());
  std::ranges::copy(levels, levels_.begin() + static_cast<std::ptrdiff_t>(At(head_) * At(Width())));
  rows_[At(head_)] = row;
  const bool moved = row.LeftMHz != leftMHz_ || row.RightMHz != rightMHz_;
  leftMHz_ = row.LeftMHz;
  rightMHz_ = row.RightMHz;
  if (follow_ && moved) {
    PaintAll();
  } else {
    PaintSlot(head_);
  }
}

int WaterfallImage::SlotAt(int y) const {
  return (head_ + y) % Height();
}

std::span<const float> WaterfallImage::LevelsOf(int slot) const {
  return std::span<const float>(levels_).subspan(At(slot) * At(Width()), At(Width()));
}

/// The row's own column that is shown at x; -1 when the row does not reach there.
int WaterfallImage::SourceColumn(const WaterfallRow& row, int x) const {
  if (!follow_ || row.RightMHz <= row.LeftMHz) return x;
  if (row.LeftMHz == leftMHz_ && row.RightMHz == rightMHz_) return x;
  const double mhz = leftMHz_ + (x + 0.5) / Width() * (rightMHz_ - leftMHz_);
  const double column = std::floor((mhz - row.LeftMHz) / (row.RightMHz - row.LeftMHz) * Width());
  return column >= 0 && column < Width() ? static_cast<int>(column) : -1;
}

void WaterfallImage::PaintSlot(int slot) {
  const WaterfallRow& row = rows_[At(slot)];
  const auto levels = LevelsOf(slot);
  const auto& palette = WaterfallPalette();
  auto* const pixels = reinterpret_cast<QRgb*>(picture_.scanLine(slot));
  for (int x = 0; x < Width(); ++x) {
    const int source = SourceColumn(row, x);
    if (source < 0) {
      pixels[x] = emptyColour_;
      continue;
    }
    const QRgb colour = palette[At(WaterfallColourIndex(levels[At(source)], row.BottomLevel, row.TopLevel))];
    pixels[x] = row.Dimmed ? HalfBright(colour) : colour;
  }
}

void WaterfallImage::PaintAll() {
  if (picture_.isNull()) return;
  if (count_ < Height()) picture_.fill(emptyColour_);
  for (int y = 0; y < count_; ++y) PaintSlot(SlotAt(y));
}

void WaterfallImage::Draw(QPainter& painter, int left, int top) const {
  if (picture_.isNull()) return;
  const int upper = Height() - head_;
  BlitImage(painter, QPoint(left, top), picture_, QRect(0, head_, Width(), upper));
  if (head_ > 0) BlitImage(painter, QPoint(left, top + upper), picture_, QRect(0, 0, Width(), head_));
}

QImage WaterfallImage::ToImage() const {
  if (picture_.isNull()) return {};
  QImage image(picture_.size(), QImage::Format_RGB32);
  QPainter painter(&image);
  Draw(painter, 0, 0);
  return image;
}

std::optional<WaterfallRow> WaterfallImage::RowAt(int y) const {
  if (y < 0 || y >= count_) return std::nullopt;
  return rows_[At(SlotAt(y))];
}

float WaterfallImage::LevelAt(int x, int y) const {
  if (x < 0 || x >= Width() || y < 0 || y >= count_) return kUndrawnLevel;
  const int slot = SlotAt(y);
  const int source = SourceColumn(rows_[At(slot)], x);
  return source < 0 ? kUndrawnLevel : LevelsOf(slot)[At(source)];
}

double WaterfallImage::FrequencyAt(double x, int y) const {
  const auto row = RowAt(y);
  if (!row || Width() == 0) return 0;
  const double left = follow_ ? leftMHz_ : row->LeftMHz;
  const double right = follow_ ? rightMHz_ : row->RightMHz;
  return left + x / Width() * (right - left);
}

}  // namespace spectrino
