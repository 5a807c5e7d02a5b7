// The numbers behind the picture: columns, visible range, scale.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "dsp/ColumnMap.h"
#include "dsp/LevelScale.h"
#include "dsp/VisibleRange.h"
#include "dsp/WaterfallColourIndex.h"
#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

FrameGeometry WholeLine(int points, double leftMHz, double rightMHz, double plotWidth) {
  return RadioGeometry(VisibleRadioPoints(points, 0, 1, 0), points, leftMHz, rightMHz, plotWidth);
}

/// The part of a sound-card line in view.
FrameGeometry Shown(int points, int rate, double radioFreqMHz, double ifOffsetKHz, int zoom, int pan,
                    double width) {
  return SoundCardGeometry(VisiblePoints(points, rate, ifOffsetKHz, zoom, pan), points, rate,
                           radioFreqMHz - ifOffsetKHz / 1000, width);
}

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::FloatEq;

constexpr int kRate = 48000;

TEST(ColumnMap, ARadiosLastPointIsInTheLastPixelAtEveryWidth) {
  for (const int points : {2, 3, 475, 689, 1024, 2049}) {
    std::vector<float> levels(static_cast<std::size_t>(points) + 1, -120);
    levels.back() = -20;
    for (int width = points < 3 ? 1 : 2; width < 2000; width += 7) {
      std::vector<float> pixels(static_cast<std::size_t>(width));
      ColumnMap().Map(WholeLine(points, 14.0, 14.2, width), 1, points + 1, levels, pixels);
      ASSERT_EQ(pixels.back(), -20) << points << " at " << width;
    }
  }
}

TEST(ColumnMap, ACarrierOfOnePointShowsAtEveryZoomAndWidth) {
  ColumnMap trace;
  for (const int points : {256, 8192, 65536}) {
    for (const int zoom : {1, 2, 4, 8, 16, 32}) {
      for (const int width : {1, 300, 1279, 1280, 3840}) {
        const auto geometry = Shown(points, kRate, 14.1, 3, zoom, 0, width);
        std::vector<float> pixels(static_cast<std::size_t>(width));
        for (int share = 0; share <= 8; ++share) {
          const int carrier = std::min(
              geometry.FirstPoint + (geometry.LastPoint - geometry.FirstPoint) * share / 8, points - 1);
          std::vector<float> levels(static_cast<std::size_t>(points), -120);
          levels[static_cast<std::size_t>(carrier)] = -20;
          trace.Map(geometry, 0, points, levels, pixels);
          const auto peak = std::ranges::max_element(pixels);
          ASSERT_EQ(*peak, -20) << points << " zoom " << zoom << " width " << width << " point " << carrier;
          const double x = std::min(geometry.PointX(carrier), width - 0.5);
          ASSERT_NEAR(static_cast<double>(peak - pixels.begin()) + 0.5, x, 0.5001);
        }
      }
    }
  }
}

TEST(ColumnMap, ARadioLineReachesFromEdgeToEdge) {
  // Points 1..3 at x = 0, 4 and 8; index 0 is no point.
  const std::vector<float> levels = {99, -10, -50, -30};
  std::vector<float> pixels(8);
  ColumnMap().Map(WholeLine(3, 14.0, 14.2, 8), 1, 4, levels, pixels);
  EXPECT_THAT(pixels, ElementsAre(-10, FloatEq(-25), FloatEq(-35), FloatEq(-45), -50, FloatEq(-42.5F),
                                  FloatEq(-37.5F), -30));
}

