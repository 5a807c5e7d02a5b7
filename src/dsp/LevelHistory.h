// The last frames of levels, and what is shown of them: maximum, average, running peak or the newest.
// Knows points by index only; where they are drawn is DisplayTrace's.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace spectrino {

/// Setting "Disp". The numbers are stored, so they never change.
enum class DisplayMode { Max = 0, Avg = 1, Peak = 2, Normal = 3 };

class LevelHistory {
 public:
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
  /// The largest level of the last 17 frames; empty when the last Push did not want it.
  [[nodiscard]] std::span<const float> BackgroundPeak() const;
  /// Frames in the display beside the newest: 0..historyDepth. -1 before the first frame.
  [[nodiscard]] int FrameCount() const { return frameCount_; }

 private:
  /// One row more than MAX and AVG look at: AVG takes the row that leaves from its sum.
  static constexpr int kRows = kMaxDepth + 2;

  [[nodiscard]] float* Row(int age);
  void Count(DisplayMode mode, int historyDepth);
  void StoreNewest(std::span<const float> levels);
  void Display(std::size_t begin, std::size_t end);
  void UpdateAverage(std::size_t begin, std::size_t end);

  std::size_t points_ = 0;
  std::vector<float> rows_;  ///< kRows rows of points_, a ring
  std::vector<double> sums_;
  std::vector<float> displayLevel_;
  std::vector<float> backgroundPeak_;
  int newestRow_ = 0;
  DisplayMode mode_ = DisplayMode::Max;
  int depth_ = 0;
  int frameCount_ = -1;
  int framesSinceRestart_ = 0;  ///< counted up to kBackgroundPeakFrames
  bool windowFull_ = false;     ///< this frame pushed another out of MAX and AVG
  bool hasBackgroundPeak_ = false;
};

}  // namespace spectrino
