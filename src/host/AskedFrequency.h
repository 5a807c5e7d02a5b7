// A frequency that was asked for and is not confirmed yet: shown at once, until the other end tells the same
// or time is up. Reports of what was asked before may still be on their way meanwhile.
#pragma once

#include <chrono>
#include <cmath>
#include <optional>

namespace spectrino {

class AskedFrequency {
 public:
  using Time = std::chrono::steady_clock::time_point;
  static constexpr std::chrono::milliseconds kConfirmTime{2000};

  void Ask(double freqMHz, Time now) { asked_ = Asked{freqMHz, now}; }
  void Forget() { asked_.reset(); }
  /// What to show while the other end tells toldMHz.
  [[nodiscard]] double Shown(double toldMHz, Time now) {
    if (asked_ && (std::abs(toldMHz - asked_->FreqMHz) < kSameMHz || now - asked_->Since > kConfirmTime))
      asked_.reset();
    return asked_ ? asked_->FreqMHz : toldMHz;
  }

 private:
  static constexpr double kSameMHz = 0.5e-6;
  struct Asked {
    double FreqMHz = 0;
    Time Since{};
  };
  std::optional<Asked> asked_;
};

}  // namespace spectrino
