// What is on: the plain facts of the run that its scale, its texts and its meter are made from.
// Written by RunStart and the run cycle; everyone else reads.
#pragma once

#include <string>

#include "capture/ZoomPlan.h"
#include "run/RigRouter.h"
#include "state/SpectrumLine.h"

namespace spectrino {

struct RunView {
  bool Running = false;
  Route Way;                      ///< of this run, or of the last one
  std::string SourceName;         ///< the same
  RadioLink* Link = nullptr;      ///< of this run, where a radio delivers the spectrum
  RadioLink* NextLink = nullptr;  ///< while there is no run: of the source that is chosen, or being started
  ZoomPlan Plan;                  ///< of this run's sound input, or of the next one
  SpectrumLine Line;              ///< the newest; Serial 0 before the first
  ZoomPlan LinePlan;              ///< under which Line was taken

  [[nodiscard]] bool HasLine() const { return Running && Line.Serial != 0; }
  /// The back-end whose radio has a span of its own to step; null where the display zooms.
  [[nodiscard]] RigBackend* SpanOwner() const {
    return Running && Way.Source != nullptr && Way.Source->Traits().OwnSpan ? &Way.Source->Backend()
                                                                            : nullptr;
  }
};

}  // namespace spectrino
