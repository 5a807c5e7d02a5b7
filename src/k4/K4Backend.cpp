#include "k4/K4Backend.h"

#include <algorithm>
#include <cstdio>

#include "k4/K4Filters.h"
#include "k4/K4Span.h"

namespace spectrino {
namespace {

constexpr double kSMeterZeroDb = 127;  // six units an S unit: 54 is S9
constexpr int kBandButtonsBegin = 1;
constexpr int kBandButtonsEnd = 12;

std::string Digits(int value, int width) {
  char text[16];
  std::snprintf(text, sizeof text, "%0*d", width, value);
  return text;
}

std::string_view SuffixOf(Vfo receiver) {
  return receiver == Vfo::B ? "$" : "";
}

// "DT": 0 data A, 1 AFSK A, 2 FSK D, 3 PSK D
bool IsTeletype(int dataMode) {
  return dataMode == 1 || dataMode == 2;
}

}  // namespace

void TellSignal(const K4State& state, RadioState& radio) {
  radio.Transmitting = state.Transmitting == 1;
  radio.SMeterTold = true;
  radio.SMeterDbm = state.SMeterMain - kSMeterZeroDb;
}

void TellRadioState(const K4State& state, RadioState& radio) {
  radio.MainFreqMHz = state.MainFreqMHz;
  radio.SubFreqMHz = state.SubFreqMHz;
  radio.RadioMode = state.RadioMode;
  radio.SubRadioMode = state.SubRadioMode;
  radio.Teletype = IsTeletype(state.DataModeMain);
  radio.SubTeletype = IsTeletype(state.DataModeSub);
  radio.SplitOn = state.SplitOn;
  radio.MainBandwidthHz = state.FilterBwMainHz;
  radio.SubBandwidthHz = state.FilterBwSubHz;
  radio.MainShiftHz = ShiftFromDialHz(state.RadioMode, state.IfShiftMainHz, state.CwPitchHz);
  radio.SubShiftHz = ShiftFromDialHz(state.SubRadioMode, state.IfShiftSubHz, state.CwPitchHz);
  const auto notch = [&state](int on, int radioMode, int notchHz) {
    return on == 1 ? std::optional<double>(NotchFromDialHz(radioMode, notchHz, state.CwPitchHz))
                   : std::nullopt;
  };
  radio.MainNotchHz = notch(state.NotchManualMain, state.RadioMode, state.NotchPitchMain);
  radio.SubNotchHz = notch(state.NotchManualSub, state.SubRadioMode, state.NotchPitchSub);
  if (state.CwPitchHz != 0) radio.PitchHz = state.CwPitchHz;
  TellSignal(state, radio);
}

void K4Backend::Refresh(RadioState& radio) {
  dial_.Pump();
  TellRadioState(state_, radio);
}

void K4Backend::SetFrequency(Vfo vfo, double freqMHz, Aim /*aim*/) {
  dial_.Set(freqMHz, vfo == Vfo::A ? 0 : 1);
}

// "BN" | "$" for the sub receiver | band number, two digits: 00 is 160 m
void K4Backend::SelectBand(int button) {
  RememberBand();
  if (button < kBandButtonsBegin || button >= kBandButtonsEnd) return;
  sender_.SendK4("BN" + state_.RxSuffix + Digits(button - kBandButtonsBegin, 2));
}

void K4Backend::RememberBand() {
  SaveBandMemory(store_, memory_, BandMemoryRadio::K4, {state_.MainFreqMHz, state_.RadioMode, 0});
}

bool K4Backend::SelectMode(const ModeRequest& request) {
  commands_.cmdMode_Click(request.Button);
  return true;
}

bool K4Backend::SetMode(Vfo receiver, const ExactMode& exact) {
  const std::string suffix(SuffixOf(receiver));
  sender_.SendK4("MD" + suffix + std::to_string(exact.RadioMode));
  if (exact.RadioMode == mode::kData || exact.RadioMode == mode::kDataReverse)
    sender_.SendK4("DT" + suffix + (exact.Teletype ? "2" : "0"));
  sender_.SendK4("MD" + suffix);
  sender_.SendK4("DT" + suffix);
  return true;
}

bool K4Backend::SetSplit(bool on) {
  sender_.SendK4(on ? "FT1" : "FT0");
  sender_.SendK4("FT");
  return true;
}

bool K4Backend::Transmit(bool on) {
  sender_.SendK4(on ? "TX" : "RX");
  sender_.SendK4("TQ");
  return true;
}

int K4Backend::StepOn(SteppedHz& own, int toldHz, int deltaHz) {
  return static_cast<int>(own.Step(toldHz, deltaHz, 0, clock_.Now()));
}

FilterReach K4Backend::FilterReachOf(Vfo receiver) const {
  const bool sub = receiver == Vfo::B;
  const int radioMode = sub ? state_.SubRadioMode : state_.RadioMode;
  return {.Width = (sub ? state_.FilterBwSubHz : state_.FilterBwMainHz) > 0,
          .Shift = (sub ? state_.IfShiftSubHz : state_.IfShiftMainHz) > 0 && radioMode != mode::kAm &&
                   radioMode != mode::kFm,
          .MiddleStays = true};
}

// "BW" | "$" | bandwidth in tens of hertz, no leading zeros; then the question
void K4Backend::ChangeBandwidth(Vfo receiver, int deltaHz) {
  const bool sub = receiver == Vfo::B;
  const int wantedHz =
      StepOn(ownBandwidth_[sub ? 1 : 0], sub ? state_.FilterBwSubHz : state_.FilterBwMainHz, deltaHz);
  const std::string suffix(SuffixOf(receiver));
  sender_.SendK4("BW" + suffix + Digits(wantedHz / 10, 1));
  sender_.SendK4("BW" + suffix);
}

// "IS" | "$" | audio frequency of the filter's middle in tens of hertz, four digits; then the question
void K4Backend::ShiftPassband(Vfo receiver, int deltaHz) {
  const bool sub = receiver == Vfo::B;
  int& shiftHz = sub ? state_.IfShiftSubHz : state_.IfShiftMainHz;
  shiftHz = StepOn(ownShift_[sub ? 1 : 0], shiftHz, deltaHz);
  const std::string suffix(SuffixOf(receiver));
  sender_.SendK4("IS" + suffix + Digits(shiftHz / 10, 4));
  sender_.SendK4("IS" + suffix);
}

void K4Backend::StepSpan(int direction) {
  StepK4Span(state_, sender_, direction > 0 ? +1 : -1);
}

}  // namespace spectrino
