// The waterfall against the plain way: block copies of a whole picture.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <chrono>
#include <random>
#include <vector>

#include "display/Legend.h"
#include "display/Overlays.h"
#include "display/Palettes.h"
#include "display/WaterfallImage.h"
#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

using testing::ElementsAre;

TEST(WaterfallColours, RunFromBlackOverBlueToRed) {
  EXPECT_EQ(WaterfallPalette()[0], qRgb(0, 0, 0));
  EXPECT_EQ(WaterfallPalette()[256], qRgb(255, 0, 0));
  EXPECT_EQ(WaterfallPalette()[106], qRgb(0, 255, 127)) << "150 degrees";
  EXPECT_EQ(WaterfallPalette()[34], qRgb(0, 76, 255)) << "222 degrees, full brightness";
  EXPECT_EQ(WaterfallPalette()[17], qRgb(0, 2, 130)) << "239 degrees, 51 %";
}

TEST(WaterfallColours, OfTheOtherPalettesRiseSteadilyFromDarkToBright) {
  for (const int palette : {palette::kInferno, palette::kCividis, palette::kGrey}) {
    const Palette& colours = WaterfallPalette(palette);
    for (std::size_t i = 1; i < colours.size(); ++i)
      ASSERT_GE(Luminance(colours[i]), Luminance(colours[i - 1])) << palette << " at " << i;
    EXPECT_LT(Luminance(colours.front()), 0.02) << palette;
    EXPECT_GT(Luminance(colours.back()), 0.75) << palette;
  }
  EXPECT_EQ(WaterfallPalette(palette::kInferno)[256], qRgb(0xFC, 0xFF, 0xA4));
  EXPECT_EQ(WaterfallPalette(-1), WaterfallPalette(palette::kHues));
  EXPECT_EQ(WaterfallPalette(4), WaterfallPalette(palette::kHues));
}

constexpr WaterfallRow kRow{
    .LeftMHz = 14.0, .RightMHz = 14.1, .TakenUtc = {}, .BottomLevel = -256, .TopLevel = 0};

/// A picture with the past behind it; each line's first and last level stand half a column inside its range.
struct Waterfall : WaterfallImage {
  Waterfall() : WaterfallImage(Past) {}
  void Add(const std::vector<float>& levels, WaterfallRow row) {
    const double half =
        levels.empty() ? 0 : (row.RightMHz - row.LeftMHz) / static_cast<double>(levels.size()) / 2;
    Past.Add(levels, {.FirstMHz = row.LeftMHz + half,
                      .LastMHz = row.RightMHz - half,
                      .ViewLeftMHz = row.LeftMHz,
                      .ViewRightMHz = row.RightMHz,
                      .TakenUtc = row.TakenUtc,
                      .BottomLevel = row.BottomLevel,
                      .TopLevel = row.TopLevel,
                      .UnitsPerDb = row.UnitsPerDb,
                      .Dimmed = row.Dimmed});
    row.Number = Past.At(0)->Line.Number;
    AddLine(levels, row);
  }
  LinePast Past;
};

QImage Picture(const WaterfallImage& waterfall) {
  QImage image(waterfall.Width(), waterfall.Height(), QImage::Format_RGB32);
  QPainter painter(&image);
  waterfall.Draw(painter, 0, 0);
  return image;
}

/// Scrolls the picture down by a row and draws the new one on top, pixel by pixel.
void PlainAddLine(QImage& image, const std::vector<float>& levels) {
  const QImage before = image.copy();
  QPainter painter(&image);
  painter.drawImage(QPoint(0, 1), before, QRect(0, 0, image.width(), image.height() - 1));
  painter.end();
  for (int x = 0; x < image.width(); ++x) {
    image.setPixel(x, 0,
                   WaterfallPalette()[static_cast<std::size_t>(levels[static_cast<std::size_t>(x)] + 256)]);
  }
}

TEST(WaterfallTest, AnotherLookColoursEveryLineAnew) {
  Waterfall waterfall;
  waterfall.Resize(2, 3);
  waterfall.Add({-256, -128}, kRow);
  WaterfallRow heights = kRow;
  heights.UnitsPerDb = 2;
  heights.BottomLevel = 0;
  heights.TopLevel = 160;
  waterfall.Add({40, 60}, heights);
  const QImage before = Picture(waterfall);
  waterfall.SetLook({.Palette = palette::kGrey, .FloorDb = 20, .ContrastPercent = 400});
  const QImage image = Picture(waterfall);
  EXPECT_EQ(image.pixel(0, 0), qRgb(0, 0, 0)) << "20 dB are 40 heights";
  EXPECT_EQ(image.pixel(1, 0), qRgb(128, 128, 128)) << "half of a quarter of 160";
  EXPECT_EQ(image.pixel(0, 1), qRgb(0, 0, 0));
  EXPECT_EQ(image.pixel(1, 1), qRgb(255, 255, 255));
  waterfall.SetLook({});
  EXPECT_EQ(Picture(waterfall), before);
}

