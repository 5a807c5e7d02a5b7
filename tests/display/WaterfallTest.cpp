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
  WaterfallImage waterfall;
  waterfall.Resize(2, 3);
  waterfall.AddLine(std::vector<float>{-256, -128}, kRow);
  WaterfallRow heights = kRow;
  heights.UnitsPerDb = 2;
  heights.BottomLevel = 0;
  heights.TopLevel = 160;
  waterfall.AddLine(std::vector<float>{40, 60}, heights);
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
  WaterfallImage waterfall;
  waterfall.Resize(37, 11);
  QImage plain(37, 11, QImage::Format_RGB32);
  plain.fill(qRgb(0, 0, 0));
  std::mt19937 random(1);
  std::uniform_int_distribution<int> level(-256, 0);
  for (int line = 0; line < 40; ++line) {
    std::vector<float> levels(37);
    for (float& value : levels) value = static_cast<float>(level(random));
    waterfall.AddLine(levels, kRow);
    PlainAddLine(plain, levels);
    ASSERT_EQ(Picture(waterfall), plain) << "after line " << line;
  }
}

TEST(WaterfallTest, LinesKeepTheScaleAndBrightnessTheyWereDrawnWith) {
  WaterfallImage waterfall;
  waterfall.Resize(1, 4);
  const std::vector<float> level{-156};
  waterfall.AddLine(level, kRow);
  WaterfallRow later = kRow;
  later.BottomLevel = -156;
  waterfall.AddLine(level, later);
  later = kRow;
  later.Dimmed = true;
  waterfall.AddLine(level, later);
  waterfall.Resize(2, 3);
  const QImage image = Picture(waterfall);
  const QRgb full = WaterfallPalette()[100];
  EXPECT_EQ(image.pixel(1, 0), qRgb(qRed(full) / 2, qGreen(full) / 2, qBlue(full) / 2));
  EXPECT_EQ(image.pixel(1, 1), WaterfallPalette()[0]);
  EXPECT_EQ(image.pixel(1, 2), full);
}

TEST(WaterfallTest, ResizingKeepsTheNewestLinesInPlace) {
  WaterfallImage waterfall;
  waterfall.Resize(100, 20);
  std::vector<float> levels(100, -256);
  levels[30] = 0;
  for (int line = 0; line < 33; ++line) waterfall.AddLine(levels, kRow);
  waterfall.Resize(200, 8);
  EXPECT_EQ(waterfall.RowCount(), 8);
  waterfall.Resize(200, 30);
  EXPECT_EQ(waterfall.RowCount(), 8);
  const QImage image = Picture(waterfall);
  for (int y = 0; y < 8; ++y) {
    EXPECT_EQ(image.pixel(60, y), WaterfallPalette()[256]) << y;
    EXPECT_EQ(image.pixel(61, y), WaterfallPalette()[256]) << y;
    EXPECT_EQ(image.pixel(59, y), WaterfallPalette()[0]) << y;
  }
  EXPECT_FALSE(waterfall.RowAt(8));
  waterfall.Resize(0, 0);
  waterfall.AddLine({}, kRow);
  EXPECT_EQ(waterfall.RowCount(), 0);
}

TEST(WaterfallTest, FollowPutsOlderLinesAtTheirFrequencies) {
  WaterfallImage waterfall;
  waterfall.SetEmptyColour(qRgb(1, 2, 3));
  waterfall.Resize(100, 3);
  std::vector<float> levels(100, -256);
  levels[50] = 0;  // 14.050
  waterfall.AddLine(levels, kRow);
  WaterfallRow tuned = kRow;
  tuned.LeftMHz += 0.02;
  tuned.RightMHz += 0.02;
  waterfall.AddLine(std::vector<float>(100, -256), tuned);
  EXPECT_EQ(Picture(waterfall).pixel(50, 1), WaterfallPalette()[256]) << "plain scroll";
  EXPECT_NEAR(waterfall.FrequencyAt(50.5, 1), 14.0505, 1e-9);
  waterfall.SetFollow(true);
  const QImage image = Picture(waterfall);
  EXPECT_EQ(image.pixel(30, 1), WaterfallPalette()[256]);
  EXPECT_EQ(image.pixel(50, 1), WaterfallPalette()[0]);
  EXPECT_EQ(image.pixel(85, 1), qRgb(1, 2, 3)) << "never received";
  EXPECT_EQ(waterfall.LevelAt(30, 1), 0);
  EXPECT_EQ(waterfall.LevelAt(85, 1), kUndrawnLevel);
  EXPECT_NEAR(waterfall.FrequencyAt(30.5, 1), 14.0505, 1e-9);
}

TEST(WaterfallTest, TimesStandWhereMinutesChange) {
  using namespace std::chrono;
  WaterfallImage waterfall;
  waterfall.Resize(1, 300);
  const auto start = sys_days(2024y / June / 1) + 23h + 58min;
  for (int second = 0; second < 150; ++second) {
    WaterfallRow row = kRow;
    row.TakenUtc = start + seconds(second);
    waterfall.AddLine(std::vector<float>{0}, row);
  }
  EXPECT_THAT(TimeMarks(waterfall, 10),
              ElementsAre(TimeMark{0, "00:00Z"}, TimeMark{30, "23:59Z"}, TimeMark{90, "23:58Z"}));
  EXPECT_THAT(TimeMarks(waterfall, 40), ElementsAre(TimeMark{0, "00:00Z"}, TimeMark{90, "23:58Z"}));
}

}  // namespace
}  // namespace spectrino
