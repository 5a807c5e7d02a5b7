// Everything that one running program knows and that more than one room changes.
// One object, owned by main and passed on; nothing of it is global.
#pragma once

#include <optional>

#include "settings/PanSettings.h"
#include "state/RadioState.h"

namespace spectrino {

struct Session {
  RadioState Radio;
  PanSettings Settings;

  bool WindowMinimized = false;              ///< frames wait, the radio is still refreshed
  bool ResizeInProgress = false;             ///< the window layout is being rebuilt
  std::optional<ChosenSource> ForcedSource;  ///< a demo or recording, chosen for this run and never stored
  bool FirstRun = false;                     ///< no settings were ever stored
  bool SearchHost = true;  ///< false in a demo, which is not to meet the station's own host program
};

}  // namespace spectrino
