// The radio's sending side of the bus: frames wait for the line, the line has its rate, and things go wrong.
// Not the content of the frames, and no port: bytes come out as the line would have carried them.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>

#include "sim/icom/IcomSimBytes.h"

namespace spectrino {

using SimTime = std::chrono::steady_clock::time_point;

/// What goes wrong, by count so that every run is the same; 0 is never.
struct IcomSimFaults {
  int NoiseEvery = 0;         ///< each n-th frame follows garbage, and one of its bytes is hit
  int LostDivisionEvery = 0;  ///< each n-th scope frame never leaves
  int WrongAddressEvery = 0;  ///< each n-th frame claims to come from another radio
  int HalfFrameEvery = 0;     ///< each n-th frame breaks off in its middle
  bool Silent = false;        ///< commands are heard, but nothing is sent
  bool Refusing = false;      ///< every command is refused, and the scope shows nothing
  bool WrongBaud = false;     ///< radio and program hear only noise of each other
};

class IcomSimLine {
 public:
  enum class Kind : std::uint8_t { Reply, Scope };

  /// bytesPerSecond: what the line carries; a byte has ten bits on a serial line.
  explicit IcomSimLine(int bytesPerSecond);

  void SetFaults(const IcomSimFaults& faults) { faults_ = faults; }
  [[nodiscard]] const IcomSimFaults& Faults() const { return faults_; }

  /// Frames a command and queues it, ready at that time. Replies overtake scope frames that have not begun.
  void Queue(Kind kind, std::uint8_t to, std::uint8_t from, SimByteView command, SimTime readyAt);
  /// Queues bytes as they are: the echo of what others sent.
  void QueueRaw(SimByteView bytes, SimTime readyAt);
  /// Bytes that have left by now, in order.
  [[nodiscard]] SimBytes Sent(SimTime now);
  /// Whether scope frames still wait: a radio draws no new line before they have left.
  [[nodiscard]] bool ScopeWaits() const {
    return !scope_.empty() || (!wire_.empty() && wireKind_ == Kind::Scope);
  }
  /// Forgets scope frames that have not begun.
  void DropScope() { scope_.clear(); }

 private:
  struct Waiting {
    SimTime ReadyAt;
    SimBytes Bytes;
  };

  [[nodiscard]] bool Spoil(Kind kind, SimBytes& frame);
  [[nodiscard]] bool StartNext(SimTime now);

  IcomSimFaults faults_;
  std::chrono::nanoseconds byteTime_;
  std::deque<Waiting> replies_;
  std::deque<Waiting> scope_;
  SimBytes wire_;  ///< the frame on its way
  Kind wireKind_ = Kind::Reply;
  std::size_t wireSent_ = 0;
  SimTime freeAt_{};  ///< when the last byte that left was through
  int frames_ = 0;
  int scopeFrames_ = 0;
};

}  // namespace spectrino
