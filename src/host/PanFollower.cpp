#include "host/PanFollower.h"

#include "state/Val.h"

namespace spectrino {
namespace {

constexpr double kStepMHz = 0.1;

}  // namespace

bool PanFollower::Open() {
  control_ = settings_.Control;
  pan_ = {};
  shownMHz_ = 0;
  shownMode_ = mode::kUnknown;
  main_.Forget();
  sub_.Forget();
  read_.Reset();
  return true;
}

void PanFollower::Refresh(RadioState& radio) {
  const auto now = clock_.Now();
  const double modeBefore = pan_.Mode;
  if (read_.Take(now)) pan_ = Read(control_, FixedCentre());
  radio.MainFreqMHz = shownMHz_ = main_.Shown(pan_.MainFreqMHz, now);
  if (pan_.Mode != modeBefore) radio.RadioMode = RoundToInt16(pan_.Mode);
  shownMode_ = radio.RadioMode;
  if (FixedCentre()) {
    radio.SplitOn = 0;
    return;
  }
  radio.SubFreqMHz = sub_.Shown(pan_.SubFreqMHz, now);
  radio.SubRadioMode = RoundToInt16(pan_.SubMode);
  radio.SplitOn = RoundToInt16(pan_.Split);
  ClearEqualSplit(radio);
  TellFilters(pan_, radio);
}

void PanFollower::SetFrequency(Vfo vfo, double freqMHz, Aim aim) {
  const bool main = vfo == Vfo::A;
  freqMHz = DialFor(pan_, main ? shownMode_ : RoundToInt16(pan_.SubMode), freqMHz, aim);
  (main ? main_ : sub_).Ask(freqMHz, clock_.Now());
  Send(vfo, freqMHz);
}

void PanFollower::StepFrequency(int direction, double /*centreMHz*/) {
  if (shownMHz_ > 0) SetFrequency(Vfo::A, shownMHz_ + direction * kStepMHz, Aim::Dial);
}

}  // namespace spectrino
