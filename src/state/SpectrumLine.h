// One line of spectrum with everything needed to draw it where it belongs.
// Nothing downstream asks the radio again where a line is: the line says so itself.
#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

namespace spectrino {

/// A cell of the history that was never filled, and a point of a block in which nothing moved.
inline constexpr float kEmptyLevel = -500.0F;
/// "No value": never drawn.
inline constexpr float kUndrawnLevel = -200.0F;
/// In a new line: this point had no magnitude; the history keeps what it had.
inline constexpr float kKeepLevel = -1000.0F;

struct SpectrumLine {
  /// Level of point i at index i, dB (Icom: 0..160). Sound card: points 0..N-1. Radio: 1..PointCount, index 0
  /// unused.
  std::vector<float> Levels;
  int PointCount = 0;  ///< SpectrumPoints of this line
  int FirstIndex = 0;  ///< first index of Levels that holds a point: 0 sound card, 1 radio

  double LeftMHz = 0;    ///< frequency of the line's left end
  double CentreMHz = 0;  ///< frequency that labels count from
  double RightMHz = 0;   ///< frequency of the line's right end

  float BottomLevel = 0;  ///< level at the bottom edge of the plot when this line was taken
  float TopLevel = 0;

  std::uint64_t Serial = 0;                         ///< counts up; 0 is no line
  std::chrono::steady_clock::time_point Arrived{};  ///< when its last byte arrived
  std::chrono::system_clock::time_point TakenUtc{};

  /// One past the last index that holds a point.
  [[nodiscard]] int EndIndex() const { return FirstIndex + PointCount; }
  /// Whether its points have frequencies: two points at least, and a right end above the left one.
  [[nodiscard]] bool HasFrequencies() const { return PointCount >= 2 && RightMHz > LeftMHz; }
  /// From one point to the next, MHz. A radio's last point stands at the right edge, a transform's one step
  /// before it. This and the two below only with HasFrequencies.
  [[nodiscard]] double StepMHz() const {
    return (RightMHz - LeftMHz) / (FirstIndex == 0 ? PointCount : PointCount - 1);
  }
  /// Index of a frequency, fractional, in the line or not.
  [[nodiscard]] double IndexAt(double mhz) const { return FirstIndex + (mhz - LeftMHz) / StepMHz(); }
  /// Frequency of an index, whole or not, in the line or not.
  [[nodiscard]] double FrequencyAt(double index) const { return LeftMHz + (index - FirstIndex) * StepMHz(); }
};

}  // namespace spectrino
