// The whole picture, fed with frames as the run cycle feeds it.
#include <gtest/gtest.h>

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "display/BandStrip.h"
#include "display/Colours.h"
#include "display/Overlays.h"
#include "display/PanDisplay.h"
#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

constexpr int kPoints = 4096;

/// A display with one carrier in silence.
struct Bench {
  PanDisplay Display;
  DisplayOptions Options;
  SpectrumLine Line;
  FrameGeometry Geometry;

  Bench(QSize size, double ratio, int waterfallSel = 3, double spanMHz = 0.048) {
    Options.WaterfallSel = waterfallSel;
    Display.SetOptions(Options);
    Display.Resize(size, ratio);
    Line.Levels.assign(kPoints + 1, -140);
    Line.PointCount = kPoints;
    Line.BottomLevel = -153;
    Line.TopLevel = -13;
    Geometry = {0, kPoints, kPoints / 2, 14.074 - spanMHz / 2, 14.074 + spanMHz / 2, Display.PlotWidth()};
    ScaleState scale;
    scale.Geometry = Geometry;
    scale.LabelCentreMHz = 14.074;
    scale.FrequencyKnown = true;
    scale.Running = true;
    Display.DrawScale(scale);
  }

  void Show() { Display.ShowFrame({Line, Geometry, Line.Levels, {}}); }

  QImage Paint() {
    const PlotLayout& layout = Display.Layout();
    QImage image(std::max(1, layout.PictureWidth), std::max(1, layout.Height), QImage::Format_RGB32);
    image.setDevicePixelRatio(layout.Scale);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    Display.Paint(painter);
    return image;
  }
};

struct CarrierCase {
  int Width;
  double Ratio;
  int Point;
};
class Carrier : public testing::TestWithParam<CarrierCase> {};

