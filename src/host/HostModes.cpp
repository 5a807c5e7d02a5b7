#include "host/HostModes.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "host/HostState.h"
#include "state/RadioState.h"

namespace spectrino {
namespace {

// By host code 0..13; 3 is unused by any word.
constexpr std::array<int, 14> kRadioModes{
    mode::kLsb, mode::kUsb,  mode::kCw,          mode::kCw,  mode::kAm, mode::kAm,        mode::kFm,
    mode::kFm,  mode::kData, mode::kDataReverse, mode::kLsb, mode::kFm, mode::kCwReverse, mode::kCwReverse};

struct WordRow {
  std::string_view Word;
  int HostMode;
  bool Data = false;
};

// The first word of a code is the one that asks for it.
constexpr auto kWords = std::to_array<WordRow>({
    {"LSB", hostmode::kLsb},
    {"USB", hostmode::kUsb},
    {"CW", hostmode::kCw},
    {"CWR", hostmode::kCwReverse},
    {"AM", hostmode::kAm},
    {"AMS", hostmode::kAm},
    {"AMN", hostmode::kAm},
    {"FM", hostmode::kFm},
    {"FMN", hostmode::kFm},
    {"PKTFM", hostmode::kFm},
    {"WFM", hostmode::kWideFm},
    {"RTTY", hostmode::kFsk},
    {"RTTYR", hostmode::kFskReverse},
    {"PKTUSB", hostmode::kFsk, true},
    {"PKTLSB", hostmode::kFskReverse, true},
});

constexpr std::array<int, 9> kButtonModes{hostmode::kLsb, hostmode::kUsb,    hostmode::kCw,
                                          hostmode::kAm,  hostmode::kFm,     hostmode::kFsk,
                                          hostmode::kAm,  hostmode::kWideFm, hostmode::kFsk};

}  // namespace

int RadioModeOfHost(int hostMode) {
  const auto index = static_cast<std::size_t>(hostMode);
  return index < kRadioModes.size() ? kRadioModes[index] : mode::kUnknown;
}

int HostModeOfRadio(int radioMode) {
  // Several codes tell of it, and one has a word to ask by.
  if (radioMode == mode::kCwReverse) return hostmode::kCwReverse;
  const auto at = std::ranges::find(kRadioModes, radioMode);
  return radioMode == mode::kUnknown || at == kRadioModes.end() ? hostmode::kUnknown
                                                                : static_cast<int>(at - kRadioModes.begin());
}

int HostModeOfButton(int button, bool reverse) {
  const auto index = static_cast<std::size_t>(button);
  if (index >= kButtonModes.size()) return hostmode::kUnknown;
  const int code = kButtonModes[index];
  if (reverse && code == hostmode::kCw) return hostmode::kCwReverse;
  if (reverse && code == hostmode::kFsk) return hostmode::kFskReverse;
  return code;
}

int HostModeOfWord(std::string_view word) {
  const auto at = std::ranges::find(kWords, word, &WordRow::Word);
  return at == kWords.end() ? hostmode::kUnknown : at->HostMode;
}

bool IsDataWord(std::string_view word) {
  const auto at = std::ranges::find(kWords, word, &WordRow::Word);
  return at != kWords.end() && at->Data;
}

std::string_view WordOfHostMode(int hostMode, bool dataFamily) {
  const bool shared = hostMode == hostmode::kFsk || hostMode == hostmode::kFskReverse;
  const auto at = std::ranges::find_if(kWords, [&](const WordRow& row) {
    return row.HostMode == hostMode && row.Data == (shared && dataFamily);
  });
  return at == kWords.end() ? std::string_view() : at->Word;
}

}  // namespace spectrino
