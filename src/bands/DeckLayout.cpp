#include "bands/DeckLayout.h"

#include <algorithm>
#include <cstddef>

#include "bandplan/Bands.h"
#include "state/RadioState.h"
#include "state/Val.h"

namespace spectrino {
namespace {

constexpr ModeButtonTexts kDesignedModes{{
    {"lsb", "LSB"},
    {"usb", "USB"},
    {"cw", "CW"},
    {"am", "AM"},
    {"fm", "FM"},
    {"fsk", "FSK"},
    {"sam", "Synchronous AM"},
    {"wfm", "Wide FM"},
    {"dv", "Digital mode"},
    {"rev", "Reverse mode (CW/FSK)"},
}};
constexpr ModeButtonTexts kK4Modes{{
    {"lsb", "LSB"},
    {"usb", "USB"},
    {"cw", "CW"},
    {"cwr", "CW reverse"},
    {"fm", "FM"},
    {"am", "AM"},
    {"dtr", "Data reverse"},
    {"dt", "Data"},
    {"", ""},
    {"", ""},
}};

struct ModeCodes {
  int Normal, Reverse;
};
constexpr std::array<ModeCodes, 9> kDesignedCodes{{{mode::kLsb, mode::kLsb},
                                                   {mode::kUsb, mode::kUsb},
                                                   {mode::kCw, mode::kCwReverse},
                                                   {mode::kAm, mode::kAm},
                                                   {mode::kFm, mode::kFm},
                                                   {mode::kData, mode::kDataReverse},
                                                   {mode::kAm, mode::kAm},
                                                   {mode::kFm, mode::kFm},
                                                   {mode::kFm, mode::kFm}}};
constexpr std::array<int, 8> kK4Codes{mode::kLsb, mode::kUsb, mode::kCw,          mode::kCwReverse,
                                      mode::kFm,  mode::kAm,  mode::kDataReverse, mode::kData};

template <typename Table>
std::optional<int> IndexIn(const Table& table, auto&& holds) {
  const auto at = std::ranges::find_if(table, holds);
  return at == table.end() ? std::nullopt : std::optional(static_cast<int>(at - table.begin()));
}

// Nobody tells where the host's decoder divides 80 m: the middle.
constexpr double kSplit80MHz = 3.75;

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

const ModeButtonTexts& ModeTexts(ModeLayout layout) {
  return layout == ModeLayout::WithReverse ? kK4Modes : kDesignedModes;
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

std::optional<int> ModeButtonOf(ModeLayout layout, int radioMode) {
  if (layout == ModeLayout::WithReverse)
    return IndexIn(kK4Codes, [&](int code) { return code == radioMode; });
  return IndexIn(kDesignedCodes, [&](const ModeCodes& codes) {
    return codes.Normal == radioMode || codes.Reverse == radioMode;
  });
}

bool IsReverse(int radioMode) {
  return radioMode == mode::kCwReverse || radioMode == mode::kDataReverse;
}

std::optional<int> ModeOfButton(ModeLayout layout, int button, bool cwReverse, bool fskReverse) {
  const auto index = static_cast<std::size_t>(button);
  if (layout == ModeLayout::WithReverse)
    return index < kK4Codes.size() ? std::optional(kK4Codes[index]) : std::nullopt;
  if (index >= kDesignedCodes.size()) return std::nullopt;
  const ModeCodes& codes = kDesignedCodes[index];
  const bool reverse = codes.Normal == mode::kCw ? cwReverse : fskReverse;
  return reverse ? codes.Reverse : codes.Normal;
}

}  // namespace spectrino
