#include "display/WaterfallImage.h"

#include <QPainter>
#include <algorithm>
#include <cassert>
#include <cstddef>
#include <utility>

#include "display/Colours.h"
#include "dsp/DisplayTrace.h"
#include "state/SpectrumLine.h"

namespace spectrino {

void ResampleColumns(std::span<const float> from, std::span<float> to) {
  if (from.empty()) {
    std::ranges::fill(to, kUndrawnLevel);
    return;
  }
  for (std::size_t x = 0; x < to.size(); ++x) {
    const std::size_t begin = x * from.size() / to.size();
    const std::size_t end = std::max(begin + 1, (x + 1) * from.size() / to.size());
    float strongest = from[begin];
    for (std::size_t i = begin + 1; i < end; ++i) {
      // No value is no level: -200 would win over a level below it.
      const bool isStronger = strongest == kUndrawnLevel || from[i] > strongest;
      if (from[i] != kUndrawnLevel && isStronger) strongest = from[i];
    }
    to[x] = strongest;
  }
}

void WaterfallImage::Resize(int width, int height) {
  width = std::max(width, 0);
  height = std::max(height, 0);
  if (width == width_ && height == height_) return;
  WaterfallImage old = std::move(*this);
  *this = WaterfallImage();
  width_ = width;
  height_ = height;
  const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  if (pixels == 0) return;
  levels_.assign(pixels, kUndrawnLevel);
  rows_.resize(static_cast<std::size_t>(height));
  picture_ = QImage(width, height, QImage::Format_RGB32);
  picture_.fill(WaterfallColour(0));
  lineCount_ = std::min(old.lineCount_, height);
  for (int y = 0; y < lineCount_; ++y) {
    const int oldSlot = old.SlotOf(y);
    rows_[static_cast<std::size_t>(y)] = old.rows_[static_cast<std::size_t>(oldSlot)];
    ResampleColumns(old.LevelsOf(oldSlot), LevelsOf(y));
    PaintSlot(y);
  }
}

void WaterfallImage::AddLine(std::span<const float> levels, const WaterfallRow& row) {
  if (levels_.empty()) return;
  assert(static_cast<int>(levels.size()) == width_);
  newest_ = (newest_ + height_ - 1) % height_;
  lineCount_ = std::min(lineCount_ + 1, height_);
  rows_[static_cast<std::size_t>(newest_)] = row;
  std::ranges::copy(levels, LevelsOf(newest_).begin());
  PaintSlot(newest_);
}

void WaterfallImage::Clear() {
  newest_ = 0;
  lineCount_ = 0;
}

std::optional<WaterfallRow> WaterfallImage::RowAt(int y) const {
  if (y < 0 || y >= lineCount_) return std::nullopt;
  return rows_[static_cast<std::size_t>(SlotOf(y))];
}

void WaterfallImage::Draw(QPainter& painter, QPoint topLeft) const {
  // The ring in two pieces: from the newest line to the last slot, then from the first slot on.
  const int upper = std::min(lineCount_, height_ - newest_);
  const int lower = lineCount_ - upper;
  if (upper > 0) painter.drawImage(topLeft, picture_, QRect(0, newest_, width_, upper));
  if (lower > 0) painter.drawImage(topLeft + QPoint(0, upper), picture_, QRect(0, 0, width_, lower));
}

std::span<float> WaterfallImage::LevelsOf(int slot) {
  const auto width = static_cast<std::size_t>(width_);
  return std::span<float>(levels_).subspan(static_cast<std::size_t>(slot) * width, width);
}

void WaterfallImage::PaintSlot(int slot) {
  const WaterfallRow& row = rows_[static_cast<std::size_t>(slot)];
  const std::span<const float> levels = LevelsOf(slot);
  auto* out = reinterpret_cast<QRgb*>(picture_.scanLine(slot));
  for (std::size_t x = 0; x < levels.size(); ++x) {
    const int index =
        levels[x] == kUndrawnLevel ? 0 : WaterfallColourIndex(levels[x], row.BottomLevel, row.TopLevel);
    out[x] = row.IsDimmed ? DimmedWaterfallColour(index) : WaterfallColour(index);
  }
}

}  // namespace spectrino
