#include "display/WaterfallImage.h"

#include <algorithm>
#include <cassert>
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

WaterfallRow RowOf(const PastLine& line) {
  return {.LeftMHz = line.ViewLeftMHz,
          .RightMHz = line.ViewRightMHz,
          .TakenUtc = line.TakenUtc,
          .BottomLevel = line.BottomLevel,
          .TopLevel = line.TopLevel,
          .UnitsPerDb = line.UnitsPerDb,
          .Dimmed = line.Dimmed,
          .Number = line.Number};
}

}  // namespace

void WaterfallImage::Resize(int width, int height) {
  width = std::max(0, width);
  height = std::max(0, height);
  if (width == Width() && height == Height()) return;
  picture_ = width > 0 && height > 0 ? QImage(width, height, QImage::Format_RGB32) : QImage();
  rows_.assign(At(Height()), {});
  cells_.assign(At(Width()), 0);
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
  coloured_.reset();
  PaintAll();
}

LevelRange WaterfallImage::ColourRange(const WaterfallRow& row) const {
  // As it was given, to the last bit.
  if (look_.FloorDb == 0 && look_.ContrastPercent == 100) return {row.BottomLevel, row.TopLevel};
  const float bottom = row.BottomLevel + static_cast<float>(look_.FloorDb) * row.UnitsPerDb;
  return {bottom,
          bottom + (row.TopLevel - row.BottomLevel) * 100 / static_cast<float>(look_.ContrastPercent)};
}

void WaterfallImage::SetRange(double leftMHz, double rightMHz) {
  if (leftMHz == leftMHz_ && rightMHz == rightMHz_) return;
  leftMHz_ = leftMHz;
  rightMHz_ = rightMHz;
  if (follow_) PaintAll();
}

void WaterfallImage::Clear() {
  top_.reset();
  PaintAll();
}

void WaterfallImage::AddLine(std::span<const float> levels, const WaterfallRow& row) {
  if (picture_.isNull()) return;
  assert(static_cast<int>(levels.size()) == Width());
  SetRange(row.LeftMHz, row.RightMHz);
  if (!Live()) return;
  // What was drawn anew has the line already.
  if (count_ == 0 || rows_[At(head_)].Number != row.Number) {
    // The ring turns by one row; what was at the bottom is overwritten, nothing else moves.
    head_ = (head_ + Height() - 1) % Height();
    count_ = std::min(count_ + 1, Height());
  }
  rows_[At(head_)] = row;
  PaintNewest(levels);
}

bool WaterfallImage::ScrollBy(int rows) {
  if (picture_.isNull()) return false;
  const int age = top_ ? past_.AgeOf(*top_).value_or(past_.Count() - 1) : 0;
  const int wanted = std::clamp(age + rows, 0, std::max(0, past_.Count() - Height()));
  if (wanted == age) return false;
  top_.reset();
  if (wanted > 0) top_ = past_.At(wanted)->Line.Number;
  PaintAll();
  return true;
}

void WaterfallImage::ShowNow() {
  if (Live()) return;
  top_.reset();
  PaintAll();
}

int WaterfallImage::SlotAt(int y) const {
  return (head_ + y) % Height();
}

QRgb* WaterfallImage::PixelsOf(int slot) {
  return reinterpret_cast<QRgb*>(picture_.scanLine(slot));
}

void WaterfallImage::PaintNewest(std::span<const float> levels) {
  const WaterfallRow& row = rows_[At(head_)];
  const auto& palette = row.Dimmed ? DimmedPalette(look_.Palette) : WaterfallPalette(look_.Palette);
  QRgb* const pixels = PixelsOf(head_);
  const LevelRange range = ColourRange(row);
  for (std::size_t x = 0; x < levels.size(); ++x)
    pixels[x] = palette[At(WaterfallColourIndex(levels[x], range.Bottom, range.Top))];
}

CellRange WaterfallImage::Resample(const KeptLine& line, double firstX, std::span<std::uint8_t> cells) const {
  if (line.Bytes.size() < 2) return {};
  const double left = follow_ ? leftMHz_ : line.Line.ViewLeftMHz;
  const double right = follow_ ? rightMHz_ : line.Line.ViewRightMHz;
  const double byteMHz =
      (line.Line.LastMHz - line.Line.FirstMHz) / static_cast<double>(line.Bytes.size() - 1);
  if (!(byteMHz > 0)) return {};
  const double step = (right - left) / Width() / byteMHz;
  return ResampleCodes(line.Bytes, (left - line.Line.FirstMHz) / byteMHz + firstX * step, step, cells);
}

const WaterfallImage::CodeColours& WaterfallImage::ColoursOf(const KeptLine& line) {
  const ColourKey key{line.Codes, ColourRange(RowOf(line.Line)), line.Line.Dimmed};
  if (coloured_ == key) return codeColours_;
  coloured_ = key;
  const auto& palette = key.Dimmed ? DimmedPalette(look_.Palette) : WaterfallPalette(look_.Palette);
  for (std::size_t code = 0; code < codeColours_.size(); ++code) {
    const float level = key.Codes.LevelOf(static_cast<std::uint8_t>(code));
    codeColours_[code] = palette[At(WaterfallColourIndex(level, key.Range.Bottom, key.Range.Top))];
  }
  return codeColours_;
}

void WaterfallImage::PaintFromPast(int slot, const KeptLine& line) {
  const CellRange shown = Resample(line, 0, cells_);
  const CodeColours& colours = ColoursOf(line);
  QRgb* const pixels = PixelsOf(slot);
  std::fill(pixels, pixels + shown.First, emptyColour_);
  for (int x = shown.First; x < shown.End; ++x) pixels[x] = colours[cells_[At(x)]];
  std::fill(pixels + shown.End, pixels + Width(), emptyColour_);
}

void WaterfallImage::PaintAll() {
  head_ = count_ = 0;
  if (picture_.isNull()) return;
  const int age = top_ ? past_.AgeOf(*top_).value_or(past_.Count() - 1) : 0;
  for (; count_ < Height(); ++count_) {
    const auto line = past_.At(age + count_);
    if (!line) break;
    rows_[At(count_)] = RowOf(line->Line);
    PaintFromPast(count_, *line);
  }
  for (int y = count_; y < Height(); ++y) std::fill_n(PixelsOf(y), Width(), emptyColour_);
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
  const auto row = RowAt(y);
  if (x < 0 || x >= Width() || !row) return kUndrawnLevel;
  const auto age = past_.AgeOf(row->Number);
  if (!age) return kUndrawnLevel;
  const KeptLine line = *past_.At(*age);
  // Only the picture's last column takes what stands on its right end.
  std::array<std::uint8_t, 2> cells{};
  const CellRange shown = Resample(line, x, std::span(cells).first(x + 1 < Width() ? 2 : 1));
  return shown.First == 0 && shown.End > 0 ? line.Codes.LevelOf(cells[0]) : kUndrawnLevel;
}

double WaterfallImage::FrequencyAt(double x, int y) const {
  const auto row = RowAt(y);
  if (!row || Width() == 0) return 0;
  const double left = follow_ ? leftMHz_ : row->LeftMHz;
  const double right = follow_ ? rightMHz_ : row->RightMHz;
  return left + x / Width() * (right - left);
}

}  // namespace spectrino
