// What goes on in the window, told to every way to a radio. Knows none of them by name.
#pragma once

#include "platform/WindowCommands.h"
#include "run/RigRouter.h"

namespace spectrino {

class KitNews {
 public:
  /// router outlives it.
  explicit KitNews(const RigRouter& router) : router_(router) {}

  /// null: it is gone.
  void WindowIs(WindowCommands* window) const;
  void WayChosen(CatWay way) const;
  /// source: whose lines the run shows; null: none of theirs.
  void RunChanged(bool running, const RadioKit* source) const;
  /// A layout begins (pause) or has ended: while nobody can look at them lines stay off the radio's bus.
  void PauseLines(bool pause, bool minimised) const;

 private:
  const RigRouter& router_;
};

}  // namespace spectrino
