// Nothing is drawn at a wrong frequency: signal, marker, pointer and waterfall agree in every set-up.
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "app/VfoMarkers.h"
#include "display/PanDisplay.h"
#include "dsp/VisibleRange.h"
#include "k4/K4Backend.h"
#include "k4/K4Status.h"
#include "run/RunBench.h"

namespace spectrino {
namespace {

constexpr double kBinMHz = 48000 / 1e6 / 8192;  // the widest
constexpr double kAboveDialHz = 400;            // in view at 32X
constexpr double kTwoPixelsAndABin = 2.0;

struct Receiver {
  const char* Name;
  CatControl Control;
  double DialMHz;
  double ZeroMHz[8];  // what arrives at 0 Hz, by mode below
};
constexpr int kModes[] = {mode::kLsb, mode::kUsb,         mode::kCw,   mode::kCwReverse,
                          mode::kAm,  mode::kDataReverse, mode::kData, mode::kFm};
// Offsets 1..5 kHz for CW, USB, LSB, AM, FSK; fixed centres 7.010, 7.015, 7.020, 7.025; global -6, of the
// link -2.
const Receiver kReceivers[] = {
    {"radio's IF", CatControl::HostIf, 7.015, {7.012, 7.013, 7.014, 7.014, 7.011, 7.010, 7.010, 7.011}},
    {"fixed", CatControl::FixedLo, 7.0155, {7.020, 7.015, 7.010, 7.010, 7.025, 7.020, 7.020, 7.025}},
    {"K3's IF", CatControl::HostK3If, 7.015, {7.023, 7.023, 7.023, 7.023, 7.023, 7.023, 7.023, 7.023}}};

struct MappedRun {
  MappedRun() {
    PanSettings& settings = Bench.State.Settings;
    settings.Bits = 5;
    settings.OffsetKHz = {1, 2, 3, 4, 5};
    settings.CenterKHz = {7010, 7015, 7020, 7025};
    settings.GlobalOffsetKHz = -6;
    Bench.Host.Offset = -2;
    DisplayOptions options;
    options.WaterfallSel = 3;
    options.WFFollow = true;
    Display.SetOptions(options);
    Display.Resize({1200, 500}, 1);
  }
  void Show(double hz) {
    const ZoomPlan& plan = Cycle.View().Plan;
    Bench.Input.Shared->Blocks.push_back(RunBench::Tone(1 << plan.FftBits, plan.SampleRate, hz));
    Cycle.Step();
  }
  /// Where a click on the strongest column tunes to.
  double SignalMHz(double y) {
    double strongest = -1000;
    double mhz = 0;
    for (int x = 0; x < Display.Layout().PlotWidth; ++x) {
      const PlotPointer pointer = Display.At(QPointF(x, y));
      if (pointer.Level() <= strongest) continue;
      strongest = pointer.Level();
      mhz = pointer.TuneFreqMHz();
    }
    return mhz;
  }
  /// 0..1 of the plot.
  double SignalX() {
    const FrameGeometry& shown = Display.Geometry();
    return shown.FrequencyToPixel(SignalMHz(100)) / shown.PlotWidth;
  }
  RunBench Bench;
  PanDisplay Display;
  RunCycle Cycle{Bench.State,
                 {Bench.Devices, Display, Bench.Store, Bench.User, Bench.Pump, Bench.Time, Bench.Times,
                  RigRouter({&Bench.HostKit, &Bench.RadioKit})}};
};

class Zooming : public testing::TestWithParam<bool> {};
TEST_P(Zooming, ASoundCardsSignalStandsWhereItIsInEveryMode) {
  for (const Receiver& receiver : kReceivers) {
    // A lower rate does not reach the others' signal.
    if (GetParam() && receiver.Control != CatControl::HostIf) continue;
    for (std::size_t m = 0; m < std::size(kModes); ++m) {
      for (const bool inverted : {false, true}) {
        MappedRun run;
        run.Bench.Host.FreqMHz = receiver.DialMHz;
        run.Bench.Host.Mode = kModes[m];
        run.Bench.State.Settings.Control = receiver.Control;
        run.Bench.State.Settings.Iq = inverted;
        run.Bench.State.Settings.TypZoom = GetParam();
        ASSERT_TRUE(run.Cycle.Start());
        const double signalMHz = receiver.DialMHz + kAboveDialHz / 1e6;
        const double hz = (signalMHz - receiver.ZeroMHz[m]) * 1e6 * (inverted ? -1 : 1);
        for (int pass = 0; pass < 3; ++pass) run.Show(hz);  // the first learns the frequency
        for (int zoom = 0; zoom <= 5; ++zoom) {
          SCOPED_TRACE(testing::Message() << receiver.Name << " mode " << kModes[m] << " zoom " << zoom
                                          << (inverted ? " inverted" : ""));
          // The pointer rests on the signal while the wheel zooms.
          const double x = run.SignalX();
          run.Cycle.ZoomAt(zoom, x);
          run.Show(hz);
          run.Show(hz);
          EXPECT_NEAR(run.SignalX(), x, 0.005);
          const FrameGeometry& shown = run.Display.Geometry();
          const double pixelMHz = (shown.RightMHz - shown.LeftMHz) / shown.PlotWidth;
          const double tolerance = pixelMHz * kTwoPixelsAndABin + kBinMHz;
          EXPECT_NEAR(run.SignalMHz(100), signalMHz, tolerance) << "trace";
          EXPECT_NEAR(run.SignalMHz(run.Display.Layout().WaterfallTop + 1), signalMHz, tolerance) << "row";
          const PlotMarker marker = VfoMarkers(run.Bench.State.Radio).front();
          const double dialX = shown.FrequencyToPixel(marker.FreqMHz);
          EXPECT_NEAR(run.Display.At(QPointF(dialX, 100)).TuneFreqMHz(), receiver.DialMHz, 1e-9) << "marker";
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(HighResolution, Zooming, testing::Bool());

TEST(Mapping, ARetuneLeavesOlderRowsAtTheirFrequencies) {
  MappedRun run;
  run.Bench.State.Settings.Control = CatControl::HostK3If;
  run.Bench.State.Settings.GlobalOffsetKHz = run.Bench.Host.Offset = 0;
  run.Bench.Host.FreqMHz = 7.015;
  ASSERT_TRUE(run.Cycle.Start());
  run.Show(3000);
  run.Show(3000);  // a signal on 7.018
  const double rowsTop = run.Display.Layout().WaterfallTop;
  run.Bench.Host.FreqMHz = 7.019;
  run.Show(3000);  // taken before the radio told of its new frequency: still 7.018
  EXPECT_NEAR(run.SignalMHz(rowsTop), 7.018, 1e-4);
  run.Show(-1000);  // the same signal from there
  EXPECT_NEAR(run.SignalMHz(rowsTop), 7.018, 1e-4);
  EXPECT_NEAR(run.SignalMHz(rowsTop + 1), 7.018, 1e-4) << "the row from before";
  EXPECT_NEAR(run.SignalMHz(100), 7.018, 1e-4);
  EXPECT_EQ(run.Display.At(QPointF(5, rowsTop - 3)).TuneFreqMHz(), 0) << "between plot and waterfall";
}

TEST(Mapping, ARadiosOwnLineStandsAtItsOwnEdges) {
  MappedRun run;
  run.Bench.State.Settings.Source.Id.Kind = SourceKind::K4;
  run.Bench.RadioRig.FreqMHz = 14.049;
  ASSERT_TRUE(run.Cycle.Start());
  run.Cycle.Step();
  // Fixed mode: the dial is not in the middle. Then the edges move while the dial stays.
  for (const auto& [low, high] : {std::pair{14.0, 14.1}, {14.03, 14.05}, {14.045, 14.245}}) {
    SpectrumLine line{
        std::vector<float>(401, -120.0F), 400, 1, low, (low + high) / 2, high, -140, -40, 1, {}, {}};
    line.Levels[301] = -50;  // three quarters of the way
    run.Bench.Radio.Next = line;
    run.Bench.Radio.Ready = true;
    run.Cycle.Step();
    const double signalMHz = low + 0.75 * (high - low);
    EXPECT_NEAR(run.SignalMHz(100), signalMHz, (high - low) / 399 * 1.5);
    EXPECT_NEAR(run.SignalMHz(run.Display.Layout().WaterfallTop), signalMHz, (high - low) / 399 * 1.5);
    const double x = (14.049 - low) / (high - low) * run.Display.Layout().PlotWidth;
    EXPECT_NEAR(run.Display.At(QPointF(x, 100)).TuneFreqMHz(), 14.049, 1e-9) << "a click on the marker";
  }
}

// Fixed mode, the dial beside the middle: zoomed at the pointer and dragged, each signal stands where it is.
TEST(Mapping, ARadiosOwnLineIsZoomedAndPannedByTheDisplay) {
  MappedRun run;
  run.Bench.State.Settings.Source.Id.Kind = SourceKind::K4;
  run.Bench.RadioRig.FreqMHz = 14.049;
  run.Bench.State.Settings.TypZoom = true;
  ASSERT_TRUE(run.Cycle.Start());
  run.Cycle.Step();
  for (const int points : {2, 3, 475, 1001}) {
    run.Cycle.SetZoom(0);
    const double stepMHz = 0.1 / (points - 1);
    SpectrumLine line{std::vector<float>(static_cast<std::size_t>(points) + 1, -120.0F),
                      points,
                      1,
                      14.0,
                      14.05,
                      14.1,
                      -140,
                      -40,
                      1,
                      {},
                      {}};
    const int signal = 1 + (points - 1) * 3 / 4;
    line.Levels[static_cast<std::size_t>(signal)] = -50;
    const double signalMHz = 14.0 + (signal - 1) * stepMHz;
    for (int zoom = 0; zoom < 6; ++zoom) {
      SCOPED_TRACE(testing::Message() << points << " points, zoom " << zoom);
      run.Bench.Radio.Next = line;
      run.Bench.Radio.Ready = true;
      run.Cycle.Step();
      const FrameGeometry& shown = run.Display.Geometry();
      run.Cycle.ZoomAt(zoom, shown.FrequencyToPixel(signalMHz) / shown.PlotWidth);
      EXPECT_TRUE(shown.Valid());
      EXPECT_GE(shown.FirstPoint, 1);
      EXPECT_LE(shown.LastPoint, points);
      EXPECT_NEAR(shown.ShownSpanHz(), std::max(1e5 / (1 << zoom), stepMHz * 1e6), stepMHz * 1e6);
      EXPECT_NEAR(run.SignalMHz(100), signalMHz, stepMHz * 0.51 + shown.ShownSpanHz() / 1e6 / 500);
      EXPECT_EQ(run.Cycle.Scale().State().Zoomed, zoom != 0);
    }
    // A drag reaches both ends and goes no farther.
    for (const double widths : {-100.0, 100.0}) {
      run.Cycle.Scale().PanBy(widths);
      EXPECT_EQ(run.Cycle.Scale().PanBy(widths), 0);
      const FrameGeometry& shown = run.Display.Geometry();
      EXPECT_NEAR(widths < 0 ? shown.LeftMHz : shown.RightMHz, widths < 0 ? 14.0 : 14.1, 1e-9);
    }
  }
}

struct FilterCase {
  int Mode;
  int WidthHz;
  int CentreHz;  // as the K4 tells it
  double LowHz, HighHz, NotchHz;
};

// CW pitch 600 Hz, manual notch at 900 Hz of audio.
class Filters : public testing::TestWithParam<FilterCase> {};
K4State ListeningWith(const FilterCase& filter) {
  K4State state;
  state.MainFreqMHz = 14.05;
  state.SubFreqMHz = 14.06;
  state.SplitOn = 1;
  state.RadioMode = state.SubRadioMode = filter.Mode;
  state.FilterBwMainHz = state.FilterBwSubHz = filter.WidthHz;
  state.IfShiftMainHz = state.IfShiftSubHz = filter.CentreHz;
  state.CwPitchHz = 600;
  state.NotchManualMain = state.NotchManualSub = 1;
  state.NotchPitchMain = state.NotchPitchSub = 900;
  return state;
}

TEST_P(Filters, OfAK4StandWhereItListens) {
  const FilterCase& filter = GetParam();
  const K4State state = ListeningWith(filter);
  RadioState radio;
  TellRadioState(state, radio);
  const std::vector<PlotMarker> markers = VfoMarkers(radio);
  ASSERT_EQ(markers.size(), 2U);
  for (const auto& [marker, dial] : {std::pair{markers[0], 14.05}, {markers[1], 14.06}}) {
    EXPECT_DOUBLE_EQ(marker.FreqMHz, dial);
    EXPECT_NEAR((marker.PassbandLowMHz - dial) * 1e6, filter.LowHz, 0.01);
    EXPECT_NEAR((marker.PassbandHighMHz - dial) * 1e6, filter.HighHz, 0.01);
    EXPECT_NEAR((marker.NotchMHz - dial) * 1e6, filter.NotchHz, 0.01);
  }
  EXPECT_FALSE(markers[0].Transmits);
  EXPECT_TRUE(markers[1].Transmits);
}
/// First and last of the columns for which a question is answered with yes.
template <class Question>
std::pair<int, int> Columns(int width, Question asked) {
  std::pair<int, int> columns{-1, -1};
  for (int x = 0; x < width; ++x) {
    if (!asked(x)) continue;
    if (columns.first < 0) columns.first = x;
    columns.second = x;
  }
  return columns;
}

TEST_P(Filters, OfAMiniPanAreShadedAndHitWhereItListens) {
  const double lowMHz = 14.044, spanMHz = 0.012;
  K4State state = ListeningWith(GetParam());
  state.MinipanOn = true;
  state.NotchManualMain = 0;
  state.K4PanChannels[kPanMiniMain] = {.SpanMHz = spanMHz,
                                       .LowEdgeMHz = lowMHz,
                                       .HighEdgeMHz = lowMHz + spanMHz,
                                       .Levels = {0, -100, -100},
                                       .Points = 2,
                                       .Serial = 1};
  K4Status status;
  status.Follow(state);
  MappedRun run;
  ScaleState scale;
  scale.Geometry = RadioGeometry(VisibleRadioPoints(400, 0, 1, 0), 400, 14.0, 14.1, run.Display.PlotWidth());
  run.Display.DrawScale(scale);
  const StatusArea area = status.Area(state);
  const auto show = [&](double passbandLowMHz, double passbandHighMHz) {
    StatusArea shown = area;
    shown.Main.PassbandLowMHz = passbandLowMHz;
    shown.Main.PassbandHighMHz = passbandHighMHz;
    run.Display.SetStatus(shown, 14.05, 14.05);
    QImage image(1200, 500, QImage::Format_RGB32);
    QPainter painter(&image);
    run.Display.Paint(painter);
    return image;
  };
  std::pair<double, double> searched(lowMHz, lowMHz + spanMHz);
  const auto hits = [&run, &searched](int y) {
    return Columns(1200, [&](int x) {
      const MiniPanHit hit = run.Display.At(QPointF(x, y)).MiniPan();
      return hit.Part > MiniPanPart::Beside && hit.FreqMHz >= searched.first &&
             hit.FreqMHz <= searched.second;
    });
  };
  show(lowMHz, lowMHz + spanMHz);
  int y = 0;
  while (y < 500 && hits(y).first < 0) ++y;
  const auto [left, right] = hits(y);
  ASSERT_GT(right, left + 100);
  const QImage plain = show(lowMHz, lowMHz);
  const QImage shaded = show(area.Main.PassbandLowMHz, area.Main.PassbandHighMHz);
  const auto drawn = Columns(1200, [&](int x) { return shaded.pixel(x, y) != plain.pixel(x, y); });
  const auto columnOf = [&, first = left, last = right](double hz) {
    return first + (14.05 + hz / 1e6 - lowMHz) / spanMHz * (last - first);
  };
  searched = {area.Main.PassbandLowMHz, area.Main.PassbandHighMHz};
  for (const auto& columns : {drawn, hits(y)}) {
    EXPECT_NEAR(columns.first, columnOf(GetParam().LowHz), 2);
    EXPECT_NEAR(columns.second, columnOf(GetParam().HighHz), 2);
  }
}
INSTANTIATE_TEST_SUITE_P(Modes, Filters,
                         testing::Values(FilterCase{mode::kUsb, 2400, 1500, 300, 2700, 900},
                                         FilterCase{mode::kLsb, 2400, 1500, -2700, -300, -900},
                                         FilterCase{mode::kCw, 400, 650, -150, 250, 300},
                                         FilterCase{mode::kCwReverse, 400, 650, -250, 150, -300},
                                         FilterCase{mode::kData, 500, 1500, 1250, 1750, 900},
                                         FilterCase{mode::kDataReverse, 500, 1500, -1750, -1250, -900},
                                         FilterCase{mode::kAm, 6000, 1500, -3000, 3000, 900}));

}  // namespace
}  // namespace spectrino
