// Texts and positions: the S-meter's reading, the layout, the scale's lines and labels.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "display/PlotLayout.h"
#include "display/SMeterText.h"
#include "display/ScaleLines.h"

namespace spectrino {
namespace {

using testing::ElementsAre;

TEST(SMeter, ReadsAsOperatorsSayIt) {
  const std::tuple<int, const char*, const char*> levels[] = {
      {-73, "9.0", "S9"},    {-71, "9.0", "S9"},           {-70, "+5", "S9+5"}, {-66, "+5", "S9+5"},
      {-65, "+10", "S9+10"}, {-50, "+25", "S9+25"},        {-74, "9.0", "S9"},  {-82, "7.5", "S8"},
      {-85, "7.0", "S7"},    {-86, "7.0", "S7"},           {-124, ".5", "S1"},  {-127, ".0", "S0"},
      {-32768, ".0", "S0"},  {32767, "+32840", "S9+32840"}};
  for (const auto& [dBm, design0, design1] : levels) {
    EXPECT_EQ(SMeterText(static_cast<std::int16_t>(dBm), 0), design0) << dBm;
    EXPECT_EQ(SMeterText(static_cast<std::int16_t>(dBm), 1), design1) << dBm;
  }
}

TEST(Layout, WaterfallAndPlotFillThePicture) {
  const struct {
    int Height;
    double Scale;
    int WaterfallSel, Top, WaterfallHeight;
  } pictures[] = {{300, 1, 3, 160, 140}, {300, 1, 2, 230, 70}, {300, 1, 1, 265, 35},
                  {300, 1, 0, 300, 0},   {150, 1, 3, 100, 50}, {90, 1, 3, 90, 0},
                  {300, 2, 3, 200, 100}, {0, 1, 3, 0, 0},      {300, 1, 7, 300, 0}};
  for (const auto& c : pictures) {
    const PlotMargins margins{.Top = static_cast<int>(20 * c.Scale), .Gap = 16, .Label = 36};
    const PlotLayout layout = LayoutPlot(600, c.Height, c.Scale, c.WaterfallSel, margins);
    EXPECT_EQ(layout.WaterfallTop, c.Top);
    EXPECT_EQ(layout.WaterfallHeight, c.WaterfallHeight);
    EXPECT_EQ(layout.PlotWidth, 564);
    EXPECT_EQ(layout.PlotHeight, std::max(0, c.Height - c.WaterfallHeight - 16 - margins.Top));
  }
}

/// Letters six pixels wide, as a small font has them.
const LabelMetrics kMetrics{[](const std::string& text) { return 6 * static_cast<int>(text.size()); }, 12};

ScaleState Scale20m(double plotWidth, double spanMHz) {
  ScaleState scale;
  scale.Geometry = {0, 8192, 4096, 14.074 - spanMHz / 2, 14.074 + spanMHz / 2, plotWidth};
  for (std::size_t i = 0; i < scale.GridOffsetHz.size(); ++i)
    scale.GridOffsetHz[i] = 5000.0 * static_cast<double>(i);
  scale.LabelCentreMHz = 14.074;
  scale.FrequencyKnown = true;
  scale.Running = true;
  return scale;
}

std::vector<std::string> Texts(const std::vector<ScaleLabel>& labels) {
  std::vector<std::string> texts;
  for (const ScaleLabel& label : labels) texts.push_back(label.Text);
  return texts;
}

TEST(ScaleLinesTest, NameLevelsAndFrequencies) {
  const PlotLayout layout = LayoutPlot(1036, 500, 1, 0, {});
  const ScaleState scale = Scale20m(1000, 0.025);
  ScaleLines lines = PlaceScale(layout, scale, false, true, kMetrics);
  // Bottom -153 and top -13: both edges have lines, no label.
  EXPECT_THAT(Texts(lines.LevelLabels), ElementsAre("-20", "-40", "-60", "-80", "-100", "-120", "-140"));
  EXPECT_EQ(lines.Levels.size(), 9U);
  EXPECT_EQ(lines.Levels.front().Position, layout.TopMargin);
  EXPECT_EQ(lines.Levels.back().Position, layout.PlotBottom() - 1);
  EXPECT_THAT(Texts(lines.FrequencyLabels),
              ElementsAre("14.074.0", "14.079.0", "14.069.0", "14.084.0", "14.064.0"));

  ScaleState unknown = scale;
  unknown.FrequencyKnown = false;
  unknown.Running = false;
  lines = PlaceScale(layout, unknown, true, true, kMetrics);
  EXPECT_THAT(Texts(lines.FrequencyLabels), ElementsAre("+5K", "-5K", "+10K", "-10K"));
  EXPECT_EQ(std::ranges::count_if(lines.Levels, &ScaleLine::SubDivision), 28)
      << "every 4 dB between -153 and -13";

  ScaleState fine = scale;
  fine.Levels = {.BottomLevel = -153, .TopLevel = -133, .RangeUnits = 40, .GridStep = 5};
  lines = PlaceScale(layout, fine, true, false, kMetrics);
  EXPECT_THAT(Texts(lines.LevelLabels), ElementsAre("-135", "-140", "-145", "-150"));
  EXPECT_EQ(std::ranges::count_if(lines.Levels, &ScaleLine::SubDivision), 15) << "every dB between the lines";
  EXPECT_EQ(lines.FrequencyLabels.front().Text, "074.0");
}

/// A line stands where its own frequency is, whatever the zoom and offset; labels neither touch nor leave the
/// picture.
TEST(ScaleLinesTest, LinesStandAtTheFrequenciesTheyName) {
  const struct {
    double Scale, SpanMHz, ShiftMHz;  ///< shift: of the view against the labels' centre
    bool Zoomed = false;
  } views[] = {
      {1, 0.048, 0}, {1, 0.048, 0.011},          {1.5, 0.192, -0.03},       {2, 0.012, 0.0037},
      {1, 2.0, 0},   {1, 0.0013, 0.00477, true}, {2, 0.024, -0.0119, true}, {1.5, 0.006, 0.0005, true}};
  for (const auto& view : views) {
    const int width = static_cast<int>(640 * view.Scale);
    const PlotLayout layout = LayoutPlot(width, static_cast<int>(200 * view.Scale), view.Scale, 2, {});
    ScaleState scale = Scale20m(layout.PlotWidth, view.SpanMHz);
    scale.Geometry.LeftMHz += view.ShiftMHz;
    scale.Geometry.RightMHz += view.ShiftMHz;
    scale.Zoomed = view.Zoomed;
    const ScaleLines lines = PlaceScale(layout, scale, false, true, kMetrics);
    ASSERT_FALSE(lines.FrequencyLabels.empty());
    for (const ScaleLabel& label : lines.FrequencyLabels) {
      const double mhz = std::stoi(label.Text) + std::stod(label.Text.substr(3)) / 1000;
      const double x = scale.Geometry.FrequencyToPixel(mhz);
      EXPECT_NEAR(label.Left + label.Width / 2.0, x, 1) << label.Text;
      const auto at = [&](const ScaleLine& line) { return std::abs(line.Position - x) <= 1; };
      EXPECT_TRUE(std::ranges::any_of(lines.Frequencies, at)) << label.Text << " has no line";
      EXPECT_GE(label.Left, 0);
      EXPECT_LE(label.Left + label.Width, layout.Width);
    }
    if (view.Zoomed) {
      std::vector<double> middles{0};
      for (const ScaleLabel& label : lines.FrequencyLabels) middles.push_back(label.Left + label.Width / 2.0);
      middles.push_back(layout.PlotWidth);
      for (std::size_t n = 1; n < middles.size(); ++n)
        EXPECT_LT(middles[n] - middles[n - 1], 0.3 * layout.PlotWidth) << "nowhere without labels";
    }
    for (std::vector<ScaleLabel> labels : {lines.FrequencyLabels, lines.LevelLabels}) {
      std::ranges::sort(labels, {}, [](const ScaleLabel& l) { return l.Left + 10000 * l.Top; });
      for (std::size_t i = 1; i < labels.size(); ++i) {
        const bool beside = labels[i].Left > labels[i - 1].Left + labels[i - 1].Width;
        const bool below = labels[i].Top > labels[i - 1].Top + labels[i - 1].Height;
        EXPECT_TRUE(beside || below) << labels[i - 1].Text << " touches " << labels[i].Text;
      }
    }
  }
}

/// Zoomed: from 1 kHz to 10 MHz, wherever the view begins, each label is its line's frequency to the hertz.
TEST(ScaleLinesTest, ZoomedLabelsAreExactToTheStep) {
  const PlotLayout layout = LayoutPlot(1036, 500, 1, 0, {});
  for (const double centreMHz : {0.4721234, 14.0749876, 29.9999995, 432.1000005, 10368.123}) {
    for (double spanHz = 1000; spanHz <= 1e7; spanHz *= 1.37) {
      for (const bool known : {true, false}) {
        SCOPED_TRACE(testing::Message()
                     << centreMHz << " MHz, " << spanHz << " Hz" << (known ? "" : " unknown"));
        ScaleState scale = Scale20m(layout.PlotWidth, 1);
        scale.LabelCentreMHz = centreMHz;
        scale.Geometry.LeftMHz = centreMHz - 0.37 * spanHz / 1e6;
        scale.Geometry.RightMHz = centreMHz + 0.63 * spanHz / 1e6;
        scale.Zoomed = true;
        scale.FrequencyKnown = known;
        const ScaleLines lines = PlaceScale(layout, scale, false, true, kMetrics);
        ASSERT_GE(lines.FrequencyLabels.size(), 3U);
        ASSERT_GE(lines.Frequencies.size(), lines.FrequencyLabels.size());
        std::vector<double> named;
        for (const ScaleLabel& label : lines.FrequencyLabels) {
          std::string digits = label.Text;
          if (known && digits.rfind('.') != digits.find('.')) digits.erase(digits.rfind('.'), 1);
          const double hz = known ? std::stod(digits) * 1e6 : std::stod(digits) * 1e3;
          const double x = scale.Geometry.FrequencyToPixel(known ? hz / 1e6 : centreMHz + hz / 1e6);
          EXPECT_NEAR(label.Left + label.Width / 2.0, x, 0.51) << label.Text;
          named.push_back(std::round(hz * 100) / 100);
        }
        const double stepHz = named[1] - named[0];
        const double mantissa = std::pow(10, std::log10(stepHz) - std::floor(std::log10(stepHz) + 1e-9));
        EXPECT_LT(std::min({std::abs(mantissa - 1), std::abs(mantissa - 2), std::abs(mantissa - 5)}), 1e-6)
            << stepHz;
        for (std::size_t n = 0; n < named.size(); ++n) {
          EXPECT_NEAR(std::remainder(named[n], stepHz), 0, 1e-3) << named[n];
          EXPECT_NEAR(named[n], named[0] + static_cast<double>(n) * stepHz, 1e-3);
        }
      }
    }
  }
}

}  // namespace
}  // namespace spectrino
