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

Passband MainPassband(const RadioState& radio) {
  const double width = radio.MainBandwidthHz > 0 ? radio.MainBandwidthHz : UsualBandwidthHz(radio.RadioMode);
  switch (radio.RadioMode) {
    case mode::kCw:
    case mode::kCwReverse:
    case mode::kAm:
    case mode::kFm:
      return {radio.MainShiftHz - width / 2, radio.MainShiftHz + width / 2};
    default: {
      const double centre = radio.MainShiftHz != 0 ? radio.MainShiftHz : width / 2;
      const bool below = radio.RadioMode == mode::kLsb || radio.RadioMode == mode::kDataReverse;
      return below ? Passband{-centre - width / 2, -centre + width / 2}
                   : Passband{centre - width / 2, centre + width / 2};
    }
  }
}

}  // namespace spectrino
