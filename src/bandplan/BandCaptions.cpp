#include "bandplan/BandCaptions.h"

namespace spectrino {
namespace {

// Beyond the buttons that a layout names, the designed text stays.
constexpr BandButtonTexts kDesigned{{
    {"Gen", ""},
    {"160", "1.5 - 2 MHz"},
    {"80", "3.5 - 4 MHz"},
    {"40", "7 - 7.5 MHz"},
    {"30", "10 - 10.5 MHz"},
    {"20", "14 - 14.5 MHz"},
    {"17", "18 - 18.5 MHz"},
    {"15", "21 - 21.5 MHz"},
    {"12", "24.5 - 25 MHz"},
    {"10a", "28 - 29 MHz"},
    {"10b", "29 - 30 MHz"},
    {"6", "50 - 54 MHz"},
    {"VHF", "144 - 148 MHz"},
    {"UHF", "430 - 450 MHz"},
}};

constexpr BandButtonTexts kHostWhole{{
    {"Gen", ""},
    {"160", "1.5 - 2 MHz"},
    {"80m", "3.5 - 4 MHz"},
    {"40m", "7 - 7.5 MHz"},
    {"30m", "10 - 10.5 MHz"},
    {"20m", "14 - 14.5 MHz"},
    {"17m", "18 - 18.5 MHz"},
    {"15m", "21 - 21.5 MHz"},
    {"12m", "24.5 - 25 MHz"},
    {"10a", "28 - ... MHz"},
    {"10b", "... - 30 MHz"},
    {"6m", "50 - 54 MHz"},
    {"VHF", "144 - 148 MHz"},
    {"UHF", "430 - 450 MHz"},
}};

constexpr BandButtonTexts kHostSplit{{
    {"Gen", ""},
    {"160", "1.5 - 2 MHz"},
    {"80a", "3.5 - ... MHz"},
    {"80b", "... - 4 MHz"},
    {"40m", "7 - 7.5 MHz"},
    {"30m", "10 - 10.5 MHz"},
    {"20m", "14 - 14.5 MHz"},
    {"17m", "18 - 18.5 MHz"},
    {"15m", "21 - 21.5 MHz"},
    {"12m", "24.5 - 25 MHz"},
    {"10m", "28 - 30 MHz"},
    {"6m", "50 - 54 MHz"},
    {"VHF", "144 - 148 MHz"},
    {"UHF", "430 - 450 MHz"},
}};

constexpr BandButtonTexts kK4{{
    {"Gen", ""},
    {"160", "1.5 - 2 MHz"},
    {"80m", "3.5 - 4 MHz"},
    {"60m", "5.330 - 5.404 MHz"},
    {"40m", "7 - 7.5 MHz"},
    {"30m", "10 - 10.5 MHz"},
    {"20m", "14 - 14.5 MHz"},
    {"17m", "18 - 18.5 MHz"},
    {"15m", "21 - 21.5 MHz"},
    {"12m", "24.5 - 25 MHz"},
    {"10m", "28 - 30 MHz"},
    {"6m", "50 - 54 MHz"},
    {"VHF", "144 - 148 MHz"},
    {"UHF", "430 - 450 MHz"},
}};

}  // namespace

const BandButtonTexts& BandTexts(BandLayout layout) {
  switch (layout) {
    case BandLayout::HostWhole:
      return kHostWhole;
    case BandLayout::HostSplit:
      return kHostSplit;
    case BandLayout::With60m:
      return kK4;
    case BandLayout::Designed:
      break;
  }
  return kDesigned;
}

}  // namespace spectrino
