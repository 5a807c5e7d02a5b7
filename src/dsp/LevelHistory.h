// The last frames of levels, and what is shown of them: maximum, average, running peak or the newest.
// Knows points by index only; where they are drawn is ColumnMap's.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "dsp/SlidingMaximum.h"

namespace spectrino {

/// Setting "Disp". The numbers are stored, so they never change.
enum class DisplayMode { Max = 0, Avg = 1, Peak = 2, Normal = 3 };

struct Kernels;

class LevelHistory {
 public:
  LevelHistory();
  explicit LevelHistory(const Kernels& kernels);

  static constexpr int kMaxDepth = 20;
  static constexpr int kBackgroundPeakFrames = 17;

  /// Start: every cell, DisplayLevel and BackgroundPeak are kEmptyLevel. The only call that allocates.
  void Reset(int pointCount);
  /// The next frame is the first of MAX, AVG, PEAK and of the background peak.
  void Restart();
  /// After a retuning click: PEAK begins anew; MAX and AVG go on from their frames.
  void ClearDisplay();

  /// Takes one frame of pointCount levels and brings DisplayLevel up to date. historyDepth: 0..20 (others are
  /// clamped). A change of mode or depth restarts the count; a change of mode also clears PEAK. A point of
  /// kKeepLevel counts with the level it had in the frame before.
  void Push(std::span<const float> levels, DisplayMode mode, int historyDepth, bool wantBackgroundPeak);

  /// The value drawn, by point index.
  [[nodiscard]] std::span<const float> DisplayLevel() const { return displayLevel_; }
  /// The frame of the last Push alone, by point index; until the next call of anything else.
  [[nodiscard]] std::span<const float> NewestLevel() const { return {history_.Row(frame_), points_}; }
  /// The largest level of the last 17 frames; empty when the last Push did not want it.
  [[nodiscard]] std::span<const float> BackgroundPeak() const {
    return hasBackgroundPeak_ ? std::span<const float>(backgroundPeak_) : std::span<const float>();
  }

 private:
  void Count(DisplayMode mode, int historyDepth, bool wantBackgroundPeak, long firstPeak);
  void Display(std::size_t begin, int count);
  void UpdateAverage(std::size_t begin, int count);

  const Kernels* kernels_;
  std::size_t points_ = 0;
  LevelRing history_;
  LevelRing peakHistory_;
  SlidingMaximum maximum_;
  SlidingMaximum peakMaximum_;
  std::vector<double> sums_;
  std::vector<float> displayLevel_;
  std::vector<float> backgroundPeak_;
  long frame_ = 0;  ///< of the newest row
  DisplayMode mode_ = DisplayMode::Max;
  int depth_ = 0;
  int frameCount_ = -1;      ///< frames in the display beside the newest, 0..depth_; -1 before the first
  bool windowFull_ = false;  ///< the newest frame pushed another out of the window
  bool hasBackgroundPeak_ = false;
};

}  // namespace spectrino
