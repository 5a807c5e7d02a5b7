// Sets a K4's frequencies, and sees to it that the program knows what became of them.
// Not the wheel: where to tune is decided elsewhere.
#pragma once

#include <array>
#include <chrono>
#include <optional>

#include "k4/K4Sender.h"
#include "platform/Clock.h"

namespace spectrino {

/// SetK4Frequency: the frequency in MHz as eleven digits of hertz behind "FA" (vfo 0) or "FB" (vfo 1).
/// Written to the CAT connection directly.
void SetK4Frequency(K4Sender& sender, double freqMHz, int vfo);

class K4Dial {
 public:
  /// So long after the last of several settings the radio is asked where it stands.
  static constexpr std::chrono::milliseconds kAskAfter{200};

  /// Both outlive it.
  K4Dial(K4Sender& sender, const Clock& clock) : sender_(sender), clock_(clock) {}

  /// vfo: 0 A, 1 B.
  void Set(double freqMHz, int vfo);
  /// Asks for a frequency that was set, once, when its time has come; a radio that tells its changes answers
  /// nothing new, one that does not is followed. To be called every few milliseconds.
  void Pump();

 private:
  K4Sender& sender_;
  const Clock& clock_;
  std::array<std::optional<std::chrono::steady_clock::time_point>, 2> askAt_;
};

}  // namespace spectrino
