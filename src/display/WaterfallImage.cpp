#include "display/WaterfallImage.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>

#include "display/Blit.h"
#include "display/Palettes.h"
#include "dsp/WaterfallColourIndex.h"
#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

std::size_t At(int index) {
  return static_cast<std::size_t>(index);
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
  colours_.assign(levels_.size(), 0);
  picture_ = width > 0 && height > 0 ? QImage(width, height, QImage::Format_RGB32) : QImage();
  head_ = 0;
  count_ = kept;
  for (int y = 0; y < kept; ++y) ColourSlot(SlotAt(y));
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

void WaterfallImage::SetLook(const WaterfallLook& look) {
  if (look == look_) return;
  look_ = look;
  for (int y = 0; y < count_; ++y) ColourSlot(SlotAt(y));
  PaintAll();
}

LevelRange WaterfallImage::ColourRange(const WaterfallRow& row) const {
  // As it was given, to the last bit.
  if (look_.FloorDb == 0 && look_.ContrastPercent == 100) return {row.BottomLevel, row.TopLevel};
  const float bottom = row.BottomLevel + static_cast<float>(look_.FloorDb) * row.UnitsPerDb;
  return {bottom,
          bottom + (row.TopLevel - row.BottomLevel) * 100 / static_cast<float>(look_.ContrastPercent)};
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
  ColourSlot(head_);
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

WaterfallImage::RowMap WaterfallImage::MapOf(const WaterfallRow& row) const {
  constexpr double kOne = 4294967296.0;
  constexpr double kFurthest = 1e8;  // columns; beyond it nothing of the row is near the picture
  const bool same = row.LeftMHz == leftMHz_ && row.RightMHz == rightMHz_;
  if (!follow_ || same || row.RightMHz <= row.LeftMHz) return {0, std::int64_t{1} << 32, 0, Width()};
  const double step = (rightMHz_ - leftMHz_) / (row.RightMHz - row.LeftMHz);
  const double start = (leftMHz_ - row.LeftMHz) / (row.RightMHz - row.LeftMHz) * Width() + step / 2;
  if (!(step > 0) || step * Width() > kFurthest || std::abs(start) > kFurthest) return {};
  RowMap map;
  map.Start = static_cast<std::int64_t>(std::floor(start * kOne));
  map.Step = static_cast<std::int64_t>(step * kOne);
  const auto clampedX = [this](double x) {
    return static_cast<int>(std::clamp(std::ceil(x), 0.0, 1.0 * Width()));
  };
  map.First = clampedX(-start / step);
  map.End = clampedX((Width() - start) / step);
  while (map.First < map.End && map.Source(map.First) < 0) ++map.First;
  while (map.End > map.First && map.Source(map.End - 1) >= Width()) --map.End;
  return map;
}

void WaterfallImage::ColourSlot(int slot) {
  const WaterfallRow& row = rows_[At(slot)];
  const auto levels = LevelsOf(slot);
  std::uint16_t* const colours = colours_.data() + At(slot) * At(Width());
  const LevelRange range = ColourRange(row);
  for (std::size_t x = 0; x < levels.size(); ++x)
    colours[x] = static_cast<std::uint16_t>(WaterfallColourIndex(levels[x], range.Bottom, range.Top));
}

void WaterfallImage::PaintSlot(int slot) {
  const WaterfallRow& row = rows_[At(slot)];
  const std::uint16_t* const colours = colours_.data() + At(slot) * At(Width());
  const auto& palette = row.Dimmed ? DimmedPalette(look_.Palette) : WaterfallPalette(look_.Palette);
  auto* const pixels = reinterpret_cast<QRgb*>(picture_.scanLine(slot));
  const RowMap map = MapOf(row);
  std::fill(pixels, pixels + map.First, emptyColour_);
  std::fill(pixels + map.End, pixels + Width(), emptyColour_);
  if (map.First >= map.End) return;
  if (map.Step == std::int64_t{1} << 32) {
    const std::uint16_t* source = colours + map.Source(map.First) - map.First;
    for (int x = map.First; x < map.End; ++x) pixels[x] = palette[source[x]];
    return;
  }
  std::int64_t at = map.Start + map.First * map.Step;
  for (int x = map.First; x < map.End; ++x, at += map.Step) pixels[x] = palette[colours[at >> 32]];
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

std::optional<WaterfallRow> WaterfallImage::RowAt(int y) const {
  if (y < 0 || y >= count_) return std::nullopt;
  return rows_[At(SlotAt(y))];
}

float WaterfallImage::LevelAt(int x, int y) const {
  if (x < 0 || x >= Width() || y < 0 || y >= count_) return kUndrawnLevel;
  const int slot = SlotAt(y);
  const RowMap map = MapOf(rows_[At(slot)]);
  return x < map.First || x >= map.End ? kUndrawnLevel : LevelsOf(slot)[At(map.Source(x))];
}

double WaterfallImage::FrequencyAt(double x, int y) const {
  const auto row = RowAt(y);
  if (!row || Width() == 0) return 0;
  const double left = follow_ ? leftMHz_ : row->LeftMHz;
  const double right = follow_ ? rightMHz_ : row->RightMHz;
  return left + x / Width() * (right - left);
}

}  // namespace spectrino
