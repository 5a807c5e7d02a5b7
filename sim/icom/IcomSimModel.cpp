#include "sim/icom/IcomSimModel.h"

#include <algorithm>
#include <cassert>

namespace spectrino {

namespace {

constexpr auto kSimModels = std::to_array<IcomSimModel>({
    {IcomSimKind::Ic7300, "ic7300", 0x94, 475, 160, 11, 0x20, 1, 14'074'000, {{{30'000, 74'800'000}}}},
    {IcomSimKind::Ic705,
     "ic705",
     0xA4,
     475,
     160,
     11,
     0x20,
     1,
     7'074'000,
     {{{30'000, 199'999'999}, {400'000'000, 470'000'000}}}},
    {IcomSimKind::Ic9700,
     "ic9700",
     0xA2,
     475,
     160,
     11,
     0x10,
     2,
     144'174'000,
     {{{144'000'000, 148'000'000}, {430'000'000, 450'000'000}, {1'240'000'000, 1'300'000'000}}}},
    {IcomSimKind::Ic7610, "ic7610", 0x98, 689, 200, 15, 0x12, 2, 14'074'000, {{{30'000, 60'000'000}}}},
});

struct RangeRow {
  std::int64_t LowHz;      ///< the range reaches to the next row
  std::int64_t EdgesHz;    ///< where its amateur band begins
  std::int64_t EdgesSpan;  ///< how far the first edge set shows it
};

constexpr auto kRangeRows = std::to_array<RangeRow>({
    {30'000, 500'000, 500'000},
    {1'600'000, 1'800'000, 200'000},
    {2'000'000, 3'500'000, 500'000},
    {6'000'000, 7'000'000, 300'000},
    {8'000'000, 10'100'000, 50'000},
    {11'000'000, 14'000'000, 350'000},
    {15'000'000, 18'068'000, 100'000},
    {20'000'000, 21'000'000, 450'000},
    {22'000'000, 24'890'000, 100'000},
    {26'000'000, 28'000'000, 1'000'000},
    {30'000'000, 30'000'000, 1'000'000},
    {45'000'000, 50'000'000, 1'000'000},
    {60'000'000, 70'000'000, 500'000},
    {74'800'000, 88'000'000, 1'000'000},
    {108'000'000, 118'000'000, 1'000'000},
    {137'000'000, 144'000'000, 1'000'000},
    {400'000'000, 430'000'000, 1'000'000},
    {1'240'000'000, 1'296'000'000, 1'000'000},
});
constexpr std::int64_t kTopHz = 1'300'000'000;

}  // namespace

const IcomSimModel& IcomSimModelOf(IcomSimKind kind) {
  const auto row = std::ranges::find(kSimModels, kind, &IcomSimModel::Kind);
  assert(row != kSimModels.end());
  return *row;
}

std::span<const IcomSimModel> IcomSimModels() {
  return kSimModels;
}

SimScopeRange SimScopeRangeAt(std::int64_t hz) {
  const auto above = std::ranges::upper_bound(kRangeRows, hz, {}, &RangeRow::LowHz);
  const auto row = above == kRangeRows.begin() ? above : above - 1;
  const std::int64_t high = row + 1 == kRangeRows.end() ? kTopHz : (row + 1)->LowHz;
  return {static_cast<int>(row - kRangeRows.begin()) + 1, {row->LowHz, high}};
}

int SimScopeRangeCount() {
  return static_cast<int>(kRangeRows.size());
}

SimHzRange SimDefaultEdges(int range, int set) {
  assert(range >= 1 && range <= SimScopeRangeCount() && set >= 1 && set <= kScopeEdgeSets);
  const RangeRow& row = kRangeRows[static_cast<std::size_t>(range - 1)];
  // Each further set shows half of the one before.
  return {row.EdgesHz, row.EdgesHz + (row.EdgesSpan >> (set - 1))};
}

}  // namespace spectrino
