// Hands on the plot's axes: dragging pans or moves the levels, the wheel zooms or changes the range.
// Tunes nothing; what is visible, and between which levels, is PlotScale's.
#pragma once

#include <QPointF>
#include <functional>
#include <optional>

#include "display/PanDisplay.h"
#include "display/ui/ScopeWidget.h"
#include "run/RunCycle.h"
#include "run/Session.h"
#include "tuning/NotchCounter.h"

namespace spectrino {

class AxisInput {
 public:
  /// All outlive it.
  struct Parts {
    Session& State;
    RunCycle& Cycle;
    PanDisplay& Display;
    const Clock& Time;
    ScopeWidget* Scope;
    std::function<void()> ZoomChanged;
    std::function<void()> LevelsChanged;  ///< reference or range
  };
  explicit AxisInput(const Parts& parts) : parts_(parts) {}

  /// The left button went down. ctrl: the whole plot pans, as the frequency axis does. False: not here.
  bool Press(QPointF at, bool ctrl);
  /// Does nothing while nothing is held.
  void Drag(QPointF at);
  enum class Held { Nothing, Clicked, Dragged };
  /// What the button had held; Clicked: it did not move, and the frequency axis or the level axis was meant.
  Held Release();
  /// False: the wheel means something else here.
  bool Wheel(QPointF at, int delta, bool ctrl);
  /// What dragging there would do; nothing away from the axes.
  [[nodiscard]] std::optional<Qt::CursorShape> Shape(QPointF at) const;

 private:
  struct Grip {
    PlotAxis Axis = PlotAxis::None;
    double From = 0;  ///< logical: x of the frequency axis, y of the level axis; moves on with what was done
    double Began = 0;
    bool Plain = true;  ///< on the axis itself, not with Ctrl
    bool Moved = false;
  };

  void Pan(double x);
  void MoveLevels(double y);
  void ZoomWheel(QPointF at, int delta);
  void RangeWheel(int delta);
  [[nodiscard]] double PlotShare(double logicalX) const;

  Parts parts_;
  std::optional<Grip> grip_;
  NotchCounter zoomNotches_, rangeNotches_;
};

}  // namespace spectrino
