#include "dsp/LevelCodes.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <cstddef>

namespace spectrino {
namespace {

constexpr float kFurthestLevel = 1e4F;
constexpr float kFineRange = LevelCodes::kSteps * 0.5F;

/// Positions in 32.32 fixed point: a retuning dial maps every pixel of the picture anew.
class Walk {
 public:
  Walk(double first, double step) : at_(Fixed(first) - kHair), step_(Fixed(step)) {}

  /// The first byte at or above where the cell begins.
  [[nodiscard]] int Begin() const { return static_cast<int>((at_ + 0xFFFFFFFF) >> 32); }
  /// Middle of the cell, 24.8.
  [[nodiscard]] std::int64_t Middle() const { return (at_ + step_ / 2) >> 24; }
  void Next() { at_ += step_; }

 private:
  static std::int64_t Fixed(double value) {
    return static_cast<std::int64_t>(std::floor(value * 4294967296.0));
  }
  static constexpr std::int64_t kHair = 1
                                        << 10;  // a byte on the border belongs to the cell that begins there

  std::int64_t at_;
  std::int64_t step_;
};

/// Where no byte stands in the cell.
std::uint8_t Between(std::span<const std::uint8_t> bytes, std::int64_t middle) {
  const auto last = static_cast<std::int64_t>(bytes.size()) - 1;
  const std::int64_t left = std::clamp<std::int64_t>(middle >> 8, 0, last);
  const std::int64_t right = middle < 0 ? left : std::min(left + 1, last);
  const int a = bytes[static_cast<std::size_t>(left)];
  const int b = bytes[static_cast<std::size_t>(right)];
  if (a == 0 || b == 0) return 0;
  return static_cast<std::uint8_t>(a + ((b - a) * static_cast<int>(middle & 0xFF)) / 256);
}

/// Cells that lie within the bytes and take kLeast of them or one more: the last one is looked at for itself,
/// without a branch. cell: the first of count.
template <int kLeast>
void TakeStrongest(const std::uint8_t* bytes, Walk walk, std::uint8_t* cell, int count) {
  int begin = walk.Begin();
  for (int x = 0; x < count; ++x) {
    walk.Next();
    const int end = walk.Begin();
    std::uint8_t strongest = bytes[end - 1];
    for (int i = 0; i < kLeast; ++i) strongest = std::max(strongest, bytes[begin + i]);
    cell[x] = strongest;
    begin = end;
  }
}

using Taker = void (*)(const std::uint8_t*, Walk, std::uint8_t*, int);
constexpr std::array<Taker, 8> kTakers{nullptr,          TakeStrongest<1>, TakeStrongest<2>,
                                       TakeStrongest<3>, TakeStrongest<4>, TakeStrongest<5>,
                                       TakeStrongest<6>, TakeStrongest<7>};

}  // namespace

LevelCodes CodesFor(std::span<const float> levels) {
  float strongest = -kFurthestLevel;
  float weakest = kFurthestLevel;
  for (const float level : levels) {
    const bool counts = level > kEmptyLevel && level != kUndrawnLevel;
    strongest = counts && level > strongest ? level : strongest;
    weakest = counts && level < weakest ? level : weakest;
  }
  strongest = std::min(strongest, kFurthestLevel);
  const float quantum = strongest - weakest > kFineRange ? 1.0F : 0.5F;
  return {std::ceil(strongest / quantum) * quantum - LevelCodes::kSteps * quantum, quantum};
}

void EncodeLevels(std::span<const float> levels, const LevelCodes& codes, std::span<std::uint8_t> bytes) {
  assert(bytes.size() == levels.size());
  const float* __restrict from = levels.data();
  std::uint8_t* __restrict to = bytes.data();
  const std::size_t count = levels.size();
  const float scale = 1 / codes.Quantum;
  for (std::size_t i = 0; i < count; ++i) {
    float code = (from[i] - codes.Base) * scale + 1.5F;
    code = code > 1 ? code : 1;
    code = code < 255 ? code : 255;
    const int drawn = static_cast<int>(code);
    to[i] = static_cast<std::uint8_t>(from[i] == kUndrawnLevel ? 0 : drawn);
  }
}

void JoinCodes(std::span<const std::uint8_t> bytes, const LevelCodes& from, const LevelCodes& to,
               std::span<std::uint8_t> into) {
  assert(bytes.size() == into.size());
  std::array<float, 256> levels{};
  for (std::size_t code = 0; code < levels.size(); ++code)
    levels[code] = from.LevelOf(static_cast<std::uint8_t>(code));
  std::array<std::uint8_t, 256> becomes{};
  EncodeLevels(levels, to, becomes);
  becomes[0] = 0;
  for (std::size_t x = 0; x < bytes.size(); ++x) into[x] = std::max(into[x], becomes[bytes[x]]);
}

CellRange ResampleCodes(std::span<const std::uint8_t> bytes, double first, double step,
                        std::span<std::uint8_t> cells) {
  constexpr double kFurthest = 1e8;  // bytes; beyond it nothing of the line is near the cells
  const auto count = static_cast<double>(cells.size());
  const auto size = static_cast<int>(bytes.size());
  if (size < 2 || !(step > 0) || !(step * count < kFurthest) || !(std::abs(first) < kFurthest)) return {};
  const auto cellAt = [&](double position) {
    return static_cast<int>(std::clamp(std::ceil((position - first) / step - 0.5), 0.0, count));
  };
  const CellRange range{cellAt(-0.5), cellAt(size - 0.5)};
  const double endPosition = first + count * step;
  const auto takeOne = [&](int x) {
    Walk walk(first + x * step, step);
    const std::int64_t middle = walk.Middle();
    const int begin = std::clamp(walk.Begin(), 0, size);
    walk.Next();
    int end = walk.Begin();
    if (x + 1 == static_cast<int>(cells.size()))
      end = std::max(end, static_cast<int>(std::floor(endPosition + 1e-6)) + 1);
    end = std::clamp(end, begin, size);
    cells[static_cast<std::size_t>(x)] =
        begin < end ? *std::max_element(bytes.begin() + begin, bytes.begin() + end) : Between(bytes, middle);
  };
  // Those that reach over an end of the line, or have the picture's, are looked at one by one.
  const auto least = static_cast<std::size_t>(step);
  const Taker taker = least < kTakers.size() ? kTakers[least] : nullptr;
  int inner = range.First;
  while (inner < range.End && first + inner * step <= 0) takeOne(inner++);
  int innerEnd = std::min(range.End, static_cast<int>(cells.size()) - 1);
  while (innerEnd > inner && first + innerEnd * step >= size - 1) --innerEnd;
  if (taker != nullptr) {
    taker(bytes.data(), Walk(first + inner * step, step), cells.data() + inner, innerEnd - inner);
  } else {
    for (int x = inner; x < innerEnd; ++x) takeOne(x);
  }
  for (int x = std::max(inner, innerEnd); x < range.End; ++x) takeOne(x);
  return range;
}

}  // namespace spectrino
