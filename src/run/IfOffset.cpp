#include "run/IfOffset.h"

namespace spectrino {
namespace {

// Index into "Offset"n and, but for FSK, "Center"n. An unknown mode counts as USB.
std::size_t OffsetIndex(int radioMode) {
  switch (radioMode) {
    case mode::kCw:
    case mode::kCwReverse:
      return 0;
    case mode::kLsb:
      return 2;
    case mode::kAm:
    case mode::kFm:
      return 3;
    case mode::kData:
    case mode::kDataReverse:
      return 4;
    default:
      return 1;
  }
}

std::size_t CentreIndex(int radioMode) {
  const std::size_t index = OffsetIndex(radioMode);
  return index == 4 ? 2 : index;
}

}  // namespace

double IfOffsetKHz(CatControl control, const RadioState& radio, const PanSettings& settings,
                   double linkOffsetKHz) {
  switch (RowOf(control).Offset) {
    case OffsetRule::Mode:
      return settings.OffsetKHz[OffsetIndex(radio.RadioMode)];
    case OffsetRule::Global:
      return settings.GlobalOffsetKHz + linkOffsetKHz;
    case OffsetRule::FixedCentre:
      if (radio.MainFreqMHz == 0) return 0;
      return radio.MainFreqMHz * 1000 - settings.CenterKHz[CentreIndex(radio.RadioMode)];
    case OffsetRule::None:
      return 0;
  }
  return 0;
}

}  // namespace spectrino
