// A passband dragged by its middle or by an edge: movements in, requests out, no more than the radio can
// follow. Told hertz, not pixels; which passband is under the pointer is the display's business.
#pragma once

#include <chrono>
#include <functional>

#include "platform/Clock.h"
#include "rig/RigBackend.h"
#include "state/Pacer.h"

namespace spectrino {

enum class PassbandGrip { None, LowEdge, HighEdge, Middle };

class PassbandDrag {
 public:
  /// Requests leave no closer than this; the last one always goes out.
  static constexpr std::chrono::milliseconds kSendPace{30};

  /// Both outlive it. backend: the one in use, null where there is none.
  PassbandDrag(const Clock& clock, std::function<RigBackend*()> backend)
      : clock_(clock), backend_(std::move(backend)) {}

  /// radioMode: of that receiver. Where the audio counts against the frequency, so does the shift.
  void Begin(PassbandGrip grip, Vfo receiver, int radioMode);
  /// How far the pointer is from where it took hold, Hz; up is positive. An edge follows it with the filter's
  /// middle in place, so the bandwidth changes by twice as much. Steps of 10 Hz.
  void MoveTo(double movedHz);
  /// Sends what is due; every few milliseconds.
  void Pump();
  /// Sends what is left and lets go.
  void End();
  [[nodiscard]] bool Active() const { return grip_ != PassbandGrip::None; }

 private:
  void Send();

  const Clock& clock_;
  std::function<RigBackend*()> backend_;
  PassbandGrip grip_ = PassbandGrip::None;
  Vfo receiver_ = Vfo::A;
  int sign_ = 1;
  int wantedHz_ = 0;  ///< from where it began
  int sentHz_ = 0;
  Pacer pace_{kSendPace};
};

}  // namespace spectrino
