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

PanValues BridgeBackend::Read(CatControl control, bool fixedCentre) const {
  PanValues pan = ReadPan(store_, control);
  if (fixedCentre) return pan;
  const auto value = [this](BridgeItem item) { return Val(link_.Text(item)); };
  pan.MainFreqMHz = value(BridgeItem::VfoAHz) / 1e6;
  pan.SubFreqMHz = value(BridgeItem::VfoBHz) / 1e6;
  pan.OffsetHz = value(BridgeItem::Offset);
  pan.IfCentreHz = value(BridgeItem::Shift);
  pan.WidthHz = value(BridgeItem::Bandwidth);
  pan.SubWidthHz = value(BridgeItem::Bandwidth2);
  return pan;
}

double BridgeBackend::DialFor(const PanValues& pan, int radioMode, double freqMHz, Aim aim) const {
  if (aim == Aim::Signal) freqMHz = CorrectedForTones(pan, radioMode, freqMHz);
  return RoundedMHz(freqMHz, settings_.StepHz[StepIndex(radioMode)]);
}

void BridgeBackend::Send(Vfo vfo, double freqMHz) {
  link_.BridgeSetFrequency(freqMHz, vfo == Vfo::A ? 1 : kVfoB);
}

}  // namespace spectrino
