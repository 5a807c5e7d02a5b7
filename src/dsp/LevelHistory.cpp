#include "dsp/LevelHistory.h"

#include <algorithm>
#include <cassert>

#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

/// Points that are taken through all rows at once: their accumulator stays in the first-level cache.
constexpr std::size_t kBlock = 2048;

void Maximum(float* __restrict accumulator, const float* __restrict row, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) accumulator[i] = std::max(accumulator[i], row[i]);
}

}  // namespace

void LevelHistory::Reset(int pointCount) {
  points_ = static_cast<std::size_t>(pointCount);
  rows_.assign(kRows * points_, kEmptyLevel);
  sums_.assign(points_, 0);
  displayLevel_.assign(points_, kEmptyLevel);
  backgroundPeak_.assign(points_, kEmptyLevel);
  newestRow_ = 0;
  frameCount_ = -1;
  framesSinceRestart_ = 0;
  hasBackgroundPeak_ = false;
}

void LevelHistory::Restart() {
  frameCount_ = -1;
  framesSinceRestart_ = 0;
  ClearDisplay();
}

void LevelHistory::ClearDisplay() {
  std::ranges::fill(displayLevel_, kEmptyLevel);
}

std::span<const float> LevelHistory::BackgroundPeak() const {
  return hasBackgroundPeak_ ? std::span<const float>(backgroundPeak_) : std::span<const float>();
}

void LevelHistory::Push(std::span<const float> levels, DisplayMode mode, int historyDepth,
                        bool wantBackgroundPeak) {
  assert(levels.size() == points_);
  Count(mode, std::clamp(historyDepth, 0, kMaxDepth));
  newestRow_ = (newestRow_ + 1) % kRows;
  StoreNewest(levels);
  hasBackgroundPeak_ = wantBackgroundPeak;
  for (std::size_t begin = 0; begin < points_; begin += kBlock) {
    const std::size_t end = std::min(points_, begin + kBlock);
    Display(begin, end);
    if (!wantBackgroundPeak) continue;
    std::copy_n(Row(0) + begin, end - begin, backgroundPeak_.data() + begin);
    for (int age = 1; age < framesSinceRestart_; ++age) {
      Maximum(backgroundPeak_.data() + begin, Row(age) + begin, end - begin);
    }
  }
}

void LevelHistory::Count(DisplayMode mode, int historyDepth) {
  if (mode != mode_) ClearDisplay();
  if (mode != mode_ || historyDepth != depth_) frameCount_ = -1;
  mode_ = mode;
  depth_ = historyDepth;
  windowFull_ = frameCount_ == depth_;
  frameCount_ = std::min(frameCount_ + 1, depth_);
  framesSinceRestart_ = std::min(framesSinceRestart_ + 1, kBackgroundPeakFrames);
}

float* LevelHistory::Row(int age) {
  const int row = (newestRow_ - age + kRows) % kRows;
  return rows_.data() + static_cast<std::size_t>(row) * points_;
}

void LevelHistory::StoreNewest(std::span<const float> levels) {
  const float* __restrict given = levels.data();
  const float* __restrict previous = Row(1);
  float* __restrict newest = Row(0);
  for (std::size_t i = 0; i < points_; ++i) newest[i] = given[i] == kKeepLevel ? previous[i] : given[i];
}

void LevelHistory::Display(std::size_t begin, std::size_t end) {
  const std::size_t count = end - begin;
  float* display = displayLevel_.data() + begin;
  switch (mode_) {
    case DisplayMode::Normal:
      std::copy_n(Row(0) + begin, count, display);
      break;
    case DisplayMode::Peak:
      Maximum(display, Row(0) + begin, count);
      break;
    case DisplayMode::Max:
      std::copy_n(Row(0) + begin, count, display);
      for (int age = 1; age <= frameCount_; ++age) Maximum(display, Row(age) + begin, count);
      break;
    case DisplayMode::Avg:
      UpdateAverage(begin, end);
      break;
  }
}

// The mean of the decibels, not of the powers. The sum runs on: doubles hold the sum of 21 levels exactly but
// for the last bits of levels near 0 dB, so nothing drifts.
void LevelHistory::UpdateAverage(std::size_t begin, std::size_t end) {
  const float* __restrict newest = Row(0);
  const float* __restrict leaving = Row(depth_ + 1);
  double* __restrict sums = sums_.data();
  float* __restrict display = displayLevel_.data();
  const double share = 1.0 / (frameCount_ + 1);
  if (frameCount_ == 0) {
    for (std::size_t i = begin; i < end; ++i) {
      sums[i] = newest[i];
      display[i] = newest[i];
    }
  } else if (windowFull_) {
    for (std::size_t i = begin; i < end; ++i) {
      sums[i] += static_cast<double>(newest[i]) - leaving[i];
      display[i] = static_cast<float>(sums[i] * share);
    }
  } else {
    for (std::size_t i = begin; i < end; ++i) {
      sums[i] += newest[i];
      display[i] = static_cast<float>(sums[i] * share);
    }
  }
}

}  // namespace spectrino
