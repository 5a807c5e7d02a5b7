#include "catserver/CatModes.h"

#include <algorithm>
#include <array>

namespace spectrino {
namespace {

constexpr auto kModes = std::to_array<CatMode>({
    {"AM", {mode::kAm}, 0x1},
    {"CW", {mode::kCw}, 0x2},
    {"USB", {mode::kUsb}, 0x4},
    {"LSB", {mode::kLsb}, 0x8},
    {"RTTY", {mode::kData, true}, 0x10},
    {"FM", {mode::kFm}, 0x20},
    {"CWR", {mode::kCwReverse}, 0x80},
    {"RTTYR", {mode::kDataReverse, true}, 0x100},
    {"PKTLSB", {mode::kDataReverse}, 0x400},
    {"PKTUSB", {mode::kData}, 0x800},
});

const CatMode* Found(const CatMode* at) {
  return at == kModes.end() ? nullptr : at;
}

}  // namespace

std::span<const CatMode> CatModes() {
  return kModes;
}

const CatMode* CatModeOf(const ExactMode& exact) {
  // What else of a mode is told does not matter but for DATA.
  const ExactMode sought{exact.RadioMode, exact.Teletype && IsData(exact.RadioMode)};
  return Found(std::ranges::find(kModes, sought, &CatMode::Exact));
}

const CatMode* CatModeOf(std::string_view word) {
  return Found(std::ranges::find(kModes, word, &CatMode::Word));
}

bool IsData(int radioMode) {
  return radioMode == mode::kData || radioMode == mode::kDataReverse;
}

}  // namespace spectrino
