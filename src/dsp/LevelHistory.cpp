#include "dsp/LevelHistory.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "dsp/kernels/Kernels.h"
#include "state/SpectrumLine.h"

namespace spectrino {

LevelHistory::LevelHistory() : LevelHistory(BestKernels()) {}
LevelHistory::LevelHistory(const Kernels& kernels) : kernels_(&kernels) {}

void LevelHistory::Reset(int pointCount) {
  assert(pointCount >= 0);
  points_ = static_cast<std::size_t>(pointCount);
  // AVG takes the row that leaves from its sum, so it needs one more than the window has.
  history_.Reset(points_, kMaxDepth + 2, kEmptyLevel);
  peakHistory_.Reset(points_, kBackgroundPeakFrames, kEmptyLevel);
  maximum_.Reset(points_);
  peakMaximum_.Reset(points_);
  sums_.assign(points_, 0);
  displayLevel_.assign(points_, kEmptyLevel);
  backgroundPeak_.assign(points_, kEmptyLevel);
  frame_ = kBackgroundPeakFrames;  // all of them empty
  frameCount_ = -1;
  hasBackgroundPeak_ = false;
}

void LevelHistory::Restart() {
  frameCount_ = -1;
  hasBackgroundPeak_ = false;
  peakHistory_.Reset(points_, kBackgroundPeakFrames, kEmptyLevel);
  ClearDisplay();
}

void LevelHistory::ClearDisplay() {
  std::ranges::fill(displayLevel_, kEmptyLevel);
}

void LevelHistory::Push(std::span<const float> levels, DisplayMode mode, int historyDepth,
                        bool wantBackgroundPeak) {
  assert(levels.size() == points_);
  // Just asked for: the frames that went by unasked count as well.
  const long firstPeak =
      wantBackgroundPeak && !hasBackgroundPeak_ ? frame_ + 2 - kBackgroundPeakFrames : frame_ + 1;
  Count(mode, std::clamp(historyDepth, 0, kMaxDepth), wantBackgroundPeak, firstPeak);
  // A chunk of points goes through all steps while it is in the first-level cache.
  for (std::size_t begin = 0; begin < points_; begin += SlidingMaximum::kChunk) {
    const int count = static_cast<int>(std::min(points_ - begin, SlidingMaximum::kChunk));
    float* newest = history_.Row(frame_) + begin;
    kernels_->StoreRow(levels.data() + begin, history_.Row(frame_ - 1) + begin, kKeepLevel, newest, count);
    Display(begin, count);
    std::copy_n(newest, count, peakHistory_.Row(frame_) + begin);
    if (!wantBackgroundPeak) continue;
    for (long frame = firstPeak; frame <= frame_; ++frame)
      peakMaximum_.Update(*kernels_, peakHistory_, frame, begin, count, backgroundPeak_.data() + begin);
  }
}

void LevelHistory::Count(DisplayMode mode, int historyDepth, bool wantBackgroundPeak, long firstPeak) {
  ++frame_;
  if (mode != mode_) ClearDisplay();
  if (mode != mode_ || historyDepth != depth_) frameCount_ = -1;
  mode_ = mode;
  depth_ = historyDepth;
  if (frameCount_ < 0) maximum_.Restart(frame_, depth_ + 1);
  windowFull_ = frameCount_ == depth_;
  frameCount_ = std::min(frameCount_ + 1, depth_);
  if (!hasBackgroundPeak_) peakMaximum_.Restart(firstPeak, kBackgroundPeakFrames);
  hasBackgroundPeak_ = wantBackgroundPeak;
}

void LevelHistory::Display(std::size_t begin, int count) {
  const float* newest = history_.Row(frame_) + begin;
  float* display = displayLevel_.data() + begin;
  switch (mode_) {
    case DisplayMode::Max:
      maximum_.Update(*kernels_, history_, frame_, begin, count, display);
      break;
    case DisplayMode::Avg:
      UpdateAverage(begin, count);
      break;
    case DisplayMode::Peak:
      kernels_->Maximum(display, newest, display, count);
      break;
    case DisplayMode::Normal:
      std::copy_n(newest, count, display);
      break;
  }
}

// The mean of the decibels, not of the powers. The sum runs on for as long as the mode does: a double holds
// 21 levels and their differences to within 1e-12 dB, so a day of frames moves it by less than 0.00001 dB.
void LevelHistory::UpdateAverage(std::size_t begin, int count) {
  static constexpr std::array<float, SlidingMaximum::kChunk> kNothing{};
  double* sums = sums_.data() + begin;
  const bool first = frameCount_ == 0 && !windowFull_;
  if (first) std::fill_n(sums, count, 0.0);
  const float* leaving = windowFull_ ? history_.Row(frame_ - depth_ - 1) + begin : kNothing.data();
  kernels_->SlideMean(history_.Row(frame_) + begin, leaving, 1.0 / (frameCount_ + 1), sums,
                      displayLevel_.data() + begin, count);
}

}  // namespace spectrino
