// The trace's pixels: where the line runs, what is filled, what stays untouched.
#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "display/Colours.h"
#include "display/TracePainter.h"
#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

constexpr QRgb kPlain = 0xFF000055U;

struct Drawn {
  PlotLayout Layout;
  QImage Picture;

  [[nodiscard]] QRgb At(int x, int plotY) const { return Picture.pixel(x, Layout.TopMargin + plotY); }
  /// First row of the plot in this column that differs from the background; -1 without one.
  [[nodiscard]] int FirstTouched(int x) const {
    for (int y = 0; y < Layout.PlotHeight; ++y) {
      if (At(x, y) != kPlain) return y;
    }
    return -1;
  }
};

Drawn DrawTrace(const std::vector<float>& levels, bool fill, const std::vector<float>& peak = {}) {
  Drawn drawn;
  drawn.Layout =
      LayoutPlot(static_cast<int>(levels.size()) + 36, 120, 1, 0, {.Top = 4, .Gap = 16, .Label = 36});
  QImage plain(drawn.Layout.Width, drawn.Layout.Height, QImage::Format_RGB32);
  plain.fill(kPlain);
  TracePainter painter;
  painter.SetBackground(plain, drawn.Layout, kColoursK4, fill);
  const LevelScale scale{.BottomLevel = -150, .TopLevel = -50, .RangeUnits = 100, .GridStep = 20};
  painter.Draw(plain, {levels, peak}, scale);
  drawn.Picture = painter.Picture();
  return drawn;
}

TEST(TraceTest, FlatLineIsOnePixelAtItsLevelWithTheFillBelow) {
  const Drawn drawn = DrawTrace(std::vector<float>(64, -90.5F), true);
  ASSERT_EQ(drawn.Layout.PlotHeight, 100);
  const QRgb line = ColourAt(kColoursK4, ColourIndex::Signal);
  for (int x = 0; x < 64; ++x) {
    EXPECT_EQ(drawn.At(x, 40), line) << x;
    EXPECT_EQ(drawn.At(x, 39), kPlain) << x;
    EXPECT_NE(drawn.At(x, 42), kPlain) << x;
    EXPECT_GT(qGreen(drawn.At(x, 42)), qGreen(drawn.At(x, 99))) << "the fill fades downwards";
  }
  const std::vector<float> flat(64, -90.5F);
  EXPECT_EQ(DrawTrace(flat, true, std::vector<float>(64, -70.5F)).At(20, 20),
            ColourAt(kColoursK4, ColourIndex::BackgroundPeak));
  EXPECT_EQ(DrawTrace(flat, false, flat).At(20, 40), line) << "the trace lies over its peaks";
  EXPECT_EQ(drawn.Picture.pixel(10, 104), kPlain) << "below the plot";
  EXPECT_EQ(drawn.Picture.pixel(64, 44), kPlain) << "label column";
}

TEST(TraceTest, MissingAndOutlyingLevelsAreClippedNotJoined) {
  std::vector<float> levels(60, -100);
  for (std::size_t x = 20; x < 30; ++x) levels[x] = kUndrawnLevel;
  levels[40] = 500;          // above the plot
  levels[50] = kEmptyLevel;  // never filled
  const Drawn drawn = DrawTrace(levels, false);
  for (int x = 20; x < 30; ++x) EXPECT_EQ(drawn.FirstTouched(x), -1) << x;
  EXPECT_EQ(drawn.FirstTouched(19), 49);
  EXPECT_EQ(drawn.FirstTouched(30), 49);
  EXPECT_EQ(drawn.FirstTouched(40), 0);
  EXPECT_EQ(drawn.FirstTouched(45), 49);
  EXPECT_NE(drawn.At(49, 99), kPlain) << "the line leaves through the bottom";
  for (int x = 0; x < drawn.Picture.width(); ++x) {
    EXPECT_EQ(drawn.Picture.pixel(x, 3), kPlain);
    EXPECT_EQ(drawn.Picture.pixel(x, 104), kPlain);
  }
  EXPECT_EQ(DrawTrace(std::vector<float>(60, kUndrawnLevel), true).FirstTouched(30), -1);
}

/// An antialiased stroke covers as much as its length times its width, however steep it is. 5 %: the mean
/// over where the line crosses the pixels.
TEST(TraceTest, SlopesAreAsThickAsFlatLines) {
  for (const float perPixel : {0.0F, 0.4F, 1.05F, 1.5F}) {
    std::vector<float> levels(60);
    for (std::size_t x = 0; x < levels.size(); ++x) levels[x] = -60 - perPixel * static_cast<float>(x);
    const Drawn drawn = DrawTrace(levels, false);
    double covered = 0;
    for (int x = 10; x < 50; ++x) {
      for (int y = 0; y < 100; ++y) covered += (qGreen(drawn.At(x, y))) / 255.0;
    }
    EXPECT_NEAR(covered / 40 / std::hypot(1, perPixel), 1, 0.05) << perPixel;
  }
}

/// A frame over the last one touches only what changed: it must look as if it had been drawn alone.
TEST(TraceTest, FramesLeaveNothingBehind) {
  const PlotLayout layout = LayoutPlot(116, 120, 1, 0, {.Top = 4, .Gap = 16, .Label = 36});
  const LevelScale scale{.BottomLevel = -150, .TopLevel = -50, .RangeUnits = 100, .GridStep = 20};
  QImage plain(layout.Width, layout.Height, QImage::Format_RGB32);
  plain.fill(kPlain);
  std::mt19937 random(3);
  std::uniform_real_distribution<float> level(-190, -30);
  const auto column = [&] { return random() % 5 == 0 ? kUndrawnLevel : level(random); };
  for (const bool fill : {true, false}) {
    TracePainter running;
    running.SetBackground(plain, layout, kColoursK4, fill);
    for (int frame = 0; frame < 30; ++frame) {
      std::vector<float> levels(80);
      std::vector<float> peak(frame % 3 == 0 ? 80 : 0);
      std::ranges::generate(levels, column);
      std::ranges::generate(peak, column);
      running.Draw(plain, {levels, peak}, scale);
      ASSERT_EQ(running.Picture(), DrawTrace(levels, fill, peak).Picture)
          << "frame " << frame << " fill " << fill;
    }
  }
}

}  // namespace
}  // namespace spectrino
