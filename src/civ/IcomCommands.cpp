#include "civ/IcomCommands.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>

#include "civ/HexText.h"

namespace spectrino {
namespace {

// From a read request on the line to the reply in the port.
constexpr std::chrono::milliseconds kReplyWait{25};

struct ModeByte {
  std::string_view Normal, Reverse;
};
constexpr std::array<ModeByte, 9> kModeBytes{{{"00", "00"},
                                              {"01", "01"},
                                              {"03", "07"},
                                              {"02", "02"},
                                              {"05", "05"},
                                              {"04", "08"},
                                              {"11", "11"},
                                              {"06", "06"},
                                              {"17", "17"}}};

constexpr std::array<double, 10> kHalfSpansMHz{0.0025, 0.005, 0.01, 0.025, 0.05, 0.1, 0.25, 0.5, 1, 2.5};

struct AttenuatorStep {
  std::string_view RadioId, Decibels;
};
constexpr std::array<AttenuatorStep, 7> kAttenuators{
    {{"96", "10"}, {"A2", "10"}, {"94", "20"}, {"A4", "20"}, {"B2", "12"}, {"98", "12"}, {"6A", "12"}}};

/// Where the on/off byte of chkFunc goes; an empty command for what the radio does not have.
struct Function {
  std::string_view Command, SubCommand;
};
constexpr std::array<Function, 4> kFunctions{{{"16", "02"}, {"16", "22"}, {"16", "40"}, {"16", "41"}}};

Function IpPlus(std::string_view radioId) {
  if (radioId == "94" || radioId == "96") return {"1A", "07"};
  if (radioId == "A4" || radioId == "6A") return {};
  return {"16", "65"};
}

std::string_view OnOff(bool on) {
  return on ? "01" : "00";
}

/// number: 0..9.
std::string DigitByte(int number) {
  return {'0', static_cast<char>('0' + number)};
}

/// A level as two BCD bytes: 128 is "0128". level: 0..9999.
std::string LevelText(int level) {
  std::string text(4, '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, level /= 10) {
    *digit = static_cast<char>('0' + level % 10);
  }
  return text;
}

template <typename Table>
bool InTable(const Table& table, int index) {
  return index >= 0 && index < static_cast<int>(std::size(table));
}

}  // namespace

void IcomCommands::SetIcomFrequency(double freqMHz) {
  // Five BCD bytes hold no more.
  if (!(freqMHz > 0) || freqMHz >= 1e4) return;
  sender_.SendFrequency(EncodeFreq(freqMHz));
  sender_.RequestIcomStatus();
}

void IcomCommands::SetIcomMode(int modeIndex, bool reverse, int filterNo) {
  if (!InTable(kModeBytes, modeIndex)) return;
  const ModeByte& mode = kModeBytes[static_cast<std::size_t>(modeIndex)];
  const std::string filter = filterNo >= 1 && filterNo <= 9 ? DigitByte(filterNo) : "";
  sender_.SendCiv("06", reverse ? mode.Reverse : mode.Normal, filter);
  sender_.RequestIcomStatus();
}

int IcomCommands::SetIcomAfLevel(int level) {
  const int sent = std::clamp(level, 0, 255);
  sender_.SendCiv("14", "01", LevelText(sent));
  return sent;
}

int IcomCommands::SetIcomSquelch(int level) {
  const int sent = std::clamp(level, 0, 255);
  sender_.SendCiv("14", "03", LevelText(sent));
  return sent;
}

void IcomCommands::SetIcomRefLevel(double dB) {
  SendRefLevel(dB);
  ReadRefLevel();
}

// 27 19 00 | tens and units, tenths and hundredths of a dB (2 BCD) | sign: 00 above 0 dB, 01 otherwise
void IcomCommands::SendRefLevel(double dB) {
  const double limited = std::clamp(dB, -20.0, 20.0);
  const auto hundredths = static_cast<int>(std::lround(std::abs(limited) * 100));
  sender_.SendCiv("27", "1900", LevelText(hundredths) + (limited > 0 ? "00" : "01"));
}

void IcomCommands::SetIcomSpan(int entry) {
  if (!InTable(kHalfSpansMHz, entry)) return;
  sender_.SendCiv("27", "1500", EncodeFreq(kHalfSpansMHz[static_cast<std::size_t>(entry)]));
}

void IcomCommands::chkFunc_Click(int index, bool checked) {
  constexpr int kAttenuator = 4;
  constexpr int kIpPlus = 5;
  if (index == kAttenuator) {
    const auto* step = std::ranges::find(kAttenuators, state_.RadioId, &AttenuatorStep::RadioId);
    if (step != kAttenuators.end()) sender_.SendCiv("11", "", checked ? step->Decibels : "00");
    return;
  }
  Function function;
  if (index == kIpPlus) {
    function = IpPlus(state_.RadioId);
  } else if (InTable(kFunctions, index)) {
    function = kFunctions[static_cast<std::size_t>(index)];
  }
  if (!function.Command.empty()) sender_.SendCiv(function.Command, function.SubCommand, OnOff(checked));
}

void IcomCommands::AskPanelState(int index) {
  const Function ipPlus = IpPlus(state_.RadioId);
  const std::array<Function, kPanelStates> asked{{kFunctions[0],
                                                  kFunctions[1],
                                                  kFunctions[2],
                                                  kFunctions[3],
                                                  {"11", ""},
                                                  ipPlus,
                                                  {"16", "12"},
                                                  {"14", "01"},
                                                  {"14", "03"},
                                                  {"27", "1900"},
                                                  {"27", "1A00"},
                                                  {"1A", "03"}}};
  const Function& one = asked[static_cast<std::size_t>(index % kPanelStates)];
  if (!one.Command.empty()) sender_.SendCiv(one.Command, one.SubCommand, "?");
}

// 1A 03 | number of the width, BCD; then the question
void IcomCommands::SetIcomFilterNumber(int number) {
  if (number < 0 || number > 49) return;
  sender_.SendCiv("1A", "03", std::to_string(number / 10) + std::to_string(number % 10));
  sender_.SendCiv("1A", "03", "?");
}

void IcomCommands::chkMEM_Click(bool checked) {
  sender_.SendCiv(checked ? "08" : "07", "", "");
}

void IcomCommands::cmdAGC_Click() {
  // 1 fast, 2 middle, 3 slow; anything below is off or not known and leads to the middle one.
  const int now = std::max(agc_.Or(state_.AgcSetting, clock_.Now()), 1);
  state_.AgcSetting = now < 3 ? now + 1 : 1;
  agc_.Ask(state_.AgcSetting, clock_.Now());
  sender_.SendCiv("16", "12", DigitByte(state_.AgcSetting));
}

void IcomCommands::cmdFil_Click(int index) {
  if (index < 0 || index > 2) return;
  const bool waiting = awaitedFilter_.has_value();
  awaitedFilter_ = index + 1;
  if (waiting) return;
  sender_.SendCiv("03", "", "?");
  pump_.Wait(kReplyWait);
  sender_.ReceiveCiv();
  const int filterNo = *std::exchange(awaitedFilter_, std::nullopt);
  // Without a mode the filter's number would be taken for one.
  if (!state_.IcomModeText.empty()) sender_.SendCiv("06", state_.IcomModeText, DigitByte(filterNo));
  sender_.SendCiv("04", "", "?");
}

void IcomCommands::cmdSpeed_Click() {
  if (!state_.IcomActive) return;
  // 0 fast, 1 middle, 2 slow.
  const int next = speed_.Or(state_.ScopeSpeed, clock_.Now()) + 1;
  state_.ScopeSpeed = next < 0 || next > 2 ? 0 : next;
  speed_.Ask(state_.ScopeSpeed, clock_.Now());
  sender_.SendCiv("27", "1A00", DigitByte(state_.ScopeSpeed));
}

void IcomCommands::cmdUpDn_Click(int index, double centreMHz) {
  if (!state_.IcomActive || index < 0 || index > 3) return;
  // A fixed scope would not follow the frequency.
  if (state_.ScopeFixedMode != 0) sender_.SendCiv("27", "1400", "00");
  state_.ScopeFixedMode = 0;
  const double step = state_.ScopeSpanMHz / 3;
  SetIcomFrequency(index % 2 == 0 ? centreMHz + step : centreMHz - step);
  sender_.SendCiv("03", "", "?");
  sender_.SendCiv("27", "14", "?");
}

void IcomCommands::cboSpan_Click(int entry) {
  if (state_.CivParserBusy) return;
  // A radio that has no such span keeps its own: its next line puts the list right.
  state_.ScopeShownSpan = 0;
  SetIcomSpan(entry);
}

void IcomCommands::sldVol_Change(int value) {
  if (!state_.CivParserBusy) state_.AfLevel = SetIcomAfLevel(value);
}

void IcomCommands::sldSQL_Change(int value) {
  if (!state_.CivParserBusy) state_.SqlLevel = SetIcomSquelch(value);
}

void IcomCommands::sldRFLevel_Change(int value) {
  if (state_.CivParserBusy) return;
  state_.ScopeRefLevel = static_cast<float>(value) / 2;
  SendRefLevel(state_.ScopeRefLevel);
}

void IcomCommands::ReadAfLevel() {
  sender_.SendCiv("14", "01", "?");
}

void IcomCommands::ReadSquelch() {
  sender_.SendCiv("14", "03", "?");
}

void IcomCommands::ReadRefLevel() {
  sender_.SendCiv("27", "1900", "?");
}

void IcomCommands::chkFIX_Click(bool checked) {
  if (!state_.CivParserBusy) sender_.SendCiv("27", "1400", OnOff(checked));
}

}  // namespace spectrino
