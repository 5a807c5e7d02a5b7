// What the operator asked for last, until the radio answered it: what it tells before that may be older, and
// a step counted from it would be lost.
#pragma once

#include <chrono>
#include <optional>

namespace spectrino {

class AskedValue {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// A radio that has not taken a request by then has refused it.
  static constexpr std::chrono::milliseconds kAnswerTime{1000};

  void Ask(int value, Time now) {
    value_ = value;
    at_ = now;
  }
  [[nodiscard]] bool Waits(Time now) const { return value_ && now - at_ < kAnswerTime; }
  /// What the next step counts from.
  [[nodiscard]] int Or(int told, Time now) const { return Waits(now) ? *value_ : told; }
  /// The radio told a value. True when that holds: the answer to the request, or none is awaited.
  [[nodiscard]] bool Told(int value, Time now) {
    if (value_ == value || !Waits(now)) value_.reset();
    return !value_;
  }

 private:
  std::optional<int> value_;
  Time at_{};
};

}  // namespace spectrino
