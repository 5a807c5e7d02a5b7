// The tuning wheel: notches in, set-frequency requests out, never more than the radio can follow.
// Knows no mouse and no window; clicks and keys are Tuner's.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "platform/Clock.h"
#include "rig/RigBackend.h"
#include "settings/PanSettings.h"
#include "state/Pacer.h"
#include "state/RadioState.h"
#include "tuning/NotchCounter.h"

namespace spectrino {

/// The step of one notch in hertz, by the mode of the tuned VFO; 0 for a mode that has none.
[[nodiscard]] int WheelStepHz(const PanSettings& settings, int radioMode);

class Wheel {
 public:
  using Time = std::chrono::steady_clock::time_point;
  /// Requests leave no closer than this; notches in between add up.
  static constexpr std::chrono::milliseconds kSendPace{30};
  /// So long after a notch the wheel counts on from where it got to itself: reports of its earlier notches
  /// still come in.
  static constexpr std::chrono::milliseconds kOwnCount{400};

  /// All outlive it. backend: the one in use, null where there is none. hasVfoB: of that radio.
  Wheel(RadioState& radio, const PanSettings& settings, const Clock& clock,
        std::function<RigBackend*()> backend, std::function<bool()> hasVfoB)
      : radio_(radio),
        settings_(settings),
        clock_(clock),
        backend_(std::move(backend)),
        hasVfoB_(std::move(hasVfoB)) {}

  /// WheelStep. notches: up is positive, before "Reverse". tenfold: the key held with it; WheelFast and
  /// tenfold together are still ten.
  void Turn(int notches, bool tenfold = false);
  /// A wheel or touchpad that tells fractions of a notch: adds them up. A rest or a change of direction
  /// starts anew.
  void AddDelta(int eighthsOfDegree, bool tenfold = false);
  /// Moves this VFO by so many hertz, whatever its mode and step; never to 0 or below. Paced as the notches
  /// are.
  void MoveBy(Vfo vfo, double hertz);
  /// Sends what waited; every few milliseconds.
  void Pump();
  /// Puts where the wheel got to in place of what the radio reported of its earlier notches. After each
  /// refresh, and only where the lines tell their own frequencies.
  void Hold();
  /// Something else tunes this VFO: nothing of it is pending. What the other one still has leaves at once.
  void Forget(Vfo vfo);
  /// The run ended.
  void ForgetAll();

  /// The VFO that the wheel tunes: A where the radio has no other.
  [[nodiscard]] Vfo Tuned() const;

  Vfo WheelVfo = Vfo::A;
  bool WheelFast = false;

 private:
  struct Target {
    Vfo Of = Vfo::A;
    double FreqMHz = 0;          ///< counted on from
    double WheelSnappedMHz = 0;  ///< what is sent
  };

  [[nodiscard]] double& FreqOf(Vfo vfo);
  /// Counts the VFO on by so many hertz and sends what that snaps to.
  void CountOn(Vfo vfo, double hertz, double snapHz);
  void Send(const Target& target);

  RadioState& radio_;
  const PanSettings& settings_;
  const Clock& clock_;
  std::function<RigBackend*()> backend_;
  std::function<bool()> hasVfoB_;
  std::optional<Target> target_;
  bool WheelBusy_ = false;
  Time lastTurn_{};
  PacedValue<Target> unsent_{kSendPace};
  NotchCounter notches_;
};

}  // namespace spectrino
