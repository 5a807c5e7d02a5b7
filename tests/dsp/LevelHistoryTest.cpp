#include "dsp/LevelHistory.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <deque>
#include <random>
#include <vector>

#include "dsp/kernels/Kernels.h"
#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

float Show(LevelHistory& history, float level, DisplayMode mode, int depth) {
  history.Push(std::vector<float>{level}, mode, depth, false);
  return history.DisplayLevel()[0];
}

/// The history as one would write it down: every frame kept, everything looked at each time.
struct PlainHistory {
  std::deque<std::vector<float>> frames;
  std::deque<std::vector<float>> peakFrames;
  std::vector<float> display, backgroundPeak;
  DisplayMode mode = DisplayMode::Max;
  std::size_t depth = 0;
  std::vector<float> newest;

  explicit PlainHistory(std::size_t points) : display(points, kEmptyLevel), newest(points, kEmptyLevel) {}
  void Restart() {
    frames.clear();
    peakFrames.clear();
    std::ranges::fill(display, kEmptyLevel);
  }
  void Push(const std::vector<float>& levels, DisplayMode newMode, int newDepth, bool wantPeak) {
    if (newMode != mode) std::ranges::fill(display, kEmptyLevel);
    if (newMode != mode || static_cast<std::size_t>(newDepth) != depth) frames.clear();
    mode = newMode;
    depth = static_cast<std::size_t>(newDepth);
    for (std::size_t i = 0; i < levels.size(); ++i) {
      if (levels[i] != kKeepLevel) newest[i] = levels[i];
    }
    frames.push_back(newest);
    if (frames.size() > depth + 1) frames.pop_front();
    peakFrames.push_back(newest);
    if (peakFrames.size() > 17) peakFrames.pop_front();
    backgroundPeak.clear();
    for (std::size_t i = 0; i < levels.size(); ++i) {
      double sum = 0;
      float largest = kEmptyLevel;
      for (const auto& frame : frames) {
        sum += frame[i];
        largest = std::max(largest, frame[i]);
      }
      if (mode == DisplayMode::Max) display[i] = largest;
      if (mode == DisplayMode::Avg) display[i] = static_cast<float>(sum / static_cast<double>(frames.size()));
      if (mode == DisplayMode::Peak) display[i] = std::max(display[i], newest[i]);
      if (mode == DisplayMode::Normal) display[i] = newest[i];
      float peak = kEmptyLevel;
      for (const auto& frame : peakFrames) peak = std::max(peak, frame[i]);
      if (wantPeak) backgroundPeak.push_back(peak);
    }
  }
};

class HistoryByKernel : public ::testing::TestWithParam<const Kernels*> {};
INSTANTIATE_TEST_SUITE_P(Kernels, HistoryByKernel,
                         ::testing::ValuesIn(UsableKernels().begin(), UsableKernels().end()),
                         [](const auto& test) { return std::string(test.param->Name); });

TEST_P(HistoryByKernel, ShowsWhatAHistoryOfEveryFrameWouldShow) {
  // More than two chunks of points, the last one short; long runs in one mode, and changes of everything.
  constexpr int kPoints = 1100;
  std::mt19937 random(3);
  std::uniform_real_distribution<float> level(-150, -20);
  LevelHistory history(*GetParam());
  history.Reset(kPoints);
  PlainHistory plain(kPoints);
  DisplayMode mode = DisplayMode::Max;
  int depth = 20;
  bool wantPeak = true;
  for (int frame = 0; frame < 800; ++frame) {
    if (random() % 60 == 0) mode = static_cast<DisplayMode>(random() % 4);
    if (random() % 60 == 0) depth = static_cast<int>(random() % 21);
    if (random() % 60 == 0) wantPeak = !wantPeak;
    if (random() % 90 == 0) {
      history.Restart();
      plain.Restart();
    }
    if (random() % 90 == 0) {
      history.ClearDisplay();
      std::ranges::fill(plain.display, kEmptyLevel);
      ASSERT_EQ(history.DisplayLevel()[0], kEmptyLevel);
    }
    std::vector<float> levels(kPoints);
    for (float& l : levels) l = random() % 20 == 0 ? kKeepLevel : level(random);
    history.Push(levels, mode, depth, wantPeak);
    plain.Push(levels, mode, depth, wantPeak);
    for (std::size_t i = 0; i < kPoints; ++i) {
      ASSERT_NEAR(history.DisplayLevel()[i], plain.display[i], 1e-4)
          << "frame " << frame << " point " << i << " mode " << static_cast<int>(mode) << " depth " << depth;
    }
    ASSERT_TRUE(std::ranges::equal(history.BackgroundPeak(), plain.backgroundPeak)) << frame;
  }
}

TEST(LevelHistory, AnAverageOverAnEveningDoesNotDrift) {
  LevelHistory history;
  history.Reset(1);
  for (int i = 0; i < 300'000; ++i)
    Show(history, i % 2 == 0 ? -0.0123456F : -149.98765F, DisplayMode::Avg, 20);
  for (int i = 0; i < 21; ++i) Show(history, -90, DisplayMode::Avg, 20);
  EXPECT_EQ(history.DisplayLevel()[0], -90);
}

TEST(LevelHistory, ResetEmptiesEveryCellForAnotherSize) {
  LevelHistory history;
  history.Reset(3);
  history.Push(std::vector<float>{-1, -2, -3}, DisplayMode::Max, 40, true);
  EXPECT_THAT(history.BackgroundPeak(), ElementsAre(-1, -2, -3));
  history.Reset(2);
  EXPECT_THAT(history.DisplayLevel(), ElementsAre(kEmptyLevel, kEmptyLevel));
  EXPECT_THAT(history.BackgroundPeak(), IsEmpty());
  history.Push(std::vector<float>{kKeepLevel, -7}, DisplayMode::Max, 5, false);
  EXPECT_THAT(history.DisplayLevel(), ElementsAre(kEmptyLevel, -7)) << "a point that never had a level";
}

}  // namespace
}  // namespace spectrino
