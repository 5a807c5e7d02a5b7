// A passband dragged by its middle or by an edge: movements in, requests out, no more than the radio can
// follow. Told hertz, not pixels; which passband is under the pointer is the display's business.
#pragma once

#include <chrono>
#include <functional>

#include "platform/Clock.h"
#include "rig/Passband.h"
#include "rig/RigBackend.h"
#include "state/Pacer.h"

namespace spectrino {

enum class PassbandGrip { None, LowEdge, HighEdge, Middle };

/// The filter that is gripped, as the radio told it. Where the audio counts against the frequency, so does
/// its shift.
struct GrippedFilter {
  Vfo Receiver = Vfo::A;
  int RadioMode = mode::kUnknown;
  double WidthHz = 0;       ///< 0: not known
  bool MiddleStays = true;  ///< when its width changes; else one edge stays at the dial
};

/// By how much the radio's width (edges) or shift (middle) changes with each hertz that a grip is moved up;
/// 0: that edge stays where it is.
[[nodiscard]] int GripGain(PassbandGrip grip, const GrippedFilter& filter);

class PassbandDrag {
 public:
  /// Requests leave no closer than this; the last one always goes out.
  static constexpr std::chrono::milliseconds kSendPace{30};
  /// No filter is dragged narrower.
  static constexpr double kNarrowestHz = 50;

  /// Both outlive it. backend: the one in use, null where there is none.
  PassbandDrag(const Clock& clock, std::function<RigBackend*()> backend)
      : clock_(clock), backend_(std::move(backend)) {}

  void Begin(PassbandGrip grip, const GrippedFilter& filter);
  /// How far the pointer is from where it took hold, Hz; up is positive. An edge follows it: where the
  /// filter's middle stays in place, the bandwidth changes by twice as much. Steps of 10 Hz.
  void MoveTo(double movedHz);
  /// Sends what is due; every few milliseconds.
  void Pump();
  /// Sends what is left and lets go.
  void End();
  [[nodiscard]] bool Active() const { return grip_ != PassbandGrip::None; }
  /// What becomes of the passband that was gripped, once the radio did all that was asked.
  [[nodiscard]] Passband Wanted(const Passband& gripped) const;

 private:
  void Send();

  const Clock& clock_;
  std::function<RigBackend*()> backend_;
  PassbandGrip grip_ = PassbandGrip::None;
  GrippedFilter filter_;
  int gain_ = 1;
  int wantedHz_ = 0;  ///< from where it began
  int sentHz_ = 0;
  Pacer pace_{kSendPace};
};

}  // namespace spectrino
