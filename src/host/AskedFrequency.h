// A frequency that was asked for and is not confirmed yet: shown at once, given up when the other end tells
// another one or nothing for too long.
#pragma once

#include <chrono>
#include <optional>

namespace spectrino {

class AskedFrequency {
 public:
  using Time = std::chrono::steady_clock::time_point;
  static constexpr std::chrono::milliseconds kConfirmTime{2000};

  /// toldMHz: what the other end told when it was asked.
  void Ask(double freqMHz, double toldMHz, Time now) { asked_ = Asked{freqMHz, toldMHz, now}; }
  void Forget() { asked_.reset(); }
  /// What to show while the other end tells toldMHz.
  [[nodiscard]] double Shown(double toldMHz, Time now) {
    if (asked_ && (toldMHz != asked_->ToldMHz || now - asked_->Since > kConfirmTime)) asked_.reset();
    return asked_ ? asked_->FreqMHz : toldMHz;
  }

 private:
  struct Asked {
    double FreqMHz = 0;
    double ToldMHz = 0;
    Time Since{};
  };
  std::optional<Asked> asked_;
};

}  // namespace spectrino
