#include "dsp/NoiseFloor.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

constexpr int kMostColumns = 256;
constexpr int kFewestColumns = 16;
constexpr int kMostPoints = 64;     // of a column
constexpr double kEndShare = 0.05;  // of the line, at either end
constexpr float kHighest = 1000;    // no source's levels go there
constexpr float kJumpDb = 6;
constexpr std::chrono::seconds kJumpTime{1};
constexpr std::size_t kQuarter = 4;  // both of the columns and of the half seconds

/// The strongest of them; kUndrawnLevel where none is a level.
float Strongest(std::span<const float> levels) {
  float strongest = kUndrawnLevel;
  for (const float level : levels) {
    // False for what is not a number, too.
    if (level > strongest && level < kHighest) strongest = level;
  }
  return strongest;
}

float QuarterOf(std::span<float> values) {
  const auto at = values.begin() + static_cast<std::ptrdiff_t>(values.size() / kQuarter);
  std::ranges::nth_element(values, at);
  return *at;
}

}  // namespace

std::optional<LineLevels> MeasureLine(std::span<const float> levels, double columnPoints, int firstInView,
                                      int endInView) {
  const int count = static_cast<int>(levels.size());
  const int width = std::clamp(static_cast<int>(std::lround(columnPoints)), 1, std::max(1, count));
  const int end = static_cast<int>(std::lround(count * kEndShare));
  const int inner = count - 2 * end;
  const int columns = std::min(kMostColumns, inner / width);
  std::array<float, kMostColumns> strongest{};
  std::size_t used = 0;
  for (int column = 0; column < columns; ++column) {
    const auto first =
        static_cast<std::size_t>(end + static_cast<std::int64_t>(inner - width) * column / columns);
    const float level =
        Strongest(levels.subspan(first, static_cast<std::size_t>(std::min(width, kMostPoints))));
    if (level > kUndrawnLevel) strongest[used++] = level;
  }
  if (used < kFewestColumns) return std::nullopt;
  const int first = std::clamp(firstInView, 0, count);
  const int last = std::clamp(endInView, first, count);
  LineLevels found;
  found.Noise = QuarterOf(std::span(strongest).first(used));
  found.Strongest =
      Strongest(levels.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first)));
  found.Strongest = std::max(found.Strongest, found.Noise);
  return found;
}

void NoiseFloor::Restart() {
  count_ = 0;
  apart_.reset();
}

void NoiseFloor::Add(float noise, Time now) {
  if (!Known() || std::abs(noise - Level()) < kJumpDb)
    apart_.reset();
  else if (!apart_)
    apart_ = now;
  else if (now - *apart_ > kJumpTime)
    Restart();
  const bool first = count_ == 0;
  if (first || now - begun_ >= kTurn) {
    newest_ = first ? 0 : (newest_ + 1) % kTurns;
    count_ = std::min(count_ + 1, kTurns);
    added_ = 0;
    begun_ = now;
  }
  float& mean = means_[static_cast<std::size_t>(newest_)];
  mean = added_ == 0 ? noise : mean + (noise - mean) / static_cast<float>(added_ + 1);
  ++added_;
}

float NoiseFloor::Level() const {
  std::array<float, kTurns> sorted = means_;
  return QuarterOf(std::span(sorted).first(static_cast<std::size_t>(count_)));
}

}  // namespace spectrino
