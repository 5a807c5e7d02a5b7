#include "capture/IqSign.h"

namespace spectrino {

int ModeFlip(int radioMode, bool iqCw, bool iqUsb) {
  const bool flipUsb = iqCw && radioMode == mode::kUsb;
  const bool flipCw = iqUsb && (radioMode == mode::kCw || radioMode == mode::kCwReverse);
  return flipUsb || flipCw ? -1 : 1;
}

int BandFlip(int before, const RadioState& radio, CatControl control, const PanSettings& settings) {
  if (!UsesIfAdapter(control)) return before;
  const bool inRange =
      radio.MainFreqMHz >= settings.FlipFreqMHz && radio.MainFreqMHz <= settings.FlipFreq2MHz;
  return settings.Flip6 && !radio.OwnSpectrum && inRange ? -1 : 1;
}

}  // namespace spectrino
