// A clock whose hands the test turns.
#pragma once

#include "platform/Clock.h"

namespace spectrino {

class FakeClock final : public Clock {
 public:
  [[nodiscard]] std::chrono::steady_clock::time_point Now() const override {
    return std::chrono::steady_clock::time_point(std::chrono::hours(1)) + passed_;
  }
  [[nodiscard]] std::chrono::system_clock::time_point UtcNow() const override {
    // 2026-03-01 12:00:00 UTC.
    return std::chrono::system_clock::time_point(std::chrono::seconds(1772366400)) +
           std::chrono::duration_cast<std::chrono::system_clock::duration>(passed_);
  }
  void Advance(std::chrono::steady_clock::duration time) { passed_ += time; }

 private:
  std::chrono::steady_clock::duration passed_{};
};

}  // namespace spectrino
