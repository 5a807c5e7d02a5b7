// A clock whose hands the test turns.
#pragma once

#include <chrono>

#include "platform/Clock.h"

namespace spectrino {

class FakeClock final : public Clock {
 public:
  [[nodiscard]] std::chrono::steady_clock::time_point Now() const override { return now_; }
  [[nodiscard]] std::chrono::system_clock::time_point UtcNow() const override { return utc_; }

  void Advance(std::chrono::nanoseconds time) {
    now_ += time;
    utc_ += time;
  }

 private:
  std::chrono::steady_clock::time_point now_{std::chrono::hours(1)};
  /// 2024-03-15 12:00:00 UTC
  std::chrono::system_clock::time_point utc_{std::chrono::seconds(1710504000)};
};

}  // namespace spectrino