/// One point of 4096, far narrower than a pixel or not: it shows in trace and waterfall where the mapping
/// puts it.
TEST_P(Carrier, ShowsInTraceAndWaterfallAtItsFrequency) {
  const CarrierCase& c = GetParam();
  Bench bench(QSize(c.Width, 400), c.Ratio);
  bench.Line.Levels[static_cast<std::size_t>(c.Point)] = -20;
  bench.Show();
  const QImage image = bench.Paint();
  const PlotLayout& layout = bench.Display.Layout();
  const int x = static_cast<int>(bench.Display.Geometry().PointX(c.Point));
  ASSERT_EQ(layout.Width, static_cast<int>(std::lround(c.Width * c.Ratio)));
  const auto brightness = [&](int column) {
    return qGreen(image.pixel(column, layout.TopMargin + layout.Px(12)));
  };
  const auto heat = [&](int column) { return qRed(image.pixel(column, layout.WaterfallTop)); };
  EXPECT_GT(brightness(x), 200);
  EXPECT_EQ(heat(x), 255);
  for (int i = 0; i < layout.Width * layout.Height; ++i)
    ASSERT_NE(image.pixel(i % layout.Width, i / layout.Width), 0xFFFF00FFU) << i << " is not painted";
  for (int column = 10; column < layout.PlotWidth - 10; ++column) {
    if (std::abs(column - x) < 6 * c.Ratio) continue;
    EXPECT_LT(brightness(column), 90) << column;
    EXPECT_EQ(heat(column), 0) << column;
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, Carrier,
                         testing::Values(CarrierCase{1176, 1, 1000}, CarrierCase{624, 1, 3000},
                                         CarrierCase{624, 1.5, 1}, CarrierCase{700, 2, 4095},
                                         CarrierCase{3000, 2, 2222}, CarrierCase{727, 1.25, 2048}));

TEST(PanDisplayTest, AStoppedPictureIsDimmedAndDatedUntilItLives) {
  for (const QSize size : {QSize(620, 200), QSize(1176, 560)}) {
    Bench bench(size, 1);
    std::ranges::fill(bench.Line.Levels, -40);
    for (int row = 0; row < 60; ++row) bench.Show();
    EXPECT_FALSE(bench.Display.Prepare().isEmpty());
    const QImage live = bench.Paint();
    bench.Display.SetStopped(std::chrono::system_clock::time_point(std::chrono::seconds(50602)));
    const PlotLayout& layout = bench.Display.Layout();
    EXPECT_EQ(bench.Display.Prepare(), QRegion(0, 0, layout.Width, layout.Height));
    const QImage stopped = bench.Paint();
    int amber = 0;
    for (int y = 0; y < stopped.height(); ++y) {
      for (int x = 0; x < stopped.width(); ++x) {
        const QRgb was = live.pixel(x, y);
        const QRgb is = stopped.pixel(x, y);
        // Brighter than before is the label alone.
        if (qRed(is) > qRed(was) + 60 && qGreen(is) > qBlue(is) + 20) ++amber;
        if (qGreen(was) > 150 && qRed(is) < 120) {
          ASSERT_LT(qGreen(is), 0.6 * qGreen(was)) << x << ' ' << y;
        }
      }
    }
    EXPECT_GT(amber, 200) << "\"Last line 14:03:22 UTC\"";
    bench.Display.SetStopped(std::nullopt);
    EXPECT_EQ(bench.Paint(), live);
  }
}

/// In PEAK the trace keeps what was; the waterfall shows when it was, unless it is to follow the trace.
TEST(PanDisplayTest, TheWaterfallTakesTheNewestLevelsOrTheTraces) {
  for (const bool live : {true, false}) {
    Bench bench(QSize(500, 300), 1);
    DisplayOptions options;
    options.WaterfallSel = 3;
    options.WFLive = live;
    bench.Display.SetOptions(options);
    const std::vector<float> peak(bench.Line.Levels.size(), -50);
    bench.Display.ShowFrame({bench.Line, bench.Geometry, peak, {}, bench.Line.Levels});
    const double newest = bench.Display.Layout().WaterfallTop;
    EXPECT_EQ(bench.Display.At({200, newest}).Level(), live ? -140 : -50);
    EXPECT_EQ(bench.Display.At({200, 50}).Level(), -50) << "the trace, either way";
    bench.Display.ShowFrame({bench.Line, bench.Geometry, peak, {}});
    EXPECT_EQ(bench.Display.At({200, newest}).Level(), -50) << "one set of levels is both";
  }
}

TEST(PanDisplayTest, MarkerStandsOnItsCarrierAndFlagsStaySideBySide) {
  Bench bench(QSize(800, 400), 1);
  const std::vector<PlotMarker> markers{
      {.FreqMHz = 14.080, .PassbandLowMHz = 14.0802, .PassbandHighMHz = 14.083, .Label = "A"},
      {.FreqMHz = 14.080, .ColourIndex = 8, .FilterColourIndex = 8, .Label = "B"},
      {.FreqMHz = 7.0, .Label = "away"}};
  bench.Display.SetMarkers(markers);
  bench.Show();
  const QImage plain = Bench(QSize(800, 400), 1).Paint();
  const QImage image = bench.Paint();
  const PlotLayout& layout = bench.Display.Layout();
  const int x = static_cast<int>(bench.Display.Geometry().FrequencyToPixel(14.080));
  const QRgb a = ColourAt(kColoursK4, ColourIndex::Mark);
  const QRgb b = ColourAt(kColoursK4, ColourIndex::SubReceiver);
  EXPECT_EQ(image.pixel(x, layout.PlotBottom() - 3), b) << "the later marker's line";
  EXPECT_EQ(image.pixel(x + 1, layout.TopMargin), a) << "flag A at the top";
  EXPECT_EQ(image.pixel(x + 1, layout.TopMargin + 16), b) << "flag B below it";
  const int shaded = static_cast<int>(bench.Display.Geometry().FrequencyToPixel(14.0815));
  const int y = layout.TopMargin + 40;
  EXPECT_NE(image.pixel(shaded, y), plain.pixel(shaded, y));
  const int beside = static_cast<int>(bench.Display.Geometry().FrequencyToPixel(14.0835));
  EXPECT_EQ(image.pixel(beside, y), plain.pixel(beside, y));
}

TEST(PanDisplayTest, HoverTellsFrequencyAndLevelOfPlotAndWaterfall) {
  Bench bench(QSize(800, 400), 2);
  bench.Line.Levels[2048] = -71;
  bench.Show();
  const double middle = bench.Display.PlotWidth() / 2 / 2;
  EXPECT_NEAR(bench.Display.At({middle, 50}).TuneFreqMHz(), 14.074, 1e-5);
  EXPECT_EQ(bench.Display.At({middle, 50}).Level(), -71);
  const double newestRow = bench.Display.Layout().WaterfallTop / 2.0 + 0.1;
  EXPECT_EQ(bench.Display.At({middle, newestRow - 1}).TuneFreqMHz(), 0) << "between plot and waterfall";
  EXPECT_EQ(bench.Display.At({middle, newestRow}).Level(), -71);
  EXPECT_EQ(bench.Display.At({799, 50}).TuneFreqMHz(), 0) << "label column";

  EXPECT_EQ(HoverText({14.08415, true, -71.2F, true, {}}), "14.084.150  -71 dBm");
  EXPECT_EQ(HoverText({14.08415, true, 71.2F, false, {}}), "14.084.150  71");
  EXPECT_EQ(HoverText({0.00125, false, -71.2F, true, {}}), "+1.25K  -71 dBm");
  const std::chrono::system_clock::time_point taken{std::chrono::hours(45) + std::chrono::seconds(62)};
  EXPECT_EQ(HoverText({-0.00125, false, kUndrawnLevel, true, taken}), "-1.25K  21:01:02Z");
}

/// The band plan's strip hides nothing of the plot, and its edges stand where the scale has their
/// frequencies, zoomed and panned.
TEST(PanDisplayTest, TheBandPlanStandsAtItsFrequencies) {
  const BandPlan plan(
      {{"20 m",
        14.0,
        14.078,
        {{14.0, 14.072, BandUse::Cw}, {14.074, 14.0741, BandUse::Beacons}, {14.076, 14.078, BandUse::Fm}}}});
  for (const auto& [size, ratio] :
       {std::pair{QSize(800, 400), 1.0}, {QSize(700, 200), 1.0}, {QSize(900, 500), 2.0}}) {
    for (const double spanMHz : {0.048, 0.012, 0.3}) {
      Bench bench(size, ratio, 2, spanMHz);
      const int plotHeight = bench.Display.Layout().PlotHeight;
      bench.Display.SetBandPlan(plan);
      const PlotLayout layout = bench.Display.Layout();
      ASSERT_GT(layout.StripHeight, 0);
      EXPECT_EQ(layout.PlotHeight + layout.StripHeight, plotHeight);
      const QImage image = bench.Paint();
      const int y = layout.PlotBottom() + layout.StripHeight - 1;
      const auto shown = [&](double mhz) {
        const double x = bench.Display.Geometry().FrequencyToPixel(mhz);
        return x >= 1 && x < layout.PlotWidth - 1 ? image.pixel(static_cast<int>(x), y) : 0;
      };
      const double pixelMHz = spanMHz / layout.PlotWidth;
      const QRgb ground = ColourAt(kColoursK4, ColourIndex::Background);
      for (const auto& [edge, side, use] : {std::tuple{14.072, -1, BandUse::Cw}, {14.076, 1, BandUse::Fm}}) {
        const QRgb inside = shown(edge + 3 * side * pixelMHz);
        EXPECT_TRUE(inside == 0 || inside == Mix(ground, BandUseColour(use), 0.75)) << edge;
        EXPECT_NE(inside, shown(edge - 3 * side * pixelMHz));
      }
      const QRgb beyond = image.pixel(static_cast<int>(bench.Display.Geometry().FrequencyToPixel(14.0795)),
                                      layout.PlotBottom() + layout.StripHeight / 2);
      EXPECT_GT(qRed(beyond), 2 * qGreen(beyond)) << "out of band";
      const double strip = (layout.PlotBottom() + layout.StripHeight / 2) / ratio;
      const auto text = [&](double mhz) {
        return bench.Display.At({bench.Display.Geometry().FrequencyToPixel(mhz) / ratio, strip}).Text();
      };
      EXPECT_TRUE(text(14.07399).ends_with("  20 m")) << text(14.07399);
      EXPECT_TRUE(text(14.077).ends_with("  20 m FM")) << text(14.077);
      EXPECT_TRUE(text(14.0795).ends_with("  out of band")) << text(14.0795);
      bench.Display.SetBandPlan({});
      EXPECT_EQ(bench.Paint(), Bench(size, ratio, 2, spanMHz).Paint());
    }
  }
}

TEST(PanDisplayTest, TextsStayInsideThePlot) {
  const PlotLayout layout = LayoutPlot(300, 200, 1, 0, {});
  QImage image(300, 200, QImage::Format_RGB32);
  QPainter painter(&image);
  const QFont font = DisplayFont(10, 1);
  TextCache texts;
  const OverlayPen pen{painter, layout, kColoursK4, texts};
  for (int x = 0; x < layout.PlotWidth; x += 7) {
    const QRect box = DrawHover(pen, {x, 0, 200, {}}, "14.084.150  -71 dBm", font);
    EXPECT_TRUE(HoverStrip(layout, box.height()).contains(box)) << "more is not painted again";
    EXPECT_GE(box.left(), 0);
    EXPECT_LT(box.right(), layout.PlotWidth);
    EXPECT_FALSE(box.contains(x, box.center().y())) << "text on its own line";
  }
  const std::string longText(200, 'W');
  EXPECT_LT(DrawInfo(pen, longText, font).right(), layout.PlotWidth);
}

/// Painted over the last picture within what Prepare names, every frame looks as if it were painted whole, on
/// a window part of a larger picture too.
TEST(PanDisplayTest, PaintingOnlyWhatChangedGivesTheWholePicture) {
  Bench bench(QSize(800, 400), 1);
  QImage window(900, 500, QImage::Format_RGB32);
  window.fill(Qt::magenta);
  const QRect place(QPoint(37, 61), QSize(800, 400));
  for (int frame = 0; frame < 40; ++frame) {
    for (int i = 0; i <= kPoints; ++i)
      bench.Line.Levels[static_cast<std::size_t>(i)] = static_cast<float>(-120 + (i * 7 + frame * 13) % 11);
    bench.Line.Levels[static_cast<std::size_t>(100 * frame + 20)] = -30;
    bench.Display.SetHover(frame > 20 ? std::optional(QPointF(300, 100)) : std::nullopt);
    if (frame == 30) bench.Display.SetInfoText("Span 48 kHz");
    if (frame >= 32) {
      StatusArea status;
      status.Shown = frame < 39;
      status.MainLine = "AGC-S " + std::to_string(frame);
      status.ScaleLeft = status.ScaleRight = frame < 36 ? "-3kHz" : "-25kHz";
      bench.Display.SetStatus(status, 14.08, 14.083);
    }
    bench.Show();
    const QRegion changed = bench.Display.Prepare();
    EXPECT_EQ(changed.contains(QPoint(790, 8)),
              frame == 0 || frame == 21 || frame == 30 || frame == 32 || frame == 36 || frame == 39)
        << frame;
    {
      window.paintEngine()->setSystemClip(changed.translated(place.topLeft()));
      QPainter painter(&window);
      painter.translate(place.topLeft());
      bench.Display.Paint(painter);
    }
    ASSERT_EQ(window.copy(place), bench.Paint()) << frame;
  }
}

/// What a K4 shows while its operator clicks, tunes, points and drags the window's edge, with frames between
/// a repaint's request and its painting: after each request the screen is what a whole repaint would give.
TEST(PanDisplayTest, NoGhostOfTheInsetStaysWhateverComesBetweenRepaints) {
  Bench parts(QSize(800, 400), 1), whole(QSize(800, 400), 1);
  std::minstd_rand random(7);
  const auto below = [&random](int count) {
    return static_cast<int>(random() % static_cast<unsigned>(count));
  };
  QImage screen;
  QRegion pending;
  const auto paintParts = [&] {
    if (pending.isEmpty()) return;
    screen.paintEngine()->setSystemClip(pending);
    QPainter painter(&screen);
    parts.Display.Paint(painter);
  };
  double centreMHz = 14.074, dialMHz = 14.08;
  for (int step = 0; step < 600; ++step) {
    const int width = 700 + 40 * below(5);
    const QPointF pointer(below(800), below(400));
    const bool leaves = below(3) == 0;
    const int what = below(12);
    for (Bench* bench : {&parts, &whole}) {
      switch (what) {
        case 0:  // the radio follows with its next line
          bench->Geometry.LeftMHz += dialMHz - centreMHz;
          bench->Geometry.RightMHz += dialMHz - centreMHz;
          break;
        case 1:
          bench->Display.Resize(QSize(width, 400), 1);
          bench->Geometry.PlotWidth = bench->Display.PlotWidth();
          break;
        case 2:
          bench->Display.SetHover(leaves ? std::nullopt : std::optional(pointer));
          break;
        case 3: {
          const std::vector<PlotMarker> markers{{.FreqMHz = dialMHz, .Label = "A"}};
          bench->Display.SetMarkers(markers);
          break;
        }
        case 4:
        case 5:
        case 6: {
          StatusArea area;
          area.Shown = area.Main.Shown = true;
          area.MainLine = "AGC-S " + std::to_string(step);
          area.Main.History = {{-120, -90, -120}};
          area.Main.LowMHz = dialMHz - 0.005;
          area.Main.HighMHz = dialMHz + 0.005;
          bench->Display.SetStatus(area, dialMHz, dialMHz + 0.003);
          break;
        }
        case 10:
          bench->Options.Inset = static_cast<InsetPlace>(step % 5);
          bench->Display.SetOptions(bench->Options);
          bench->Geometry.PlotWidth = bench->Display.PlotWidth();
          break;
        default:
          break;
      }
      bench->Line.Levels[static_cast<std::size_t>(1 + (step * 97) % kPoints)] = -60;
      bench->Show();
    }
    if (what == 0) centreMHz = dialMHz;
    if (what == 7) dialMHz = centreMHz + (below(9) - 4) * 0.005;
    if (what == 8) {  // the event loop paints late: what was asked for, as it is by now
      paintParts();
      whole.Paint();
      continue;
    }
    if (what == 9) continue;
    const QSize size(parts.Display.Layout().PictureWidth, parts.Display.Layout().Height);
    pending = parts.Display.Prepare();
    if (screen.size() != size) {
      screen = QImage(size, QImage::Format_RGB32);
      pending = screen.rect();
    }
    paintParts();
    [[maybe_unused]] const QRegion same = whole.Display.Prepare();
    ASSERT_EQ(screen, whole.Paint()) << step << " after " << what;
  }
}

TEST(PanDisplayTest, RepaintsOnlyForWhatChanged) {
  Bench bench(QSize(400, 300), 1);
  EXPECT_FALSE(bench.Display.Prepare().isEmpty());
  EXPECT_TRUE(bench.Display.Prepare().isEmpty());
  bench.Display.SetInfoText("Span 48 kHz");
  EXPECT_FALSE(bench.Display.Prepare().isEmpty());
  bench.Display.SetInfoText("Span 48 kHz");
  EXPECT_TRUE(bench.Display.Prepare().isEmpty());
  const QImage empty = bench.Paint();
  bench.Line.Levels[2048] = -20;
  bench.Show();
  EXPECT_FALSE(bench.Display.Prepare().isEmpty());
  EXPECT_NE(bench.Paint(), empty);
  bench.Display.ClearFrames();
  EXPECT_EQ(bench.Paint(), empty) << "Start begins with an empty picture";
  for (const QSize size : {QSize(0, 0), QSize(30, 20), QSize(400, 90)}) {
    bench.Display.Resize(size, 1);
    bench.Show();
    bench.Paint();
  }
}

}  // namespace
}  // namespace spectrino
