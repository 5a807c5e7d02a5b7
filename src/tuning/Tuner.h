// What clicks, keys and buttons on the plot do to the radio and to the window.
// Told frequencies, not pixels: where the pointer stands is the display's business.
#pragma once

#include <functional>

#include "platform/Clock.h"
#include "rig/RadioTraits.h"
#include "rig/RigBackend.h"
#include "settings/PanSettings.h"
#include "state/RadioState.h"
#include "tuning/PassbandDrag.h"
#include "tuning/Wheel.h"

namespace spectrino {

/// What tuning asks of the window.
class TuningWindow {
 public:
  virtual ~TuningWindow() = default;
  virtual void ToggleFullScreen() = 0;
  /// optZoom one further (+1) or back (-1). wraps: from the last to the first; otherwise the ends hold.
  virtual void StepZoom(int direction, bool wraps) = 0;
  virtual void ZoomOff() = 0;  ///< 1X
  /// Button AUTO.
  virtual void ToggleAutoLevel() = 0;
  /// PEAK begins anew.
  virtual void RestartTraces() = 0;
  /// The next frame is searched for the signal to centre.
  virtual void RequestSpot() = 0;
};

enum class PassbandDragMode { None, Main, Sub };
enum class ClickButton { Left, Right };
/// Where a passband is gripped: that of the radio whose frequency the plot's dial is, or that of the radio
/// whose mini-pan it is.
enum class FilterPlace { Plot, MiniPan };

class Tuner {
 public:
  /// All outlive it.
  struct Parts {
    RadioState& Radio;
    const PanSettings& Settings;
    const Clock& Time;
    TuningWindow& Window;
    std::function<RigBackend*()> Backend;    ///< in use in this run; null where there is none
    std::function<RadioTraits()> Traits;     ///< of the radio in use
    std::function<RigBackend*()> Filters;    ///< of the radio whose filters can be gripped; null: nowhere
    std::function<RigBackend*()> SpanOwner;  ///< whose own span the zoom keys step; null: the window zooms
    std::function<bool()> Running;
  };
  explicit Tuner(const Parts& parts);

  /// freqMHz: under the pointer, 0 outside plot and waterfall. inRightStrip: at the right edge of the
  /// picture.
  void Scope_MouseDown(ClickButton button, double freqMHz, bool inRightStrip);
  void SetPassbandDrag(PassbandDragMode mode) { PassbandDragMode_ = mode; }
  /// Whether that part of a passband can be dragged: the radio can set it, and is heard.
  [[nodiscard]] bool MayGrip(PassbandGrip grip, Vfo receiver, FilterPlace place) const;
  /// The pointer took hold of a passband, moved with it by so many hertz in all, and let go.
  void GripPassband(PassbandGrip grip, Vfo receiver, FilterPlace place);
  void DragPassband(double movedHz) { drag_.MoveTo(movedHz); }
  [[nodiscard]] const PassbandDrag& Drag() const { return drag_; }
  void LetPassbandGo() { drag_.End(); }
  /// A wheel's or touchpad's movement, in eighths of a degree. Ignored while stopped.
  void WheelMoved(int eighthsOfDegree, bool tenfold);
  /// One notch up or down.
  void WheelStep(int direction, bool tenfold);
  /// The same by key: tunes wherever the pointer rests.
  void KeyStep(int direction, bool tenfold);
  /// A digit of this VFO's frequency was turned, by so many hertz. tenfold and step do not matter.
  void TurnDigit(Vfo vfo, double hertz) { wheel_.MoveBy(vfo, hertz); }
  /// A character typed in the window; false when it means nothing here.
  bool KeyPress(char character);
  void cmdSpot_Click() { parts_.Window.RequestSpot(); }
  /// Back to where the VFO that was clicked last had been.
  void cmdUndo_Click();
  /// index: 0 up, 1 down. centreMHz: of the plot.
  void cmdUpDn_Click(int index, double centreMHz);
  /// Puts VFO A's dial there; 0 and what is no frequency is ignored.
  void TuneTo(double freqMHz) { Tune(Vfo::A, freqMHz, Aim::Dial); }
  /// A frequency was typed: the band's record is kept first.
  void EnterFrequency(Vfo vfo, double freqMHz);
  /// Sends what waits; every few milliseconds.
  void Pump() {
    wheel_.Pump();
    drag_.Pump();
  }
  /// After each refresh of the radio's state.
  void Refreshed() { wheel_.Hold(); }
  void RunEnded();
  /// A band or a macro takes the radio elsewhere.
  void Retuning() { wheel_.Forget(Vfo::A); }

  /// The VFO that the wheel tunes; A where the radio has no other.
  [[nodiscard]] Vfo WheelVfo() const { return wheel_.Tuned(); }
  [[nodiscard]] bool WheelFast() const { return wheel_.WheelFast; }

 private:
  void Tune(Vfo vfo, double freqMHz, Aim aim);
  [[nodiscard]] RigBackend* Backend() const { return parts_.Running() ? parts_.Backend() : nullptr; }
  [[nodiscard]] RigBackend* FiltersAt(FilterPlace place) const {
    return place == FilterPlace::Plot ? Backend() : Filters();
  }
  [[nodiscard]] GrippedFilter FilterOf(Vfo receiver, FilterPlace place) const;
  [[nodiscard]] RigBackend* Filters() const { return parts_.Running() ? parts_.Filters() : nullptr; }

  Parts parts_;
  Wheel wheel_;
  FilterPlace gripped_ = FilterPlace::MiniPan;
  PassbandDrag drag_;
  NotchCounter shiftNotches_;
  PassbandDragMode PassbandDragMode_ = PassbandDragMode::None;
  double PreviousFreqMHz_ = 0;
  double PreviousSubFreqMHz_ = 0;
  Vfo clicked_ = Vfo::A;
};

}  // namespace spectrino
