#include "host/PanBackend.h"

#include "state/Val.h"

namespace spectrino {
namespace {

constexpr double kStepMHz = 0.1;
constexpr int kTransmit = 2;

}  // namespace

bool PanBackend::Open() {
  control_ = settings_.Control;
  pan_ = {};
  main_.reset();
  sub_.reset();
  read_.Reset();
  return true;
}

double PanBackend::Shown(MaybeWanted& wanted, double toldMHz) {
  if (wanted && (toldMHz != wanted->ToldMHz || clock_.Now() - wanted->Since > kConfirmTime)) wanted.reset();
  return wanted ? wanted->FreqMHz : toldMHz;
}

void PanBackend::Refresh(RadioState& radio) {
  const bool fresh = read_.Take(clock_.Now());
  const double modeBefore = pan_.Mode;
  if (fresh) pan_ = ReadPan(store_, control_);
  radio.MainFreqMHz = Shown(main_, pan_.MainFreqMHz);
  // A mode button sets the mode here alone: it holds until the program tells another one.
  if (pan_.Mode != modeBefore) radio.RadioMode = RoundToInt16(pan_.Mode);
  if (RowOf(control_).Offset == OffsetRule::FixedCentre) {
    radio.SplitOn = 0;
    return;
  }
  radio.SubFreqMHz = Shown(sub_, pan_.SubFreqMHz);
  radio.SubRadioMode = RoundToInt16(pan_.SubMode);
  radio.SplitOn = RoundToInt16(pan_.Split);
  ClearEqualSplit(radio);
  TellFilters(pan_, radio);
}

void PanBackend::SetFrequency(Vfo vfo, double freqMHz, Aim /*aim*/) {
  if (RowOf(control_).Way != CatWay::Ketrel) return;
  const bool main = vfo == Vfo::A;
  MaybeWanted& wanted = main ? main_ : sub_;
  wanted = Wanted{freqMHz, main ? pan_.MainFreqMHz : pan_.SubFreqMHz, clock_.Now()};
  SetKetrelFrequency(freqMHz, main ? 1 : kTransmit);
}

// The value is a command: asked for twice, it is written twice.
void PanBackend::SetKetrelFrequency(double freqMHz, int which) {
  store_.SendSetting("Ketrel", kPanSection, which == kTransmit ? "TXFreq" : "RXFreq", NumberText(freqMHz));
}

void PanBackend::StepFrequency(int direction, double /*centreMHz*/) {
  const double freqMHz = main_ ? main_->FreqMHz : pan_.MainFreqMHz;
  if (freqMHz > 0) SetFrequency(Vfo::A, freqMHz + direction * kStepMHz, Aim::Dial);
}

}  // namespace spectrino
