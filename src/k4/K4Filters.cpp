#include "k4/K4Filters.h"

#include "state/RadioState.h"

namespace spectrino {

double ShiftFromDialHz(int radioMode, int centreHz, int pitchHz) {
  switch (radioMode) {
    case mode::kCwReverse:
      return centreHz != 0 && pitchHz != 0 ? pitchHz - centreHz : 0;
    case mode::kCw:
      return centreHz != 0 && pitchHz != 0 ? centreHz - pitchHz : 0;
    case mode::kAm:
    case mode::kFm:
      return 0;
    default:
      return centreHz;
  }
}

double NotchFromDialHz(int radioMode, int notchHz, int pitchHz) {
  switch (radioMode) {
    case mode::kCw:
      return notchHz - pitchHz;
    case mode::kCwReverse:
      return pitchHz - notchHz;
    case mode::kLsb:
    case mode::kDataReverse:
      return -notchHz;
    default:
      return notchHz;
  }
}

}  // namespace spectrino
