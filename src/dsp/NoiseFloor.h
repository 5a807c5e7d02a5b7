// Where the noise of a line lies, whatever signals stand in it, and where it lay over the last seconds.
// Levels in, levels out, in the line's own units; what a plot makes of them is run/AutoLevel's.
#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <span>

namespace spectrino {

/// What a line holds of noise, and how high it goes.
struct LineLevels {
  float Noise = 0;      ///< a quarter of the columns of the line lie below it
  float Strongest = 0;  ///< highest level of the points in view
};

/// Of a line's points. columnPoints: how many of them share a column of the picture, which shows the
/// strongest of them, so that its noise lies higher than that of the points. firstInView, endInView: indices
/// of levels. What is no level (kUndrawnLevel and below, rubbish) counts nowhere, nor do the line's ends for
/// the noise, where an input filter falls off. Nothing where too little is left. Looks at 256 columns of 64
/// points at most; allocates nothing.
[[nodiscard]] std::optional<LineLevels> MeasureLine(std::span<const float> levels, double columnPoints,
                                                    int firstInView, int endInView);

/// The noise of the last 8 s, dB. What lifts a line's noise by some dB for less than 6 s does not lift it,
/// nor does what lowers it for less than 2 s. Noise that has jumped by more than 6 dB, as when a radio's
/// reference is turned, counts alone after a second.
class NoiseFloor {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// What was measured is no longer so: the next value stands at once.
  void Restart();
  void Add(float noise, Time now);
  [[nodiscard]] bool Known() const { return count_ > 0; }
  /// Only while Known().
  [[nodiscard]] float Level() const;

 private:
  static constexpr std::chrono::milliseconds kTurn{500};
  static constexpr int kTurns = 16;

  std::array<float, kTurns> means_{};  ///< a ring of half seconds
  int count_ = 0;                      ///< of means_ in use
  int newest_ = 0;
  int added_ = 0;              ///< values in the newest mean
  Time begun_{};               ///< of the newest
  std::optional<Time> apart_;  ///< since when the values are far from Level()
};

}  // namespace spectrino
