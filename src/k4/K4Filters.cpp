#include "k4/K4Filters.h"

#include "rig/Passband.h"
#include "state/RadioState.h"

namespace spectrino {

double ShiftFromDialHz(int radioMode, int centreHz, int pitchHz) {
  if (!LiesAroundDial(radioMode)) return centreHz;
  const bool cw = radioMode == mode::kCw || radioMode == mode::kCwReverse;
  if (!cw || centreHz == 0 || pitchHz == 0) return 0;
  return radioMode == mode::kCw ? centreHz - pitchHz : pitchHz - centreHz;
}

double NotchFromDialHz(int radioMode, int notchHz, int pitchHz) {
  if (radioMode == mode::kCw) return notchHz - pitchHz;
  if (radioMode == mode::kCwReverse) return pitchHz - notchHz;
  return LiesBelowDial(radioMode) ? -notchHz : notchHz;
}

}  // namespace spectrino
