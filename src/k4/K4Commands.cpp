#include "k4/K4Commands.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iterator>

#include "k4/K4Span.h"
#include "settings/Keys.h"
#include "settings/SetupSection.h"
#include "state/RadioState.h"
#include "state/Val.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {

constexpr auto kPumpOnly = 0ms;

std::string Digits(int value, int width) {
  char text[16];
  std::snprintf(text, sizeof text, "%0*d", width, value);
  return text;
}

}  // namespace

void K4Commands::Click(std::string_view control) {
  struct Button {
    std::string_view Control;
    void (*Press)(K4Commands& panel);
  };
  static constexpr Button kButtons[] = {
      {"cmdAGCK4", [](K4Commands& panel) { panel.Step("GT"); }},
      {"cmdNB", [](K4Commands& panel) { panel.Step("NB"); }},
      {"cmdNR", [](K4Commands& panel) { panel.Step("NR"); }},
      {"cmdAPF", [](K4Commands& panel) { panel.StepUnlessParsing("AP"); }},
      {"cmdNotch0", [](K4Commands& panel) { panel.StepUnlessParsing("NM"); }},
      {"cmdNotch1", [](K4Commands& panel) { panel.StepUnlessParsing("NA"); }},
      {"cmdANT", [](K4Commands& panel) { panel.cmdANT_Click(); }},
      {"cmdPRE", [](K4Commands& panel) { panel.cmdPRE_Click(); }},
      {"cmdATT", [](K4Commands& panel) { panel.cmdATT_Click(); }},
      {"cmdAREF", [](K4Commands& panel) { panel.sender_.SendK4("#AR1;"); }},
      {"cmdAsB", [](K4Commands& panel) { panel.sender_.SendK4("AB2;"); }},
      {"Command4", [](K4Commands& panel) { panel.sender_.SendK4("AB0;"); }},
      {"cmdXFIL0", [](K4Commands& panel) { panel.cmdXFIL_Click(kMainRx); }},
      {"cmdXFIL1", [](K4Commands& panel) { panel.cmdXFIL_Click(kSubRx); }},
      {"cmdSpan0", [](K4Commands& panel) { StepK4Span(panel.state_, panel.sender_, -1); }},
      {"cmdSpan1", [](K4Commands& panel) { StepK4Span(panel.state_, panel.sender_, +1); }},
      {"cmdAutoSpan", [](K4Commands& panel) { SendAutoK4Span(panel.state_, panel.sender_, panel.store_); }},
      {"cmdQuick", [](K4Commands& panel) { panel.cmdQuick_Click(); }}};
  const auto* button = std::ranges::find(kButtons, control, &Button::Control);
  if (button != std::end(kButtons)) button->Press(*this);
}

void K4Commands::Step(const std::string& mnemonic) {
  sender_.SendK4(mnemonic + state_.RxSuffix + "/");
  sender_.SendK4(mnemonic + ";");
  sender_.SendK4(mnemonic + "$;");
}

void K4Commands::StepUnlessParsing(const std::string& mnemonic) {
  if (!state_.K4ParserBusy) Step(mnemonic);
}

void K4Commands::cmdANT_Click() {
  sender_.SendK4("AN/");
  sender_.SendK4("AN;");
}

void K4Commands::cmdPRE_Click() {
  const int next = (Sub() ? state_.PreampSub : state_.PreampMain) + 1;
  sender_.SendK4("PA" + state_.RxSuffix + std::to_string(next > 2 ? 0 : next));
  sender_.SendK4("PA$;");
  sender_.SendK4("PA;");
}

void K4Commands::cmdATT_Click() {
  const int next = (Sub() ? state_.AttSub : state_.AttMain) + 3;
  sender_.SendK4("RA" + state_.RxSuffix + std::to_string(next > 21 ? 0 : next));
  sender_.SendK4("RA;");
  sender_.SendK4("RA$;");
}

void K4Commands::cmdXFIL_Click(int receiver) {
  int& filter = state_.FilterNo[receiver == kMainRx ? kMainRx : kSubRx];
  filter = filter + 1 > 3 ? 1 : filter + 1;
  sender_.SendK4((receiver == kMainRx ? "FP" : "FP$") + std::to_string(filter));
  view_.SetFilterCaption(receiver, "FIL" + std::to_string(filter));
  for (const char* query : {"FP;", "FP$;", "IS;", "CW;"}) sender_.SendK4(query);
}

void K4Commands::chkSplt_Click(bool on) {
  if (state_.K4ParserBusy) return;
  sender_.SendK4(on ? "FT1" : "FT0");
  sender_.SendK4("FT;");
}

// A state that the radio told, sent back to it, would be told again: with two of them under way both would go
// round without end.
void K4Commands::chkBSET_Click(bool on) {
  if (state_.K4ParserBusy) return;
  sender_.SendK4(on ? "BS1" : "BS0");
  state_.RxSuffix = on ? "$" : "";
  sender_.SendK4("BS;");
}

void K4Commands::chkSub_Click(bool on) {
  if (state_.K4ParserBusy) return;
  sender_.SendK4(on ? "SB1" : "SB0");
  sender_.SendK4("SB");
  pump_.Wait(50ms);
  sender_.SendK4("DV");
  SelectMonitor(view_.SubTicked() ? 1 : 0);
}

