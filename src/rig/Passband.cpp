#include "rig/Passband.h"

namespace spectrino {
namespace {

double UsualBandwidthHz(int radioMode) {
  switch (radioMode) {
    case mode::kCw:
    case mode::kCwReverse:
      return 500;
    case mode::kAm:
      return 6000;
    case mode::kFm:
      return 12000;
    default:
      return 2700;
  }
}

}  // namespace

bool LiesAroundDial(int radioMode) {
  return radioMode == mode::kCw || radioMode == mode::kCwReverse || radioMode == mode::kAm ||
         radioMode == mode::kFm;
}

bool LiesBelowDial(int radioMode) {
  return radioMode == mode::kLsb || radioMode == mode::kDataReverse;
}

Passband PassbandOf(int radioMode, double bandwidthHz, double shiftHz) {
  const double width = bandwidthHz > 0 ? bandwidthHz : UsualBandwidthHz(radioMode);
  double centre = shiftHz;
  if (!LiesAroundDial(radioMode)) {
    if (centre == 0) centre = width / 2;
    if (LiesBelowDial(radioMode)) centre = -centre;
  }
  return {centre - width / 2, centre + width / 2};
}

Passband MainPassband(const RadioState& radio) {
  return PassbandOf(radio.RadioMode, radio.MainBandwidthHz, radio.MainShiftHz);
}

Passband SubPassband(const RadioState& radio) {
  return PassbandOf(radio.SubRadioMode, radio.SubBandwidthHz, radio.SubShiftHz);
}

}  // namespace spectrino
