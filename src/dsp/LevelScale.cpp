#include "dsp/LevelScale.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "state/Val.h"

namespace spectrino {
namespace {

struct RangeRow {
  int divisor;
  int rangeDb;
  int units;
  int gridStep;
};

constexpr std::array<RangeRow, 8> kRanges = {{{1, 20, 40, 5},
                                              {10, 40, 40, 10},
                                              {100, 60, 60, 15},
                                              {1000, 80, 80, 20},
                                              {10000, 100, 100, 20},
                                              {100000, 120, 120, 20},
                                              {1000000, 140, 140, 20},
                                              {10000000, 160, 160, 20}}};

const RangeRow* FindRange(int divisor) {
  for (const RangeRow& row : kRanges) {
    if (row.divisor == divisor) return &row;
  }
  return nullptr;
}

struct GridRow {
  int upToRate;
  double stepHz;
};

constexpr std::array<GridRow, 5> kGrids = {
    {{11025, 1250}, {22050, 2500}, {48000, 5000}, {96000, 10000}, {192000, 20000}}};

}  // namespace

int BinWidthDb(int sampleRate, int fftBits) {
  return RoundToInt32(10 * std::log10(sampleRate / std::ldexp(1.0, fftBits)));
}

void UpdateLevelScale(LevelScale& scale, int refLevel, int rangeDivisor, int binWidthDb) {
  scale.BottomLevel = static_cast<float>(refLevel + binWidthDb - 100);
  const RangeRow* range = FindRange(rangeDivisor);
  if (range == nullptr) return;
  scale.TopLevel = scale.BottomLevel + static_cast<float>(range->rangeDb);
  scale.RangeUnits = range->units;
  scale.GridStep = range->gridStep;
}

int RangeDb(int rangeDivisor) {
  const RangeRow* range = FindRange(rangeDivisor);
  return range == nullptr ? 0 : range->rangeDb;
}

int ReferenceOf(float bottomLevel, int binWidthDb) {
  return std::clamp(RoundToInt32(bottomLevel) - binWidthDb + 100, -199, 200);
}

int NearestDivisor(float rangeDb) {
  const auto distance = [rangeDb](const RangeRow& row) {
    return std::abs(rangeDb - static_cast<float>(row.rangeDb));
  };
  return std::ranges::min_element(kRanges, {}, distance)->divisor;
}

std::array<double, 21> BuildGridFrequencies(int sampleRate) {
  double stepHz = kGrids.back().stepHz;
  for (const GridRow& row : kGrids) {
    if (sampleRate > row.upToRate) continue;
    stepHz = row.stepHz;
    break;
  }
  std::array<double, 21> frequencies{};
  for (std::size_t k = 0; k < frequencies.size(); ++k) frequencies[k] = static_cast<double>(k) * stepHz;
  return frequencies;
}

}  // namespace spectrino
