#include "host/PanBackend.h"

#include "state/Val.h"

namespace spectrino {
namespace {

constexpr int kTransmit = 2;

}  // namespace

bool PanBackend::Open() {
  control_ = settings_.Control;
  pan_ = {};
  main_.Forget();
  sub_.Forget();
  read_.Reset();
  return true;
}

void PanBackend::Refresh(RadioState& radio) {
  const auto now = clock_.Now();
  const bool fresh = read_.Take(now);
  const double modeBefore = pan_.Mode;
  if (fresh) pan_ = ReadPan(store_, control_);
  radio.MainFreqMHz = main_.Shown(pan_.MainFreqMHz, now);
  // A mode button sets the mode here alone: it holds until the program tells another one.
  if (pan_.Mode != modeBefore) radio.RadioMode = RoundToInt16(pan_.Mode);
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

void PanBackend::SetFrequency(Vfo vfo, double freqMHz, Aim /*aim*/) {
  const bool main = vfo == Vfo::A;
  if (main)
    main_.Ask(freqMHz, clock_.Now());
  else
    sub_.Ask(freqMHz, clock_.Now());
  SetKetrelFrequency(freqMHz, main ? 1 : kTransmit);
}

// The value is a command: asked for twice, it is written twice.
void PanBackend::SetKetrelFrequency(double freqMHz, int which) {
  store_.SendSetting("Ketrel", kPanSection, which == kTransmit ? "TXFreq" : "RXFreq", NumberText(freqMHz));
}

}  // namespace spectrino
