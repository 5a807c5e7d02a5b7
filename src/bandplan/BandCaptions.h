// The texts of the 14 band buttons, by the band plan of whoever controls the radio.
// Only the tables: who shows them, and when, is the window's business.
#pragma once

#include <array>
#include <string_view>

#include "bandplan/Bands.h"

namespace spectrino {

struct BandButtonText {
  std::string_view Caption;
  std::string_view ToolTip;
};
using BandButtonTexts = std::array<BandButtonText, kBandButtonCount>;

enum class BandLayout {
  Designed,   ///< no 60 m, 10 m in two halves
  HostWhole,  ///< host program with 80 m in one button, 10 m in two
  HostSplit,  ///< host program whose band decoder splits 80 m: 10 m is one button then
  K4,         ///< with 60 m, 80 m and 10 m in one button each
};

[[nodiscard]] const BandButtonTexts& BandTexts(BandLayout layout);

}  // namespace spectrino