TEST(ColumnMap, NoValueIsNeverDrawnNorDrawnAcross) {
  ColumnMap trace;
  std::vector<float> pixels(4);
  // Two points a pixel: the other one counts; both without value: nothing.
  const std::vector<float> dense = {kUndrawnLevel, -500,          kUndrawnLevel, kUndrawnLevel,
                                    -90,           kUndrawnLevel, -80,           -70};
  trace.Map(Shown(8, kRate, 0, 0, 1, 0, 4), 0, 8, dense, pixels);
  EXPECT_THAT(pixels, ElementsAre(-500, kUndrawnLevel, -90, -70));
  const std::vector<float> sparse = {-90, kUndrawnLevel};
  trace.Map(Shown(2, kRate, 0, 0, 1, 0, 4), 0, 2, sparse, pixels);
  EXPECT_THAT(pixels, ElementsAre(-90, kUndrawnLevel, kUndrawnLevel, kUndrawnLevel));
  trace.Map(WholeLine(1, 14, 14.2, 4), 1, 2, sparse, pixels);
  EXPECT_THAT(pixels, Each(kUndrawnLevel)) << "one point makes no line";
  // A line longer than what is known of it: data only where points are.
  trace.Map(WholeLine(5, 14, 14.2, 4), 1, 3, std::vector<float>{0, -60, -50}, pixels);
  EXPECT_THAT(pixels, ElementsAre(-60, -50, kUndrawnLevel, kUndrawnLevel));
}

TEST(ColumnMap, FollowsAChangeOfGeometryOfTheSameWidth) {
  ColumnMap trace;
  std::vector<float> levels(64, -100);
  levels[40] = -10;
  std::vector<float> pixels(64);
  trace.Map(Shown(64, kRate, 0, 0, 1, 0, 64), 0, 64, levels, pixels);
  EXPECT_EQ(pixels[40], -10);
  trace.Map(Shown(64, kRate, 0, 0, 2, 0, 64), 0, 64, levels, pixels);
  EXPECT_EQ(pixels[40], -100);
  EXPECT_EQ(pixels[48], -10);
}

TEST(ColourIndex, RoundsAndStaysInThePalette) {
  EXPECT_EQ(WaterfallColourIndex(-83, -153, -13), 128);
  EXPECT_EQ(WaterfallColourIndex(-82.8F, -153, -13), 128);
  EXPECT_EQ(WaterfallColourIndex(-82.6F, -153, -13), 129);
  EXPECT_EQ(WaterfallColourIndex(kEmptyLevel, -153, -13), 0);
  EXPECT_EQ(WaterfallColourIndex(50, -153, -13), 256);
  EXPECT_EQ(WaterfallColourIndex(-20, -20, -20), 0);
}

TEST(VisibleRange, IsShiftedBackFromItsEnds) {
  const struct {
    double IfOffsetKHz;
    int Zoom, Pan, First, Last;
  } cases[] = {{9, 1, 700, 0, 8192},
               {12.5 / 8192 * 48, 32, 0, 4108 - 128, 4108 + 128},  // halves to even
               {6, 8, -100, 5020 - 512, 5020 + 512},
               {1e12, 4, 1 << 30, 8192 - 2048, 8192},
               {-1e12, 32, -(1 << 30), 0, 256}};
  for (const auto& c : cases) {
    const auto geometry = Shown(8192, kRate, 14.1, c.IfOffsetKHz, c.Zoom, c.Pan, 1000);
    EXPECT_EQ(std::pair(geometry.FirstPoint, geometry.LastPoint), std::pair(c.First, c.Last));
    EXPECT_EQ(geometry.CentrePoint, (c.First + c.Last) / 2);
  }
}

TEST(LevelScale, FollowsReferenceRangeAndBinWidth) {
  LevelScale scale;
  UpdateLevelScale(scale, -60, 1000000, BinWidthDb(44100, 13));
  EXPECT_EQ(scale, (LevelScale{-153, -13, 140, 20}));
  UpdateLevelScale(scale, -60, 1, BinWidthDb(192000, 8));
  EXPECT_EQ(scale, (LevelScale{-131, -111, 40, 5}));
  UpdateLevelScale(scale, -57, 12, BinWidthDb(11025, 16));
  EXPECT_EQ(scale, (LevelScale{-165, -111, 40, 5})) << "an unknown divisor moves the bottom alone";
  EXPECT_EQ(RangeDb(12), 0);
}

}  // namespace
}  // namespace spectrino
