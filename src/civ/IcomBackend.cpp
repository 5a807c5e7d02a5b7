#include "civ/IcomBackend.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>

#include "bandplan/Bands.h"
#include "civ/IcomFilters.h"
#include "civ/IcomModels.h"
#include "state/Val.h"

namespace spectrino {

void IcomBackend::Refresh(RadioState& radio) {
  carrier_.Pump();
  radio.MainFreqMHz = state_.RadioFreqMHz;
  radio.SubFreqMHz = 0;
  radio.SplitOn = 0;
  radio.Transmitting = state_.Transmitting;
  radio.RadioMode = IcomModeCode(state_.RadioModeIndex);
  radio.Teletype = true;
  radio.MainBandwidthHz = IcomFilterHz(radio.RadioMode, state_.FilterNumber);
}

FilterReach IcomBackend::FilterReachOf(Vfo receiver) const {
  const int radioMode = IcomModeCode(state_.RadioModeIndex);
  return {.Width = receiver == Vfo::A && IcomFilterHz(radioMode, state_.FilterNumber) > 0};
}

void IcomBackend::ChangeBandwidth(Vfo receiver, int deltaHz) {
  if (!FilterReachOf(receiver).Width) return;
  const int radioMode = IcomModeCode(state_.RadioModeIndex);
  // What it tells is the answer to what was asked last, or somebody turned it there; until it answered it may
  // be older.
  const bool waits =
      commands_.WaitsForFilterNumber() && IcomFilterNumber(radioMode, askedHz_) == askedNumber_;
  const int before = waits ? askedNumber_ : state_.FilterNumber;
  if (before != askedNumber_) askedHz_ = IcomFilterHz(radioMode, before);
  askedHz_ = std::max(50.0, askedHz_ + deltaHz);
  askedNumber_ = IcomFilterNumber(radioMode, askedHz_);
  if (askedNumber_ == before) return;
  // Shown as it was asked for; the radio's answer to the question behind it corrects that.
  state_.FilterNumber = askedNumber_;
  commands_.SetIcomFilterNumber(askedNumber_);
}

void IcomBackend::SetFrequency(Vfo /*vfo*/, double freqMHz, Aim /*aim*/) {
  commands_.SetIcomFrequency(freqMHz);
}

void IcomBackend::SelectBand(int button) {
  if (!state_.IcomActive || button < 0 || button >= kBandButtonCount) return;
  const int band = BandRecordOfButton(button);
  if (IcomBandNumber(state_.RadioFreqMHz) == band) return;
  RememberBand();
  const BandRecord& record = memory_.Records[static_cast<std::size_t>(band)];
  commands_.SetIcomFrequency(record.FrequencyMHz);
  commands_.SetIcomMode(record.Mode, false, 0);
  CivSender& sender = carrier_.Sender();
  sender.SendCiv("27", "1400", "00");
  state_.ScopeFixedMode = 0;
  sender.RequestIcomStatus();
}

void IcomBackend::RememberBand() {
  SaveBandMemory(store_, memory_, BandMemoryRadio::Icom,
                 {state_.RadioFreqMHz, state_.RadioModeIndex, RoundToInt16(state_.ScopeRefLevel)});
}

// Operators write the bytes apart; taken as digits, blanks would shift all that follow.
void IcomBackend::SendMacro(std::string_view text) {
  std::string digits(text);
  std::erase_if(digits, [](unsigned char c) { return std::isspace(c) != 0; });
  carrier_.Sender().SendCiv(digits, {}, {});
}

bool IcomBackend::SelectMode(const ModeRequest& request) {
  commands_.SetIcomMode(request.Button, request.Reverse, 0);
  return true;
}

// Its mode RTTY is the only one that counts as DATA here.
bool IcomBackend::SetMode(Vfo receiver, const ExactMode& exact) {
  struct Row {
    ExactMode Exact;
    int Index;
    bool Reverse;
  };
  static constexpr std::array<Row, 8> rows{{{{mode::kLsb}, 0, false},
                                            {{mode::kUsb}, 1, false},
                                            {{mode::kCw}, 2, false},
                                            {{mode::kCwReverse}, 2, true},
                                            {{mode::kAm}, 3, false},
                                            {{mode::kFm}, 4, false},
                                            {{mode::kData, true}, 5, false},
                                            {{mode::kDataReverse, true}, 5, true}}};
  const auto* const row = std::ranges::find(rows, exact, &Row::Exact);
  if (receiver != Vfo::A || row == rows.end()) return false;
  commands_.SetIcomMode(row->Index, row->Reverse, 0);
  return true;
}

// 1C 00 | 01 transmit or 00 receive; then the question
bool IcomBackend::Transmit(bool on) {
  carrier_.Sender().SendCiv("1C", "00", on ? "01" : "00");
  carrier_.Sender().SendCiv("1C", "00", "?");
  return true;
}

void IcomBackend::StepFrequency(int direction, double centreMHz) {
  commands_.cmdUpDn_Click(direction > 0 ? 0 : 1, centreMHz);
}

}  // namespace spectrino
