#include "host/PanBackend.h"

#include "state/Val.h"

namespace spectrino {
namespace {

constexpr int kTransmit = 2;

}  // namespace

PanValues PanBackend::Read(CatControl control, bool /*fixedCentre*/) const {
  return ReadPan(store_, control);
}

void PanBackend::Send(Vfo vfo, double freqMHz) {
  SetKetrelFrequency(freqMHz, vfo == Vfo::A ? 1 : kTransmit);
}

// The value is a command: asked for twice, it is written twice.
void PanBackend::SetKetrelFrequency(double freqMHz, int which) {
  store_.SendSetting("Ketrel", kPanSection, which == kTransmit ? "TXFreq" : "RXFreq", NumberText(freqMHz));
}

}  // namespace spectrino
