#include "k4/K4Status.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <span>

#include "k4/K4Filters.h"
#include "rig/Passband.h"
#include "state/FrequencyText.h"
#include "state/RadioState.h"
#include "state/Val.h"

namespace spectrino {
namespace {

constexpr std::size_t kMiniPanPoints = 256;
constexpr double kSMeterFull = 114;  // S9+60 in the radio's units

struct ReceiverValues {
  int Agc, Preamp, Att, Apf, Nr, Nb, RxAnt, NotchAuto, NotchManual;
};

std::string AntennaText(int antenna) {
  switch (antenna) {
    case 0:
      return "0";
    case 1:
    case 3:
      return "IN";
    case 2:
      return "TX";
    case 4:
      return "RX";
    case 5:
    case 6:
    case 7:
      return "ATU" + std::to_string(antenna - 4);
    default:
      return {};
  }
}

std::string ReceiverLine(const ReceiverValues& values) {
  std::string line = "AGC-";
  if (values.Agc == 1) line += "S";
  if (values.Agc == 2) line += "F";
  if (values.Preamp != 0) line += " PRE" + std::to_string(values.Preamp);
  if (values.Att != 0) line += " ATT" + std::to_string(values.Att);
  if (values.Apf == 1) line += " APF";
  if (values.Nr != 0) line += " NR";
  if (values.Nb != 0) line += " NB";
  line += " ANT:" + AntennaText(values.RxAnt) + " ";
  const bool automatic = values.NotchAuto == 1;
  if (values.NotchManual == 1)
    line += automatic ? "NTC-A/M" : "NTC-M";
  else if (automatic)
    line += "NTC-A";
  return std::string(Trim(line));
}

std::string Signed(double value, const char* format) {
  char text[32];
  std::snprintf(text, sizeof text, format, value);
  return value > 0 ? std::string("+") + text : text;
}

std::string RitXitText(const K4State& state) {
  std::string text;
  if (state.RitOn == 1) text += "RIT";
  if (state.XitOn == 1) text += " XIT";
  if (text.empty()) return text;
  char number[24];
  std::snprintf(number, sizeof number, " %s%.2f", state.RitOffsetHz < 0 ? "-" : "+",
                std::abs(state.RitOffsetHz) / 1000.0);
  return text + number;
}

/// Whole kHz, halves away from zero.
std::string WholeKHz(double mhz) {
  char text[32];
  std::snprintf(text, sizeof text, "%.0fkHz", std::round(mhz * 1000));
  return text;
}

std::string TenthKHz(double mhz) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1fkHz", std::round(mhz * 1e4) / 10);
  return text;
}

/// The strongest of the points of each step: a mini-pan is never wider on the screen.
std::vector<float> Reduced(std::span<const std::int16_t> levels) {
  const std::size_t count = std::min(levels.size(), kMiniPanPoints);
  std::vector<float> reduced(count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto first = levels.begin() + static_cast<std::ptrdiff_t>(i * levels.size() / count);
    const auto end = levels.begin() + static_cast<std::ptrdiff_t>((i + 1) * levels.size() / count);
    reduced[i] = static_cast<float>(*std::max_element(first, end));
  }
  return reduced;
}

}  // namespace

void K4Status::Follow(K4State& state) {
  const int channels[] = {kPanMiniMain, kPanMiniSub};
  for (std::size_t i = 0; i < histories_.size(); ++i) {
    History& history = histories_[i];
    if (state.MinipanHistoryCount == 0) history.Lines.clear();
    const K4PanChannel& channel = state.K4PanChannels[static_cast<std::size_t>(channels[i])];
    if (channel.Serial == history.Serial) continue;
    history.Serial = channel.Serial;
    if (channel.Points < 2) continue;
    if (history.Lines.size() >= MiniPan::kHistory) history.Lines.pop_back();
    const std::span levels(channel.Levels);
    history.Lines.insert(history.Lines.begin(),
                         Reduced(levels.subspan(1, static_cast<std::size_t>(channel.Points))));
  }
  state.MinipanHistoryCount = std::min(state.MinipanHistoryCount + 1, MiniPan::kHistory);
}

