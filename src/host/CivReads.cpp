#include "host/CivReads.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "state/Val.h"

namespace spectrino {
namespace {

/// 128 is "0128" in four digits. number: 0..9999.
std::string Digits(long number, int count) {
  std::string text(static_cast<std::size_t>(count), '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, number /= 10)
    *digit = static_cast<char>('0' + number % 10);
  return text;
}

// 0..1 here, 0000..0255 there.
std::string Level255(double value) {
  return value >= 0 && value <= 1 ? Digits(std::lround(value * 255), 4) : std::string();
}

std::string OnOff(double value) {
  return value > 0 ? "01" : "00";
}

std::string Decibels(double value) {
  return value >= 0 && value <= 99 ? Digits(std::lround(value), 2) : std::string();
}

// Hamlib: 0 off, 1 superfast, 2 fast, 3 slow, 5 medium. Icom: 1 fast, 2 middle, 3 slow.
std::string Agc(double value) {
  constexpr std::array<std::string_view, 6> texts{"00", "01", "01", "03", "", "02"};
  return value >= 0 && value < texts.size() ? std::string(texts[static_cast<std::size_t>(value)]) : "";
}

// Hamlib: 1 centre, 2 fixed, 3 and 4 the same scrolling.
std::string FixedMode(double value) {
  if (!(value >= 1 && value <= 4)) return {};
  return "00" + std::string(std::lround(value) % 2 == 0 ? "01" : "00");
}

// Hamlib: 2 is the fastest. Icom: 0 is.
std::string Speed(double value) {
  return value >= 0 && value <= 2 ? "00" + Digits(2 - std::lround(value), 2) : std::string();
}

// Whole dB, hundredths, 00 plus or 01 minus
std::string RefLevel(double value) {
  if (!(std::abs(value) <= 20)) return {};
  return "00" + Digits(std::lround(std::abs(value) * 100), 4) + (value < 0 ? "01" : "00");
}

constexpr auto kReads = std::to_array<CivRead>({
    {"1401", "get_level", "AF", Level255},
    {"1403", "get_level", "SQL", Level255},
    {"1602", "get_level", "PREAMP", OnOff},
    {"1612", "get_level", "AGC", Agc},
    {"1622", "get_func", "NB", OnOff},
    {"1640", "get_func", "NR", OnOff},
    {"1641", "get_func", "ANF", OnOff},
    {"11", "get_level", "ATT", Decibels},
    {"271400", "get_level", "SPECTRUM_MODE", FixedMode},
    {"271900", "get_level", "SPECTRUM_REF", RefLevel},
    {"271A00", "get_level", "SPECTRUM_SPEED", Speed},
});

struct ModeWord {
  std::string_view Word, Byte;
};
constexpr auto kModes = std::to_array<ModeWord>({
    {"LSB", "00"},
    {"USB", "01"},
    {"AM", "02"},
    {"CW", "03"},
    {"RTTY", "04"},
    {"FM", "05"},
    {"WFM", "06"},
    {"CWR", "07"},
    {"RTTYR", "08"},
    {"PKTLSB", "00"},
    {"PKTUSB", "01"},
    {"PKTAM", "02"},
    {"PKTFM", "05"},
    {"PSK", "12"},
    {"PSKR", "13"},
    {"DSTAR", "17"},
});

}  // namespace

const CivRead* FindCivRead(std::string_view civ) {
  const auto* at = std::ranges::find(kReads, civ, &CivRead::Civ);
  return at == kReads.end() ? nullptr : at;
}

std::string CivReply(const CivRead& read, const RigctldReply& answer) {
  if (answer.Code != rprt::kDone || answer.Lines.empty()) return {};
  const std::string_view line = answer.Lines.back();
  const std::size_t colon = line.rfind(':');
  const std::string data =
      read.Data(Val(Trim(colon == std::string_view::npos ? line : line.substr(colon + 1))));
  if (data.empty()) return {};
  // A setting of the scope names the main one, as its request does.
  std::string_view head = read.Civ;
  if (head.starts_with("27")) head.remove_suffix(2);
  return std::string(head) + data;
}

std::string_view CivModeOfWord(std::string_view word) {
  const auto* at = std::ranges::find(kModes, word, &ModeWord::Word);
  return at == kModes.end() ? std::string_view() : at->Byte;
}

}  // namespace spectrino
