// The radio as other programs see it: what is known of it, and what becomes of what they ask for.
// Knows no protocol and no connection. Reads the state that the run keeps fresh; never waits.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/Clock.h"
#include "rig/RigBackend.h"

namespace spectrino {

/// What became of something that a program asked for, with Hamlib's number for it.
enum class CatResult : int {
  Done = 0,
  Waiting = 1,        ///< the radio has not told yet
  Invalid = -1,       ///< it makes no sense
  Silent = -5,        ///< the radio does not tell, or is not heard
  Refused = -9,       ///< the operator does not allow it
  NotAvailable = -11  ///< no radio, or this one does not have it
};

/// One thing that a program asks for.
struct CatWish {
  enum class Kind { Frequency, Mode, Split, Transmit };
  Kind What = Kind::Frequency;
  Vfo Of = Vfo::A;    ///< of Frequency and Mode
  double Hz = 0;      ///< of Frequency
  ExactMode Exact{};  ///< of Mode
  int WidthHz = 0;    ///< of Mode: passband; 0 and less: as the radio has it
  bool On = false;    ///< of Split and Transmit

  /// "set 14.074.000", "set VFO B to USB", "transmits": behind the name of who did it.
  [[nodiscard]] std::string Text() const;
};

/// A wish on its way; made by Ask, for Look.
struct CatPending {
  CatWish Wish;
  std::uint64_t Number = 0;
  double BeforeHz = 0;
  std::chrono::steady_clock::time_point Since{};
};

class CatServerState {
 public:
  /// The radio has so long to tell that it did.
  static constexpr std::chrono::milliseconds kDeadline{2000};
  /// So long after it a report that can tell no better is taken for one.
  static constexpr std::chrono::milliseconds kGrace{500};

  /// All outlive it.
  struct Parts {
    const RadioState& Radio;
    const Clock& Time;
    std::function<RigBackend*()> Backend;  ///< null where there is no radio
    std::function<bool()> Heard;           ///< what the radio told is still so
    std::function<bool()> HasVfoB;
    std::function<bool()> MayTransmit;  ///< the operator lets programs transmit
  };
  explicit CatServerState(Parts parts) : parts_(std::move(parts)) {}

  /// Done: there is a radio and it told where it is.
  [[nodiscard]] CatResult Ready() const;
  [[nodiscard]] CatResult Ready(Vfo vfo) const;
  [[nodiscard]] const RadioState& Radio() const { return parts_.Radio; }
  [[nodiscard]] bool HasVfoB() const { return parts_.HasVfoB(); }
  [[nodiscard]] double FrequencyHz(Vfo vfo) const;
  [[nodiscard]] ExactMode ModeOf(Vfo vfo) const;
  /// The usual one of the mode where the radio tells none.
  [[nodiscard]] int WidthHz(Vfo vfo) const;
  [[nodiscard]] bool Split() const { return parts_.Radio.SplitOn != 0; }
  [[nodiscard]] Vfo TransmitVfo() const { return Split() ? Vfo::B : Vfo::A; }

  /// Hands the radio a wish. Waiting: pending is filled, and Look tells what becomes of it.
  [[nodiscard]] CatResult Ask(const CatWish& wish, CatPending& pending);
  /// A newer wish of the same kind, whoever had it, ends an older one well.
  [[nodiscard]] CatResult Look(const CatPending& pending) const;
  /// A program that made the radio transmit is gone: as if it had asked to receive.
  void StopTransmitting();

 private:
  [[nodiscard]] bool HandOn(RigBackend& backend, const CatWish& wish);
  [[nodiscard]] bool Told(const CatPending& pending) const;
  [[nodiscard]] bool ModeTold(const CatWish& wish, bool graceOver) const;

  Parts parts_;
  std::array<std::uint64_t, 6> newest_{};  ///< the newest wish of each kind
};

}  // namespace spectrino
