// What a press of a band or mode button does, with the toggles of the reverse sideband.
// Not the band memory and no radio's commands: those are the back-ends'.
#pragma once

#include <functional>

#include "bands/DeckLayout.h"
#include "rig/RadioTraits.h"
#include "rig/RigBackend.h"
#include "settings/PanSettings.h"
#include "state/RadioState.h"

namespace spectrino {

class BandModes {
 public:
  struct Parts {
    std::function<RigBackend*()> Backend;  ///< the one in use now; null where there is none
    std::function<RadioTraits()> Traits;   ///< of the radio in use, or of the one chosen
    RadioState& Radio;
    PanSettings& Settings;  ///< CwReverse and FskReverse are changed here; the window's owner stores them
    SettingsStore& Store;
  };
  explicit BandModes(Parts parts) : parts_(std::move(parts)) {}

  /// The layout of the radio, as its host program's band decoder divides the bands.
  [[nodiscard]] DeckLayout Layout() const;

  /// index: 0..13. Nothing without a back-end.
  void cmdBand_Click(int index);
  /// index: 0..9; anything else, and hidden buttons, do nothing. Where the radio is controlled by a program
  /// that takes no mode command, RadioMode is set here until that program tells another.
  void cmdMode_Click(int index);

 private:
  /// "rev" as the button that it reverses, with the toggle turned; nothing outside CW and FSK.
  [[nodiscard]] std::optional<int> TurnReverse();

  Parts parts_;
};

}  // namespace spectrino
