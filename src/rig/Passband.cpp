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

Passband PassbandOf(int radioMode, double bandwidthHz, double shiftHz) {
  const double width = bandwidthHz > 0 ? bandwidthHz : UsualBandwidthHz(radioMode);
  switch (radioMode) {
    case mode::kCw:
    case mode::kCwReverse:
    case mode::kAm:
    case mode::kFm:
      return {shiftHz - width / 2, shiftHz + width / 2};
    default: {
      const double centre = shiftHz != 0 ? shiftHz : width / 2;
      const bool below = radioMode == mode::kLsb || radioMode == mode::kDataReverse;
      return below ? Passband{-centre - width / 2, -centre + width / 2}
                   : Passband{centre - width / 2, centre + width / 2};
    }
  }
}

}  // namespace

Passband MainPassband(const RadioState& radio) {
  return PassbandOf(radio.RadioMode, radio.MainBandwidthHz, radio.MainShiftHz);
}

Passband SubPassband(const RadioState& radio) {
  return PassbandOf(radio.SubRadioMode, radio.SubBandwidthHz, radio.SubShiftHz);
}

}  // namespace spectrino
