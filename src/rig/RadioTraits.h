// What is different from radio to radio, as plain data. Handlers ask here, never for a radio's name.
#pragma once

#include <string_view>

#include "state/DeckLayout.h"

namespace spectrino {

/// The values of a radio reached through a program that knows it, and of no radio at all.
struct RadioTraits {
  DeckLayout Deck{};                         ///< captions of the band and mode buttons
  std::string_view MacroSection = "Macros";  ///< section of the settings with the macros of this radio
  bool MacrosInHex = false;                  ///< macro texts are bytes in hexadecimal
  bool TakesMode = true;                     ///< false: the mode is told, but cannot be asked for
  bool ClickChoosesWheel = false;            ///< a click also chooses the VFO that the wheel tunes
  bool HasVfoB = true;                       ///< SubFreqMHz is told and VFO B can be set
  bool LevelsAreHeights = false;             ///< of the radio's own lines: no calibrated levels
  bool OwnSpan = false;                      ///< the zoom keys step the span of the radio
  bool ScopeThroughHost = false;             ///< the host program can pass its scope on, and then controls it
  std::string_view StepText = "100kHz";      ///< how far the cmdUpDn buttons move
  double StepMHz = 0.1;                      ///< the same, from VFO A; 0: RigBackend::StepFrequency knows
};

}  // namespace spectrino
