#include "bandplan/Bands.h"

#include <array>
#include <cassert>
#include <cstddef>
#include <span>

#include "state/Val.h"

namespace spectrino {
namespace {

struct Range {
  int number;
  double lowMHz, highMHz;
};

constexpr auto kButtonRanges = std::to_array<Range>({
    {1, 1.5, 2},
    {2, 3.5, 4},
    {3, 7, 7.5},
    {4, 10, 10.5},
    {5, 14, 14.5},
    {6, 18, 18.5},
    {7, 21, 21.5},
    {8, 24.5, 25},
    {9, 28, 29},
    {10, 29, 30},
    {11, 50, 54},
    {12, 144, 148},
    {13, 430, 450},
});

constexpr auto kAmateurBands = std::to_array<Range>({
    {1, 0.1, 0.15},   {2, 0.45, 0.5},   {3, 1.8, 2.0},   {4, 3.5, 4.0},    {5, 5.3, 5.5},
    {6, 7.0, 7.5},    {7, 10.0, 10.5},  {8, 14.0, 14.5}, {9, 18.0, 18.5},  {10, 21.0, 21.5},
    {11, 24.5, 25.0}, {12, 28.0, 30.0}, {13, 50, 54},    {14, 70.0, 70.5}, {15, 144, 148},
    {16, 220, 225},   {17, 420, 450},   {18, 902, 928},  {19, 1240, 1300}, {20, 2300, 2450},
    {21, 3300, 3500},
});

constexpr auto kCoarseRanges = std::to_array<Range>({
    {22, 0, 0.1},     {23, 0.1, 0.5},   {24, 0.5, 1.5},   {25, 1.5, 2.5},  {26, 2.5, 5},     {27, 5, 10},
    {28, 10, 15},     {29, 15, 30},     {30, 30, 50},     {31, 50, 80},    {32, 80, 108},    {33, 108, 132},
    {34, 132, 250},   {35, 250, 500},   {36, 500, 750},   {37, 750, 1000}, {38, 1000, 1500}, {39, 1500, 2000},
    {40, 2000, 2500}, {41, 2500, 3000}, {42, 3000, 3500},
});

/// Number of the first range that holds the frequency, 0 when none does.
int FirstHolding(std::span<const Range> ranges, double mhz) {
  for (const Range& range : ranges)
    if (mhz >= range.lowMHz && mhz <= range.highMHz) return range.number;
  return 0;
}

constexpr std::array<int, kBandButtonCount> kRecordOfButton{0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15, 17};

// Nobody tells where the host's decoder divides 80 m: the middle.
constexpr double kSplit80MHz = 3.75;

}  // namespace

int BandButton(double mhz) {
  return FirstHolding(kButtonRanges, mhz);
}

std::optional<int> RefBand(double mhz) {
  const int button = BandButton(mhz);
  return button == 13 ? std::nullopt : std::optional(button);
}

int IcomBandNumber(double mhz) {
  const int band = FirstHolding(kAmateurBands, mhz);
  return band != 0 ? band : FirstHolding(kCoarseRanges, mhz);
}

int BandRecordOfButton(int button) {
  assert(button >= 0 && button < kBandButtonCount);
  return kRecordOfButton[static_cast<std::size_t>(button)];
}

namespace {

int SplitButton(double mhz) {
  const int whole = BandButton(mhz);
  if (whole == 2) return mhz < kSplit80MHz ? 2 : 3;
  // One further on behind 80 m; 10 m in one again brings 6 m back to its place.
  return whole >= 3 && whole <= 9 ? whole + 1 : whole;
}

/// The button that recalls the record of the frequency's band.
int RecordButton(double mhz) {
  const int number = IcomBandNumber(mhz);
  for (int button = 1; button < kBandButtonCount; ++button)
    if (BandRecordOfButton(button) == number) return button;
  return 0;
}

}  // namespace

bool ReadSplit80(SettingsStore& store) {
  return Val(store.GetSetting("Bexmora", "BandDecoder", "Split80", "")) == 1;
}

std::optional<int> BandButtonOf(BandLayout layout, double mhz) {
  if (mhz <= 0) return std::nullopt;
  switch (layout) {
    case BandLayout::With60m:
      return RecordButton(mhz);
    case BandLayout::HostSplit:
      return SplitButton(mhz);
    case BandLayout::Designed:
    case BandLayout::HostWhole:
      break;
  }
  return BandButton(mhz);
}

}  // namespace spectrino