MiniPan K4Status::Pan(const K4State& state, int channel) const {
  const bool sub = channel == kPanMiniSub;
  const K4PanChannel& line = state.K4PanChannels[static_cast<std::size_t>(channel)];
  MiniPan pan;
  pan.Label = sub ? "B" : "A";
  pan.History = histories_[sub ? 1 : 0].Lines;
  pan.Shown = line.SpanMHz > 0 && !pan.History.empty();
  pan.BottomLevel = std::floor(line.RefLevelDb);
  pan.TopLevel = pan.BottomLevel + static_cast<float>(std::max(20, state.PanScaleDb));
  pan.LowMHz = line.LowEdgeMHz;
  pan.HighMHz = line.HighEdgeMHz;
  const int radioMode = sub ? state.SubRadioMode : state.RadioMode;
  const double dialMHz = sub ? state.SubFreqMHz : state.MainFreqMHz;
  const Passband passband =
      PassbandOf(radioMode, sub ? state.FilterBwSubHz : state.FilterBwMainHz,
                 ShiftFromDialHz(radioMode, sub ? state.IfShiftSubHz : state.IfShiftMainHz, state.CwPitchHz));
  pan.PassbandLowMHz = dialMHz + passband.LowHz / 1e6;
  pan.PassbandHighMHz = dialMHz + passband.HighHz / 1e6;
  const bool notch = (sub ? state.NotchManualSub : state.NotchManualMain) == 1;
  const int notchHz = sub ? state.NotchPitchSub : state.NotchPitchMain;
  if (notch) pan.NotchMHz = dialMHz + NotchFromDialHz(radioMode, notchHz, state.CwPitchHz) / 1e6;
  pan.SMeterShare = std::clamp((sub ? state.SMeterSub : state.SMeterMain) / kSMeterFull, 0.0, 1.0);
  pan.ScaleLeft = " -" + TenthKHz(line.SpanMHz / 2);
  pan.ScaleRight = "+" + TenthKHz(line.SpanMHz / 2);
  return pan;
}

StatusArea K4Status::Area(const K4State& state, bool heard) const {
  StatusArea area;
  area.Shown = state.MinipanOn;
  if (!area.Shown) return area;
  const double halfMHz = state.K4PanChannels[kPanMain].SpanMHz / 2;
  area.ScaleLeft = "-" + WholeKHz(halfMHz);
  area.ScaleRight = "+" + WholeKHz(halfMHz);
  area.Main = Pan(state, kPanMiniMain);
  area.Sub = Pan(state, kPanMiniSub);
  if (!heard) {
    area.MainFreq = area.SubFreq = FrequencyText(0);
    for (MiniPan* pan : {&area.Main, &area.Sub})
      pan->PassbandLowMHz = pan->PassbandHighMHz = pan->NotchMHz = pan->SMeterShare = 0;
    return area;
  }
  area.MainLine = ReceiverLine({state.AgcMain, state.PreampMain, state.AttMain, state.ApfMain, state.NrMain,
                                state.NbMain, state.RxAntMain, state.NotchAutoMain, state.NotchManualMain});
  area.SubLine = ReceiverLine({state.AgcSub, state.PreampSub, state.AttSub, state.ApfSub, state.NrSub,
                               state.NbSub, state.RxAntSub, state.NotchAutoSub, state.NotchManualSub});
  area.MainFreq = FrequencyText(state.MainFreqMHz);
  area.SubFreq = FrequencyText(state.SubFreqMHz);
  area.MainFilter = "FL" + std::to_string(state.FilterNo[kMainRx]);
  area.SubFilter = "FL" + std::to_string(state.FilterNo[kSubRx]);
  area.SplitOn = state.SplitOn == 1;
  area.Split = area.SplitOn ? " SPLIT ON" : "SPLIT OFF";
  area.SplitOffset = Signed((state.SubFreqMHz - state.MainFreqMHz) * 1000, "%.2f") + "k";
  area.Transmitting = state.Transmitting == 1;
  if (!area.Transmitting && state.RxSuffix != "$") {
    if (state.SubRxOn == 1) area.Receivers += "SUB";
    if (state.DiversityOn == 1) area.Receivers += area.Receivers.empty() ? "DIV   " : " DIV   ";
  }
  area.Bset = state.BsetOn != 0;
  area.Test = state.TestMode != 0;
  area.RitXit = RitXitText(state);
  area.VoxOn = state.VoxOn == 1;
  area.Antenna = " TX:ANT" + std::to_string(state.Antenna) + (state.AtuMode == 2 ? " ATU" : "");
  if (state.NotchManualMain == 0) {
    area.FilterText = std::to_string(state.FilterBwMainHz) + "/" + std::to_string(state.IfShiftMainHz);
    if (state.FilterBwMainHz < 201 && state.IirOn == 1) area.FilterText += " IIR";
  }
  // Only of what the radio told: before its first mini-pan, and before its mode, nobody knows.
  const K4PanChannel& mini = state.K4PanChannels[kPanMiniMain];
  const bool noMiniPan = mini.Serial != 0 && mini.SpanMHz == 0 && state.RadioMode != mode::kUnknown;
  area.NeedsDualPanOff = (state.SubRxOn == 0 && state.PanHdpm >= 1) || noMiniPan;
  return area;
}

}  // namespace spectrino
