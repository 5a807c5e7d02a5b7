// Pointer, wheel and keys on the plot, as the tuner wants them, and what the tuner asks of the window.
// Glue: what a click or a key means is decided in tuning/.
#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QPointF>
#include <functional>
#include <optional>
#include <span>
#include <utility>

#include "app/AxisInput.h"
#include "app/FilterHands.h"
#include "app/InsetGrip.h"
#include "app/LinkView.h"
#include "app/PeakKeys.h"
#include "display/PanDisplay.h"
#include "display/ui/HeaderPanel.h"
#include "display/ui/RangePanel.h"
#include "display/ui/ScopeWidget.h"
#include "platform/WindowCommands.h"
#include "run/RunCycle.h"
#include "run/Session.h"
#include "tuning/Tuner.h"

namespace spectrino {

class TuningInput final : public QObject, private TuningWindow {
 public:
  /// All outlive it.
  struct Parts {
    Session& State;
    RunCycle& Cycle;
    const LinkView& Links;
    PanDisplay& Display;
    const Clock& Time;
    WindowCommands& Window;
    ScopeWidget* Scope;
    RangePanel* Strip;
    HeaderPanel* Header;
    std::function<void()> ZoomChanged;            ///< by the tuner, not by the strip
    std::function<void()> LevelsChanged;          ///< reference or range, by hand on the level axis
    std::function<void()> AutoLevel;              ///< a double click on the level axis; empty: means nothing
    std::function<void(InsetPlace)> InsetPlaced;  ///< by the inset's grip
  };
  explicit TuningInput(const Parts& parts);
  ~TuningInput() override;

  /// A key that no control wanted; false when it means nothing here either.
  bool KeyPressed(const QKeyEvent& event);
  /// After each pass of the run.
  void AfterPass();
  void RunChanged(bool running);
  /// A band button or a macro takes the radio elsewhere.
  void Retuning() { tuner_.Retuning(); }
  /// Setting "Mouse": what it was when the window was loaded.
  void AllowWheel(bool allow) { wheelAllowed_ = allow; }
  /// "M.Wheel VFO-A Normal"
  [[nodiscard]] QString WheelText() const;
  /// A filter that is being dragged shows before the radio tells.
  void ShowHeldFilter(std::span<PlotMarker> markers) const { filters_.ShowHeld(markers); }

 private:
  void ToggleFullScreen() override { parts_.Window.ToggleFullScreen(); }
  void StepZoom(int direction, bool wraps) override;
  void ZoomOff() override;
  void ToggleAutoLevel() override { parts_.Strip->ToggleAutoLevel(); }
  void RestartTraces() override { parts_.Cycle.Frames().RestartTraces(); }
  void RequestSpot() override;

  void MouseDown(QPointF at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
  void Hover(QPointF at, Qt::KeyboardModifiers modifiers);
  void ReleaseButton();
  void TellNoSpot();
  void Wheel(QPointF at, int delta, Qt::KeyboardModifiers modifiers);
  void DigitWheel(int vfo, double hertz, int delta);
  bool ScopeKey(const QKeyEvent& event);

  Parts parts_;
  Tuner tuner_;
  bool wheelAllowed_ = true;
  NotchCounter digitNotches_;
  std::pair<int, double> turnedDigit_{};  ///< VFO and hertz
  AxisInput axes_;
  QPointF axisAt_;  ///< where the pointer last held an axis
  FilterHands filters_;
  InsetGrip insetGrip_;
  QPointF hoveredAt_{-1, -1};  ///< logical
  bool shiftHeld_ = false;     ///< when it was looked at last
  PeakKeys peaks_;
};

}  // namespace spectrino
