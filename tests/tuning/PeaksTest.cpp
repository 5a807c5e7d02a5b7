#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "tuning/Peaks.h"

namespace spectrino {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// 14.000 to 14.100 MHz at -120 dB, 100 Hz a point. firstIndex 1: a radio's line, its last point on the edge.
SpectrumLine Band(int firstIndex) {
  SpectrumLine line{.Levels = {},
                    .PointCount = 1000 + firstIndex,
                    .FirstIndex = firstIndex,
                    .LeftMHz = 14,
                    .RightMHz = 14.1};
  line.Levels.assign(static_cast<std::size_t>(line.EndIndex()), -120.0F);
  return line;
}

/// A signal with flanks 6 dB lower; lean: dB by which the right one exceeds the left.
void Put(SpectrumLine& line, int point, float level, float lean = 0) {
  float* top = &line.Levels[static_cast<std::size_t>(line.FirstIndex + point)];
  top[-1] = level - 6 - lean / 2;
  top[0] = level;
  top[1] = level - 6 + lean / 2;
}

TEST(Peaks, SpotPutsTheStrongestSignalWhereItBelongs) {
  const struct {
    int Mode;
    Passband Filter;
    double DialMHz, SpotMHz;  ///< 0: nothing to spot
  } spots[] = {
      {mode::kCw, {-250, 250}, 14.0198, 14.02},      // on the dial
      {mode::kAm, {-3000, 3000}, 14.018, 14.02},     // on the dial
      {mode::kUsb, {200, 2800}, 14.018, 14.0185},    // into the middle
      {mode::kLsb, {-2800, -200}, 14.022, 14.0215},  // into the middle
      {mode::kCw, {-250, 250}, 14.05, 14.050025},    // between two points
      {mode::kCw, {-20, 20}, 14.02003, 14.02},       // a filter narrower than a point
      {mode::kUsb, {200, 2800}, 14.0195, 14.0185},   // not the stronger one beside it
      {mode::kUsb, {200, 2800}, 14.026, 14.0225},    // within one passband beside
      {mode::kUsb, {200, 2800}, 14.03, 0},           // farther away
      {mode::kCw, {-250, 250}, 14.06, 0},            // 5 dB above the floor
      {mode::kCw, {-250, 250}, 14.07, 14.07},        // 7 dB above it
      {mode::kUsb, {200, 2800}, 0, 0},
      {mode::kUsb, {200, 2800}, 13.9, 0},
      {mode::kUsb, {kNan, 0}, 14.02, 0},
  };
  for (const int firstIndex : {0, 1}) {
    SpectrumLine line = Band(firstIndex);
    Put(line, 200, -80);
    Put(line, 240, -60);
    Put(line, 500, -80, 6);
    Put(line, 600, -115);
    Put(line, 700, -113);
    for (const auto& [mode, filter, dialMHz, spotMHz] : spots)
      EXPECT_NEAR(SpotFrequency(line, filter, dialMHz, mode).value_or(0), spotMHz, 1e-9) << dialMHz;
  }
}

TEST(Peaks, SpotStaysWhereThereIsOnlyNoise) {
  std::minstd_rand random(3);
  std::exponential_distribution<double> power(1);
  const auto noise = [&](int averaged) {
    SpectrumLine line = Band(0);
    for (float& level : line.Levels) {
      double sum = 0;
      for (int i = 0; i < averaged; ++i) sum += 10 * std::log10(power(random) + 1e-12);
      level = static_cast<float>(-120 + sum / averaged);
    }
    return line;
  };
  int jumps = 0;
  for (int trial = 0; trial < 200; ++trial) {
    for (const int averaged : {1, 4, 10}) {
      SpectrumLine line = noise(averaged);
      jumps += SpotFrequency(line, {200, 2800}, 14.05, mode::kUsb) ? 1 : 0;
      Put(line, 515, -105);
      EXPECT_NEAR(SpotFrequency(line, {200, 2800}, 14.05, mode::kUsb).value_or(0), 14.05, 1e-4);
    }
  }
  EXPECT_LE(jumps, 3) << "of 600";
}

std::vector<double> Walk(const SpectrumLine& line, double fromMHz, int direction) {
  std::vector<double> found;
  for (auto peak = FindPeak(line, fromMHz, direction); peak && found.size() < 9;
       peak = FindPeak(line, peak->FreqMHz, direction))
    found.push_back(std::round(peak->FreqMHz * 1e4) / 1e4);
  return found;
}

TEST(Peaks, WalkFromSignalToSignalAndStopAtTheLast) {
  for (const int firstIndex : {0, 1}) {
    SpectrumLine line = Band(firstIndex);
    Put(line, 100, -90);
    Put(line, 300, -105);
    Put(line, 304, -100);
    Put(line, 500, -111);  // 9 dB above the noise
    for (int i = 700; i < 709; ++i)
      line.Levels[static_cast<std::size_t>(i + firstIndex)] = -70;  // overloaded
    line.Levels.back() = -80;
    std::vector<double> expected{14.01, 14.03, 14.0304, 14.0704, firstIndex == 0 ? 14.0999 : 14.1};
    EXPECT_EQ(Walk(line, 13, +1), expected);
    EXPECT_EQ(FindPeak(line, 13, +1)->Level, -90);
    std::reverse(expected.begin(), expected.end());
    EXPECT_EQ(Walk(line, 1e9, -1), expected);
    EXPECT_FALSE(FindPeak(line, kNan, -1));
  }
}

TEST(Peaks, BrokenLinesHaveNone) {
  SpectrumLine empty = Band(1), cut = Band(1), turned = Band(0);
  empty.Levels.assign(empty.Levels.size(), kEmptyLevel);
  cut.Levels.resize(500);
  std::swap(turned.LeftMHz, turned.RightMHz);
  for (const SpectrumLine& line : {empty, cut, turned, SpectrumLine{}}) {
    EXPECT_FALSE(SpotFrequency(line, {-250, 250}, 14.02, mode::kCw));
    EXPECT_FALSE(FindPeak(line, 13, 1));
  }
}

}  // namespace
}  // namespace spectrino
