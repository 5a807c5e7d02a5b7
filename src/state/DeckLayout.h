// Which captions the band and mode buttons have. Names of the layouts only: texts and what a press does stand
// in bandplan/ and bands/.
#pragma once

namespace spectrino {

enum class BandLayout {
  Designed,   ///< no 60 m, 10 m in two halves
  HostWhole,  ///< host program with 80 m in one button, 10 m in two
  HostSplit,  ///< host program whose band decoder splits 80 m: 10 m is one button then
  With60m,    ///< 80 m and 10 m in one button each
};

enum class ModeLayout {
  Designed,     ///< ten buttons, the last one reverses CW and FSK
  WithReverse,  ///< eight buttons, the reverse modes among them
};

struct DeckLayout {
  bool operator==(const DeckLayout&) const = default;

  BandLayout Bands = BandLayout::Designed;
  ModeLayout Modes = ModeLayout::Designed;
};

}  // namespace spectrino