TEST(WaterfallTest, TheLegendNamesLevelsThatStayApart) {
  EXPECT_THAT(LegendLevels({-122, -77}, 100, 13), ElementsAre(-80, -100)) << "-120 would be cut";
  EXPECT_THAT(LegendLevels({60, 150}, 400, 13), ElementsAre(140, 130, 120, 110, 100, 90, 80, 70));
  EXPECT_THAT(LegendLevels({-122, -77}, 20, 13), ElementsAre());
  EXPECT_THAT(LegendLevels({0, 0}, 400, 13), ElementsAre()) << "no line has come yet";
}

TEST(WaterfallTest, RingLooksLikeBlockCopies) {
  Waterfall waterfall;
  waterfall.Resize(37, 11);
  QImage plain(37, 11, QImage::Format_RGB32);
  plain.fill(qRgb(0, 0, 0));
  std::mt19937 random(1);
  std::uniform_int_distribution<int> level(-256, 0);
  for (int line = 0; line < 40; ++line) {
    std::vector<float> levels(37);
    for (float& value : levels) value = static_cast<float>(level(random));
    waterfall.Add(levels, kRow);
    PlainAddLine(plain, levels);
    ASSERT_EQ(Picture(waterfall), plain) << "after line " << line;
  }
}

TEST(WaterfallTest, LinesKeepTheScaleAndBrightnessTheyWereDrawnWith) {
  Waterfall waterfall;
  waterfall.Resize(2, 4);
  const std::vector<float> level{-156, -156};
  waterfall.Add(level, kRow);
  WaterfallRow later = kRow;
  later.BottomLevel = -156;
  waterfall.Add(level, later);
  later = kRow;
  later.Dimmed = true;
  waterfall.Add(level, later);
  const QRgb full = WaterfallPalette()[100];
  for (const int width : {2, 3}) {
    waterfall.Resize(width, 3);
    const QImage image = Picture(waterfall);
    EXPECT_EQ(image.pixel(1, 0), qRgb(qRed(full) / 2, qGreen(full) / 2, qBlue(full) / 2));
    EXPECT_EQ(image.pixel(1, 1), WaterfallPalette()[0]);
    EXPECT_EQ(image.pixel(1, 2), full);
  }
}

TEST(WaterfallTest, ResizingKeepsAllLinesInPlace) {
  Waterfall waterfall;
  waterfall.Resize(100, 20);
  std::vector<float> levels(100, -250);
  levels[30] = 0;
  for (int line = 0; line < 33; ++line) waterfall.Add(levels, kRow);
  waterfall.Resize(200, 8);
  EXPECT_EQ(waterfall.RowCount(), 8);
  waterfall.Resize(200, 40);
  EXPECT_EQ(waterfall.RowCount(), 33) << "what a lower picture did not show is not lost";
  const QImage image = Picture(waterfall);
  for (int y = 0; y < 33; ++y) {
    EXPECT_GT(qRed(image.pixel(60, y)) + qRed(image.pixel(61, y)), 255) << y;
    for (const int x : {57, 58, 63, 64}) EXPECT_EQ(image.pixel(x, y), WaterfallPalette()[6]) << x << ' ' << y;
  }
  EXPECT_FALSE(waterfall.RowAt(33));
  waterfall.Resize(0, 0);
  waterfall.Add({}, kRow);
  EXPECT_EQ(waterfall.RowCount(), 0);
}

