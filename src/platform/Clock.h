// Time, so that tests can turn the hands.
#pragma once

#include <chrono>

namespace spectrino {

class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual std::chrono::steady_clock::time_point Now() const = 0;
  [[nodiscard]] virtual std::chrono::system_clock::time_point UtcNow() const = 0;
};

class SystemClock final : public Clock {
 public:
  [[nodiscard]] std::chrono::steady_clock::time_point Now() const override {
    return std::chrono::steady_clock::now();
  }
  [[nodiscard]] std::chrono::system_clock::time_point UtcNow() const override {
    return std::chrono::system_clock::now();
  }
};

}  // namespace spectrino
