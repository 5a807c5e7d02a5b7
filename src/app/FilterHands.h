// The pointer's hands on a receiver's filter, in the plot and in the mini-pans: its form and note before, the
// drag, and what is shown until the radio has followed. Glue: what a grip does to the radio is tuning's.
#pragma once

#include <QPointF>
#include <chrono>
#include <optional>
#include <span>

#include "display/PanDisplay.h"
#include "display/ui/ScopeWidget.h"
#include "platform/Clock.h"
#include "state/RadioState.h"
#include "tuning/Tuner.h"

namespace spectrino {

class FilterHands {
 public:
  /// All outlive it.
  struct Parts {
    const RadioState& Radio;
    const Clock& Time;
    PanDisplay& Display;
    ScopeWidget* Scope;
    Tuner& Tune;
  };
  explicit FilterHands(const Parts& parts) : parts_(parts) {}

  /// Shows what a press there would take hold of: the pointer's form and a note beside it.
  void Hover(QPointF at, Qt::KeyboardModifiers modifiers);
  /// Whether the press took hold: in a mini-pan with any button, in the plot with the left one on an edge,
  /// and with Shift anywhere in a passband.
  bool Press(QPointF at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
  void Drag(QPointF from, QPointF at);
  /// Pressed and let go in one place it was a click: then it tunes.
  void Release();
  void RunEnded();
  [[nodiscard]] bool Holding() const { return held_.has_value(); }
  /// Puts the passband that is held, or that the radio has yet to confirm, into its marker.
  void ShowHeld(std::span<PlotMarker> markers) const;

 private:
  struct Hold {
    PassbandGrip Grip = PassbandGrip::None;
    Vfo Receiver = Vfo::A;
    FilterPlace Place = FilterPlace::Plot;
    double FreqMHz = 0;
    double HzPerPixel = 0;  ///< device pixels
    Passband Begun{};
    ClickButton Button = ClickButton::Left;
    bool Moved = false;  ///< far enough to be no click
  };
  /// A passband that was asked for.
  struct Asked {
    Vfo Receiver = Vfo::A;
    Passband Wanted;
    std::chrono::steady_clock::time_point Until;
  };

  [[nodiscard]] std::optional<Hold> Under(QPointF at, Qt::KeyboardModifiers modifiers) const;
  [[nodiscard]] Passband Told(Vfo receiver) const;
  void Note(PassbandGrip grip, const Passband& passband);

  Parts parts_;
  std::optional<Hold> held_;
  std::optional<Asked> asked_;
};

}  // namespace spectrino