void K4Commands::chkDIV_Click(bool on) {
  if (state_.K4ParserBusy) return;
  sender_.SendK4(on ? "DV1" : "DV0");
  sender_.SendK4("DV;");
  sender_.SendK4("SB;");
  pump_.Wait(kPumpOnly);
  SelectMonitor(view_.SubTicked() ? 1 : 0);
}

void K4Commands::chkIIR_Click(bool on) {
  if (state_.K4ParserBusy) return;
  sender_.SendK4(on ? "ME0102.1" : "ME0102.0");
  sender_.SendK4("ME0102;");
}

void K4Commands::chkFXT_Click(bool on) {
  if (state_.K4UpdatingFromRadio) return;
  sender_.SendK4(on ? "#FXT1;" : "#FXT0;");
  state_.FxtOn = on ? 1 : 0;
}

void K4Commands::chkMinipan_Click(bool on) {
  if (!state_.K4Connected) return;
  state_.MinipanOn = on;
  sender_.SendPan("A1");
  sender_.SendPan("B0");
  sender_.SendPan(on ? "Y1" : "Y0");
  sender_.SendPan(on && state_.IsK4D ? "Z1" : "Z0");
  if (on) state_.MinipanHistoryCount = 0;
  SelectMonitor(view_.SubTicked() ? 1 : 0);
}

void K4Commands::cmdQuick_Click() {
  if (!state_.K4Connected || state_.RadioMode == mode::kFm) return;
  const bool ssb = state_.RadioMode == mode::kLsb || state_.RadioMode == mode::kUsb;
  const bool narrow = state_.RadioMode == mode::kCw || state_.RadioMode == mode::kAm ||
                      state_.RadioMode == mode::kData || state_.RadioMode == mode::kCwReverse ||
                      state_.RadioMode == mode::kDataReverse;
  if (!ssb && !narrow) return;
  const double offsetKHz = SetupSection(store_).Read(ssb ? key::kQSplit1 : key::kQSplit0);
  sender_.SendK4("MD$" + std::to_string(state_.RadioMode) + ";");
  pump_.Wait(200ms);
  dial_.Set(state_.MainFreqMHz + offsetKHz / 1000, 1);
  for (int i = 0; i < 2; ++i) {
    pump_.Wait(250ms);
    sender_.SendK4("FT1;");
  }
}

void K4Commands::cmdMode_Click(int index) {
  constexpr int kCodes[] = {mode::kLsb, mode::kUsb, mode::kCw,          mode::kCwReverse,
                            mode::kFm,  mode::kAm,  mode::kDataReverse, mode::kData};
  if (index < 0 || index >= static_cast<int>(std::size(kCodes))) return;
  sender_.SendK4("MD" + state_.RxSuffix + std::to_string(kCodes[index]) + ";");
  for (const char* query : {"MD;", "MD$;", "DT;", "DT$;"}) sender_.SendK4(query);
}

void K4Commands::sldVol_Change(int index, int value) {
  if (state_.K4ParserBusy) return;
  if (index == 2 && state_.AfBalanceMode == 1) {
    const int balance = std::clamp<int>(RoundToInt16((value - 128) / 128.0 * 50), -50, 50);
    sender_.SendK4(std::string("BL1") + (balance < 0 ? "-" : "+") + Digits(std::abs(balance), 2));
    return;
  }
  if (index == 2 && state_.AfBalanceMode != 0) return;
  sender_.SendK4((index == 1 ? "AG" : "AG$") + Digits(RoundToInt16(value / 255.0 * 60), 3));
}

void K4Commands::sldVol_Commit(int index) {
  if (state_.K4ParserBusy) return;
  if (index == 1)
    sender_.SendK4("AG;");
  else
    sender_.SendK4(state_.AfBalanceMode == 1 ? "BL;" : "AG$;");
}

void K4Commands::sldNotch_Change(int value) {
  const bool manual = (Sub() ? state_.NotchManualSub : state_.NotchManualMain) == 1;
  if (!manual || state_.K4ParserBusy) return;
  const int pitchHz = value * 10;
  sender_.SendK4("NM" + state_.RxSuffix + Digits(pitchHz, 4) + "1;");
  view_.SetNotchToolTip(std::to_string(pitchHz) + "Hz");
}

void K4Commands::sldNotch_Commit() {
  const bool manual = (Sub() ? state_.NotchManualSub : state_.NotchManualMain) == 1;
  if (manual && !state_.K4ParserBusy) sender_.SendK4("NM" + state_.RxSuffix + ";");
}

void K4Commands::SelectMonitor(int which) {
  if (!SetupSection(store_).Read(key::kMinipan) || !state_.IsK4D) return;
  if (which == 0 || which == 1) sender_.SendK4("#DPM0;");
  if (which == 0) sender_.SendK4("#HDPM0;");
  if (which == 1 && state_.K4MonitorKind == 1) sender_.SendK4("#HDPM1;");
  if (which == 1 && state_.K4MonitorKind == 0) sender_.SendK4("#DPM1;");
  pump_.Wait(200ms);
}

}  // namespace spectrino
