// The status inset's places and the passbands' grips: what they take, and what they leave to the signals.
#include <gtest/gtest.h>

#include "display/FilterGrips.h"
#include "display/InsetPlace.h"
#include "display/PanDisplay.h"

namespace spectrino {
namespace {

using enum InsetPlace;

StatusArea AreaOf(bool needsDualPanOff) {
  StatusArea area;
  area.Shown = true;
  area.MainFreq = "14.074.000";
  area.SubFreq = "14.080.000";
  area.MainLine = area.SubLine = "AGC-S PRE1 ATT3 APF NR NB ANT:TX NTC-A/M";
  area.NeedsDualPanOff = needsDualPanOff;
  for (MiniPan* pan : {&area.Main, &area.Sub}) {
    pan->Shown = true;
    pan->History = {{-120, -90, -120}};
    pan->LowMHz = 14.07;
    pan->HighMHz = 14.08;
  }
  return area;
}

TEST(Inset, StandsWhereThereIsRoomAndNeverOnThePlotWhereItTakesItsOwn) {
  const struct {
    QSize Size;
    int WaterfallSel;
    InsetPlace Wanted, Place;
  } pictures[] = {{{1800, 860}, 3, Automatic, Beside},       {{909, 450}, 2, Automatic, Beside},
                  {{790, 1040}, 3, Automatic, Above},        {{590, 740}, 0, Automatic, Above},
                  {{613, 207}, 3, Automatic, OverWaterfall}, {{613, 207}, 1, Automatic, OverPlot},
                  {{613, 207}, 3, Beside, Beside},           {{613, 207}, 2, Above, Above},
                  {{400, 207}, 3, Beside, OverWaterfall},    {{613, 150}, 0, Above, OverPlot},
                  {{1800, 860}, 0, OverWaterfall, OverPlot}, {{1800, 860}, 3, OverPlot, OverPlot}};
  for (const auto& picture : pictures) {
    for (const double scale : {1.0, 1.5, 2.0}) {
      for (const bool needsDualPanOff : {false, true}) {
        SCOPED_TRACE(testing::Message() << picture.Size.width() << " wants " << int(picture.Wanted) << " at "
                                        << scale << (needsDualPanOff ? " warned" : ""));
        PanDisplay display;
        DisplayOptions options;
        options.WaterfallSel = picture.WaterfallSel;
        options.Inset = picture.Wanted;
        display.SetOptions(options);
        display.Resize(picture.Size, scale);
        const PlotLayout bare = display.Layout();
        ScaleState state;
        state.Geometry = {0, 100, 50, 14.05, 14.098, display.PlotWidth()};
        state.FrequencyKnown = true;
        display.DrawScale(state);
        const StatusArea area = AreaOf(needsDualPanOff);
        display.SetStatus(area, 14.074, 14.0767);
        const PlotLayout& layout = display.Layout();
        EXPECT_EQ(layout.Inset, picture.Place);
        EXPECT_EQ(display.Geometry().PlotWidth, layout.PlotWidth) << "the one mapping";
        EXPECT_GE(layout.PlotHeight, 45 * scale);

        TextCache texts;
        const QFont font = DisplayFont(9.5, scale);
        const StatusPlaces places =
            PlaceStatus(layout, display.Geometry(), 14.074, 14.0767, area, texts, font);
        const QRect whole(0, 0, layout.PictureWidth, layout.Height);
        EXPECT_TRUE(whole.contains(places.Bounds()));
        EXPECT_TRUE(places.Bounds().contains(places.Grip));
        ASSERT_GE(places.Rows.size(), 2U);
        if (needsDualPanOff) {
          EXPECT_EQ(places.Rows[1].front().Text, "DUAL Pan to be OFF");
        }
        for (const StatusRow& row : places.Rows)
          for (const StatusWord& word : row)
            EXPECT_LE(word.X + texts.Get(word.Text, font).Size.width(), places.Texts.width()) << word.Text;
        EXPECT_EQ(places.Sub.Box.isEmpty(), needsDualPanOff);
        const QRect plot(0, layout.TopMargin, layout.Width, layout.PlotHeight);
        const QRect waterfall(0, layout.WaterfallTop, layout.Width, layout.WaterfallHeight);
        EXPECT_EQ(plot.intersects(places.Bounds()), picture.Place == OverPlot);
        EXPECT_EQ(waterfall.intersects(places.Bounds()), picture.Place == OverWaterfall);

        // A click on it where nothing lies beneath tunes nowhere.
        if (picture.Place == Beside || picture.Place == Above) {
          const QPointF grip = QPointF(places.Grip.center()) / scale;
          EXPECT_TRUE(display.At(grip).OnInsetGrip());
          EXPECT_EQ(display.At(grip).TuneFreqMHz(), 0);
        }
        EXPECT_TRUE(
            display.At(QPointF(layout.PlotWidth / 2.0, layout.PlotBottom() - 2) / scale).TuneFreqMHz() >
            14.07);
        display.SetStatus({}, 0, 0);
        EXPECT_EQ(display.Layout(), bare) << "what it took is given back";
      }
    }
  }
}

TEST(Inset, StaysWhereItIsWhileTheRadioIsTuned) {
  PanDisplay display;
  DisplayOptions options;
  options.Inset = Automatic;
  options.WaterfallSel = 3;
  display.SetOptions(options);
  for (const QSize size : {QSize(1200, 600), QSize(600, 800), QSize(613, 207)}) {
    display.Resize(size, 1);
    ScaleState state;
    state.Geometry = {0, 100, 50, 14.05, 14.098, display.PlotWidth()};
    display.DrawScale(state);
    display.SetStatus(AreaOf(false), 14.074, 14.0767);
    const PlotLayout layout = display.Layout();
    for (double mhz = 14.0; mhz < 14.2; mhz += 0.0013) {
      state.Geometry.LeftMHz = mhz - 0.024;
      state.Geometry.RightMHz = mhz + 0.024;
      display.DrawScale(state);
      StatusArea area = AreaOf(false);
      area.Transmitting = area.Bset = static_cast<int>(mhz * 1e4) % 3 == 0;
      display.SetStatus(area, mhz, mhz + 0.0027);
      ASSERT_EQ(display.Layout(), layout) << mhz;
    }
  }
}

PlotMarker MarkerAt(double mhz, double lowMHz, double highMHz) {
  PlotMarker marker;
  marker.FreqMHz = mhz;
  marker.PassbandLowMHz = lowMHz;
  marker.PassbandHighMHz = highMHz;
  return marker;
}

TEST(FilterGrip, IsNarrowAndLeavesTheRestToClicks) {
  constexpr auto kLow = MiniPanPart::LowEdge, kHigh = MiniPanPart::HighEdge, kIn = MiniPanPart::Passband,
                 kNone = MiniPanPart::None;
  for (const double scale : {1.0, 2.0}) {
    const int width = static_cast<int>(1000 * scale);
    const PlotLayout layout = LayoutPlot(width, static_cast<int>(300 * scale), scale, 3, {.Label = 0});
    const FrameGeometry geometry{0, 100, 50, 14.0, 14.1, static_cast<double>(width)};  // 100 Hz a pixel
    std::vector<PlotMarker> markers(2);
    markers[0] = MarkerAt(14.02, 14.0203, 14.0230);
    markers[1] = MarkerAt(14.0222, 14.0225, 14.0252);
    const double middle = layout.TopMargin + layout.PlotHeight / 2.0;
    const struct {
      double X;
      MiniPanPart Part;
      bool Sub = false;
    } places[] = {{198, kNone},   {199.5, kLow},    {204.5, kLow},      {206, kIn},
                  {215, kIn},     {220, kIn},       {222, kLow, true},  {229, kHigh},
                  {233.5, kHigh}, {235, kIn, true}, {251, kHigh, true}, {256.5, kNone}};
    for (const auto& place : places) {
      const PlotFilterHit hit = FilterGripAt({place.X * scale, middle}, layout, geometry, markers);
      EXPECT_EQ(hit.Part, place.Part) << place.X << " at " << scale;
      EXPECT_EQ(hit.Sub, place.Sub) << place.X;
    }
    EXPECT_EQ(FilterGripAt({203 * scale, layout.WaterfallTop + 1.0}, layout, geometry, markers).Part, kNone);
    markers.resize(1);
    markers[0].PassbandHighMHz = 14.0203 + 0.0011;
    for (double x = 190; x < 230; x += 0.5)
      EXPECT_EQ(FilterGripAt({x * scale, middle}, layout, geometry, markers).Part, kNone) << "too narrow";
    markers[0] = MarkerAt(13.99, 13.9999, 14.0030);
    EXPECT_EQ(FilterGripAt({0.5, middle}, layout, geometry, markers).Part, kIn) << "its edge is not shown";
  }
}

}  // namespace
}  // namespace spectrino
