#include "host/BridgeBackend.h"

#include <cmath>

#include "state/Val.h"

namespace spectrino {
namespace {

constexpr int kVfoB = 2;

/// Index into the wheel's steps; the codes 10 and 11 are synchronous kinds of AM.
std::size_t StepIndex(int radioMode) {
  switch (radioMode) {
    case mode::kCw:
    case mode::kCwReverse:
      return 0;
    case mode::kData:
    case mode::kDataReverse:
      return 3;
    case mode::kFm:
    case mode::kAm:
    case 10:
    case 11:
      return 2;
    default:
      return 1;
  }
}

double RoundedMHz(double freqMHz, int stepHz) {
  return stepHz > 0 ? std::nearbyint(freqMHz * 1e6 / stepHz) * stepHz / 1e6 : freqMHz;
}

}  // namespace

bool BridgeBackend::Open() {
  control_ = settings_.Control;
  pan_ = {};
  main_.Forget();
  sub_.Forget();
  read_.Reset();
  return true;
}

PanValues BridgeBackend::Read() const {
  PanValues pan = ReadPan(store_, control_);
  if (RowOf(control_).Offset == OffsetRule::FixedCentre) return pan;
  const auto value = [this](BridgeItem item) { return Val(link_.Text(item)); };
  pan.MainFreqMHz = value(BridgeItem::VfoAHz) / 1e6;
  pan.SubFreqMHz = value(BridgeItem::VfoBHz) / 1e6;
  pan.OffsetHz = value(BridgeItem::Offset);
  pan.IfCentreHz = value(BridgeItem::Shift);
  pan.WidthHz = value(BridgeItem::Bandwidth);
  pan.SubWidthHz = value(BridgeItem::Bandwidth2);
  return pan;
}

void BridgeBackend::Refresh(RadioState& radio) {
  const auto now = clock_.Now();
  if (read_.Take(now)) pan_ = Read();
  radio.MainFreqMHz = main_.Shown(pan_.MainFreqMHz, now);
  radio.RadioMode = RoundToInt16(pan_.Mode);
  if (RowOf(control_).Offset == OffsetRule::FixedCentre) {
    radio.SplitOn = 0;
    return;
  }
  radio.SubFreqMHz = sub_.Shown(pan_.SubFreqMHz, now);
  radio.SubRadioMode = RoundToInt16(pan_.SubMode);
  radio.SplitOn = RoundToInt16(pan_.Split);
  ClearEqualSplit(radio);
  TellFilters(pan_, radio);
}

void BridgeBackend::SetFrequency(Vfo vfo, double freqMHz, Aim aim) {
  const bool main = vfo == Vfo::A;
  const int radioMode = RoundToInt16(main ? pan_.Mode : pan_.SubMode);
  if (aim == Aim::Signal) freqMHz = CorrectedForTones(pan_, radioMode, freqMHz);
  freqMHz = RoundedMHz(freqMHz, settings_.StepHz[StepIndex(radioMode)]);
  if (main)
    main_.Ask(freqMHz, clock_.Now());
  else
    sub_.Ask(freqMHz, clock_.Now());
  link_.BridgeSetFrequency(freqMHz, main ? 1 : kVfoB);
}

}  // namespace spectrino