/// 8192 points on 800 pixels: a signal of six points is one pixel at 1X; at 8X the rows that are there
/// already show its width, and where it is.
TEST(WaterfallTest, ZoomedRowsShowWhatOnePixelHid) {
  Waterfall waterfall;
  waterfall.SetFollow(true);
  waterfall.Resize(800, 5);
  std::vector<float> line(8192, -200.5F);
  for (int i = 4098; i < 4104; ++i) line[static_cast<std::size_t>(i)] = -20;
  const double pointMHz = 0.1 / 8192;
  waterfall.Past.Add(line, {.FirstMHz = 14.0,
                            .LastMHz = 14.0 + 8191 * pointMHz,
                            .ViewLeftMHz = 14.0,
                            .ViewRightMHz = 14.1,
                            .BottomLevel = -256,
                            .TopLevel = 0});
  const auto brightAt = [&waterfall](double left, double right) {
    waterfall.SetRange(left, right);
    const QImage image = Picture(waterfall);
    std::vector<int> bright;
    for (int x = 0; x < 800; ++x)
      if (waterfall.LevelAt(x, 0) > -21) bright.push_back(x);
    for (const int x : bright) EXPECT_EQ(image.pixel(x, 0), WaterfallPalette()[236]);
    return bright;
  };
  EXPECT_THAT(brightAt(14.0, 14.1), ElementsAre(400));
  EXPECT_THAT(brightAt(14.05 - 0.1 / 16, 14.05 + 0.1 / 16), ElementsAre(401, 402, 403, 404, 405));
}

TEST(WaterfallTest, ScrolledBackThePictureStandsAndNowIsWhatCameMeanwhile) {
  Waterfall waterfall;
  waterfall.Resize(4, 10);
  const auto add = [&waterfall](int count) {
    for (int i = 0; i < count; ++i) {
      const auto level = static_cast<float>(-static_cast<int>(waterfall.Past.Count()));
      waterfall.Add(std::vector<float>(4, level), kRow);
    }
  };
  add(50);
  EXPECT_FALSE(waterfall.ScrollBy(-3)) << "nothing is newer than now";
  EXPECT_TRUE(waterfall.ScrollBy(15));
  const QImage then = Picture(waterfall);
  EXPECT_EQ(waterfall.LevelAt(2, 0), -34);
  add(7);
  EXPECT_EQ(Picture(waterfall), then);
  EXPECT_TRUE(waterfall.ScrollBy(-2));
  EXPECT_EQ(waterfall.LevelAt(2, 0), -36) << "from where it stands";
  EXPECT_TRUE(waterfall.ScrollBy(1000));
  EXPECT_EQ(waterfall.LevelAt(2, 9), 0) << "as far as it goes";
  waterfall.ShowNow();
  EXPECT_EQ(waterfall.LevelAt(2, 0), -56);
  EXPECT_TRUE(waterfall.Live());
}

TEST(WaterfallTest, FollowPutsOlderLinesAtTheirFrequencies) {
  Waterfall waterfall;
  waterfall.SetEmptyColour(qRgb(1, 2, 3));
  waterfall.Resize(100, 3);
  std::vector<float> levels(100, -250);
  levels[50] = 0;  // 14.050
  waterfall.Add(levels, kRow);
  WaterfallRow tuned = kRow;
  tuned.LeftMHz += 0.02;
  tuned.RightMHz += 0.02;
  waterfall.Add(std::vector<float>(100, -250), tuned);
  EXPECT_EQ(Picture(waterfall).pixel(50, 1), WaterfallPalette()[256]) << "plain scroll";
  EXPECT_NEAR(waterfall.FrequencyAt(50.5, 1), 14.0505, 1e-9);
  waterfall.SetFollow(true);
  const QImage image = Picture(waterfall);
  EXPECT_EQ(image.pixel(30, 1), WaterfallPalette()[256]);
  EXPECT_EQ(image.pixel(50, 1), WaterfallPalette()[6]);
  EXPECT_EQ(image.pixel(85, 1), qRgb(1, 2, 3)) << "never received";
  EXPECT_EQ(waterfall.LevelAt(30, 1), 0);
  EXPECT_EQ(waterfall.LevelAt(85, 1), kUndrawnLevel);
  EXPECT_NEAR(waterfall.FrequencyAt(30.5, 1), 14.0505, 1e-9);
}

TEST(WaterfallTest, TimesStandWhereMinutesChange) {
  using namespace std::chrono;
  Waterfall waterfall;
  waterfall.Resize(2, 300);
  const auto start = sys_days(2024y / June / 1) + 23h + 58min;
  for (int second = 0; second < 150; ++second) {
    WaterfallRow row = kRow;
    row.TakenUtc = start + seconds(second);
    waterfall.Add(std::vector<float>(2, 0), row);
  }
  EXPECT_THAT(TimeMarks(waterfall, 10),
              ElementsAre(TimeMark{0, "00:00Z"}, TimeMark{30, "23:59Z"}, TimeMark{90, "23:58Z"}));
  EXPECT_THAT(TimeMarks(waterfall, 40), ElementsAre(TimeMark{0, "00:00Z"}, TimeMark{90, "23:58Z"}));
}

}  // namespace
}  // namespace spectrino
