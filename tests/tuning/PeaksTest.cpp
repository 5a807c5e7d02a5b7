// Signals found in lines of both kinds: a transform's points and a radio's.
#include "tuning/Peaks.h"

#include <gtest/gtest.h>

namespace spectrino {
namespace {

/// 1000 points over 14.000..14.100 MHz at -120, with signals where the test puts them.
struct Line : SpectrumLine {
  explicit Line(bool radio) {
    FirstIndex = radio ? 1 : 0;
    PointCount = radio ? 1001 : 1000;  // a point each 100 Hz
    LeftMHz = 14.0;
    RightMHz = 14.1;
    Levels.assign(static_cast<std::size_t>(EndIndex()), -120.0F);
    for (std::size_t i = 0; i < Levels.size(); i += 3) Levels[i] = -123;
  }
  /// A hill that falls by 3 a point on both sides.
  void Put(double mhz, float level) {
    const int top = FirstIndex + static_cast<int>((mhz - LeftMHz) * 1e4 + 0.5);
    for (int i = FirstIndex; i < EndIndex(); ++i) {
      float& here = Levels[static_cast<std::size_t>(i)];
      here = std::max(here, level - 3.0F * static_cast<float>(std::abs(i - top)));
    }
  }
};

class Peaks : public testing::TestWithParam<bool> {};

TEST_P(Peaks, AreFoundOneAfterAnotherInBothDirections) {
  Line line(GetParam());
  line.Put(14.020, -60);
  line.Put(14.021, -80);  // a shoulder of the one before
  line.Put(14.060, -100);
  line.Put(14.080, -112);  // not high enough
  double at = 14.0;
  std::vector<double> up, down;
  while (const auto peak = FindPeak(line, at, +1)) up.push_back(at = peak->FreqMHz);
  for (at = 14.1; const auto peak = FindPeak(line, at, -1);) down.push_back(at = peak->FreqMHz);
  ASSERT_EQ(up.size(), 2U);
  ASSERT_EQ(down.size(), 2U);
  EXPECT_NEAR(up[0], 14.020, 1e-9);
  EXPECT_NEAR(up[1], 14.060, 1e-9);
  EXPECT_NEAR(down[0], 14.060, 1e-9);
  EXPECT_EQ(FindPeak(line, 14.0, +1)->Level, -60);
  EXPECT_FALSE(FindPeak(line, 1e9, +1));
  EXPECT_FALSE(FindPeak(SpectrumLine{}, 14.0, +1));
}

TEST_P(Peaks, SpotBringsTheStrongestOfThePassbandWhereItIsHeard) {
  Line line(GetParam());
  line.Put(14.0505, -70);
  line.Put(14.0520, -50);
  line.Put(14.0700, -20);  // outside
  struct Case {
    int Mode;
    double WidthHz;
    double ExpectedMHz;
  };
  for (const Case& c : {Case{mode::kUsb, 2700, 14.052 - 0.00135}, Case{mode::kCw, 1000, 14.0505},
                        Case{mode::kAm, 6000, 14.052}}) {
    RadioState radio;
    radio.MainFreqMHz = 14.0501;
    radio.RadioMode = c.Mode;
    radio.MainBandwidthHz = c.WidthHz;
    const auto spot = SpotFrequency(line, radio);
    ASSERT_TRUE(spot) << c.Mode;
    EXPECT_NEAR(*spot, c.ExpectedMHz, 1e-9) << c.Mode;
  }
  RadioState elsewhere;
  elsewhere.MainFreqMHz = 7.05;
  EXPECT_FALSE(SpotFrequency(line, elsewhere));
  EXPECT_FALSE(SpotFrequency(SpectrumLine{}, elsewhere));
}

INSTANTIATE_TEST_SUITE_P(Sources, Peaks, testing::Bool());

}  // namespace
}  // namespace spectrino
