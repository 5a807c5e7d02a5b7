#include "bands/DeckLayout.h"

#include <algorithm>
#include <cstddef>

#include "state/RadioState.h"

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

}  // namespace

const ModeButtonTexts& ModeTexts(ModeLayout layout) {
  return layout == ModeLayout::WithReverse ? kK4Modes : kDesignedModes;
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
