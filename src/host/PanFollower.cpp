#include "host/PanFollower.h"

#include "state/Val.h"

namespace spectrino {
bool PanFollower::Open() {
  control_ = settings_.Control;
  pan_ = {};
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
  radio.MainFreqMHz = main_.Shown(pan_.MainFreqMHz, now);
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

}  // namespace spectrino
