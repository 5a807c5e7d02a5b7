// Notices that a radio which answers sends no scope lines, and when to switch its scope on again.
// Sends nothing, and does not know why they stay away: another program, the radio's own menu, a power cut.
#pragma once

#include <chrono>
#include <cstddef>

namespace spectrino {

class ScopeWatch {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// The scope was switched on just now.
  void Restart(Time now);
  /// True when it is time to switch it on again: after 2 s without a line, then after 2, 4, 8, and every 15
  /// s. wanted: lines should come; the time in which they should not does not count. lineArrived: the newest.
  [[nodiscard]] bool Due(Time now, bool wanted, Time lineArrived);
  /// How often it has been switched on again without a line since, counted up to 4.
  [[nodiscard]] std::size_t Tries() const { return tries_; }

 private:
  Time since_{};
  std::size_t tries_ = 0;
};

}  // namespace spectrino
