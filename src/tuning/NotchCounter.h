// Whole notches out of what wheels and touchpads tell: eighths of a degree, as fine as they like.
// Counts; what a notch does is the caller's.
#pragma once

#include <algorithm>
#include <chrono>

namespace spectrino {

class NotchCounter {
 public:
  using Time = std::chrono::steady_clock::time_point;
  static constexpr int kNotch = 120;  ///< eighths of a degree
  static constexpr std::chrono::milliseconds kRest{500};

  /// Notches that are complete now, up is positive. A rest or a change of direction starts anew.
  [[nodiscard]] int Add(int eighthsOfDegree, Time now) {
    const bool turned = (eighthsOfDegree > 0) != (fraction_ > 0);
    if (turned || now - last_ > kRest) fraction_ = 0;
    last_ = now;
    fraction_ += std::clamp(eighthsOfDegree, -kMost, kMost);
    const int notches = fraction_ / kNotch;
    fraction_ -= notches * kNotch;
    return notches;
  }
  void Clear() { fraction_ = 0; }

 private:
  static constexpr int kMost = 100 * kNotch;
  int fraction_ = 0;
  Time last_{};
};

}  // namespace spectrino
