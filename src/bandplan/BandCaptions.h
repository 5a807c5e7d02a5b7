// The texts of the 14 band buttons, by the band plan of whoever controls the radio.
// Only the tables: who shows them, and when, is the window's business.
#pragma once

#include <array>
#include <string_view>

#include "bandplan/Bands.h"
#include "state/DeckLayout.h"

namespace spectrino {

struct BandButtonText {
  std::string_view Caption;
  std::string_view ToolTip;
};
using BandButtonTexts = std::array<BandButtonText, kBandButtonCount>;

[[nodiscard]] const BandButtonTexts& BandTexts(BandLayout layout);

}  // namespace spectrino
