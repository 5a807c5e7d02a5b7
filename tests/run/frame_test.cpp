// Passes of the frame loop: where signals land, what waits, what restarts, what ends the run.
#include <gtest/gtest.h>

#include "run/IfOffset.h"
#include "run/RunBench.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

TEST(Frame, OrientationIsTheProductOfItsReasons) {
  const struct {
    bool SwapChannels, Flip6;
    double FreqMHz;
    int Mode;
    bool IqCw, IqUsb;
    int Side;  // +1 the tone stands above the centre
  } cases[] = {{false, false, 14, 2, false, false, +1},  {true, false, 14, 2, false, false, -1},
               {true, true, 50.1, 2, true, false, -1},   {false, true, 54.0, 1, true, true, -1},
               {false, true, 54.001, 1, true, true, +1}, {false, false, 7, 7, false, true, -1},
               {false, false, 7, 3, true, false, +1}};
  for (const auto& flip : cases) {
    RunBench bench;
    PanSettings& settings = bench.State.Settings;
    settings.Control = CatControl::HostIf;
    settings.Iq = flip.SwapChannels;
    settings.Flip6 = flip.Flip6;
    settings.IqCw = flip.IqCw;
    settings.IqUsb = flip.IqUsb;
    bench.Host.FreqMHz = flip.FreqMHz;
    bench.Host.Mode = flip.Mode;
    ASSERT_TRUE(bench.Cycle.Start());
    // The flip follows the frequency that the first pass brings.
    for (int pass = 0; pass < 2; ++pass) {
      bench.Feed(6000);
      EXPECT_EQ(bench.Step(), 5ms);
    }
    EXPECT_EQ(bench.PeakIndex(), 512 + flip.Side * 128) << flip.FreqMHz;  // 6000 Hz of 48000 in 1024 points
  }
}

TEST(Frame, SpotIsAnsweredSoonOrNotAtAll) {
  RunBench bench;
  int spots = 0;
  bench.Cycle.Frames().SpotFrame = [&spots](const SpectrumLine&) { ++spots; };
  ASSERT_TRUE(bench.Cycle.Start());
  const auto after = [&](std::chrono::milliseconds time, bool anotherRate) {
    bench.Cycle.Frames().RequestSpot(bench.Time.Now());
    bench.Time.Advance(time);
    if (anotherRate) bench.Cycle.Frames().RestartHistory();
    bench.Feed(6000, 2);
    bench.Step();
    bench.Step();
    return std::exchange(spots, 0);
  };
  EXPECT_EQ(after(1500ms, false), 1) << "as slow as lines may be";
  EXPECT_EQ(after(2500ms, false), 0) << "the link was lost meanwhile, or the window hidden";
  EXPECT_EQ(after(100ms, true), 0);
}

TEST(Frame, AHiddenWindowKeepsTheRadioAndTheHistory) {
  RunBench bench;
  bench.State.Settings.Control = CatControl::HostIf;
  bench.State.Settings.HistoryDepth = 5;
  bench.Host.FreqMHz = 7.1;
  bench.Feed(6000);
  ASSERT_TRUE(bench.Cycle.Start());
  bench.Step();
  bench.State.Settings.Qsy = false;
  bench.State.WindowMinimized = true;
  bench.Host.FreqMHz = 7.2;
  bench.Feed(-6000);
  bench.Step();
  EXPECT_EQ(bench.Sink.Frames, 1);
  EXPECT_EQ(bench.State.Radio.MainFreqMHz, 7.2);
  bench.State.WindowMinimized = false;
  bench.Feed(-6000);
  bench.Step();
  EXPECT_EQ(bench.Sink.Frames, 2);
  EXPECT_GT(bench.Sink.DisplayLevel[640], -100);  // MAX still holds the first frame's tone
  EXPECT_LT(bench.Sink.NewestLevel[640], -100) << "for the waterfall it is gone";
}

TEST(Frame, BlocksThatComeFasterThanPassesAreNotShownLate) {
  RunBench bench;
  ASSERT_TRUE(bench.Cycle.Start());
  bench.Feed(6000, 3);
  bench.Feed(-6000);
  bench.Step();
  EXPECT_EQ(bench.PeakIndex(), 384) << "the newest of what waited";
  bench.Step();
  EXPECT_EQ(bench.Sink.Frames, 1);
}

TEST(Frame, RetuningRestartsTheHistoryWhenQsyDetectionIsOn) {
  RunBench bench;
  bench.State.Settings.HistoryDepth = 5;
  bench.State.Settings.BackgroundPeakHold = true;
  bench.State.Radio.MainFreqMHz = 14.1;
  ASSERT_TRUE(bench.Cycle.Start());
  bench.Feed(6000);
  bench.Step();
  const float held = bench.Sink.DisplayLevel[640];
  bench.State.Radio.MainFreqMHz = 14.2;
  bench.Feed(-6000);
  bench.Step();
  EXPECT_LT(bench.Sink.DisplayLevel[640], held - 30);
  EXPECT_LT(bench.Sink.BackgroundPeak[640], held - 30);
  EXPECT_NEAR(bench.Sink.Geometry.LeftMHz, 14.2 - 0.024, 1e-9);
  EXPECT_NEAR(bench.Sink.Scale.LabelCentreMHz, 14.2, 1e-9);
}

TEST(Frame, ARadioSourceDrawsOnlyItsNewLines) {
  RunBench bench;
  bench.State.Settings.Source.Id.Kind = SourceKind::K4D;
  bench.RadioRig.FreqMHz = 14.05;
  const auto nothingKnown = [&] {
    return !bench.Sink.Scale.FrequencyKnown && !bench.Sink.Scale.Geometry.Valid();
  };
  bench.Cycle.UpdateScale();
  EXPECT_TRUE(nothingKnown()) << "it is chosen, and no sound card's offsets are its";
  ASSERT_TRUE(bench.Cycle.Start());
  EXPECT_EQ(bench.Step(), 5ms);
  EXPECT_EQ(bench.Sink.Frames, 0);
  EXPECT_EQ(bench.State.Radio.MainFreqMHz, 14.05);
  bench.Cycle.UpdateScale();
  EXPECT_TRUE(nothingKnown()) << "nobody knows what the radio's lines will span";
  bench.Radio.Next =
      SpectrumLine{std::vector<float>(101, -120.0F), 100, 1, 14.0, 14.05, 14.1, -140, -40, 1, {}, {}};
  bench.Radio.Next.Levels[100] = -60;
  bench.Radio.Ready = true;
  bench.Step();
  bench.Step();
  ASSERT_EQ(bench.Sink.Frames, 1);
  EXPECT_EQ(bench.Sink.Scale.Levels, (LevelScale{-140, -40, 100, 20}));
  bench.Cycle.Scale().ReferenceUp();
  EXPECT_EQ(bench.State.Settings.RefLevel, -60);  // the radio's own scale is not ours to move
  bench.Cycle.Stop();
  EXPECT_TRUE(nothingKnown());
  EXPECT_EQ(bench.Sink.Scale.Levels, (LevelScale{-140, -40, 100, 20}));
}

TEST(Meter, ShowsTheStrongestLevelInThePassbandAndHoldsIt) {
  RunBench bench;
  bench.State.Radio.MainFreqMHz = 14.1;
  bench.State.Radio.RadioMode = mode::kUsb;
  bench.State.Settings.SMeterHoldSeconds = 1;
  ASSERT_TRUE(bench.Cycle.Start());
  bench.Feed(1500);
  bench.Step();
  const Readings inside = bench.Cycle.Frames().Meter();
  bench.Feed(-6000);
  bench.Step();
  const Readings outside = bench.Cycle.Frames().Meter();
  EXPECT_TRUE(inside.SMeterKnown);
  EXPECT_NEAR(inside.SMeterDbm,
              *std::max_element(bench.Sink.Line.Levels.begin(), bench.Sink.Line.Levels.end()), 3);
  EXPECT_LT(outside.SMeterDbm, inside.SMeterDbm - 20);
  EXPECT_EQ(outside.SMeterHeldDbm, inside.SMeterDbm);
  bench.Time.Advance(1500ms);
  bench.Feed(-6000);
  bench.Step();
  EXPECT_EQ(bench.Cycle.Frames().Meter().SMeterHeldDbm, bench.Cycle.Frames().Meter().SMeterDbm);
}

TEST(Scale, ReferenceAndRangeStopAtTheirEndsAndBelongToTheBand) {
  RunBench bench;
  bench.State.Radio.MainFreqMHz = 14.1;
  ASSERT_TRUE(bench.Cycle.Start());
  for (int i = 0; i < 100; ++i) bench.Cycle.Scale().ReferenceUp();
  for (int i = 0; i < 9; ++i) bench.Cycle.Scale().RangeUp();
  EXPECT_EQ(bench.State.Settings.RefLevel, 81);
  EXPECT_EQ(bench.State.Settings.RangeDivisor, 10'000'000);
  EXPECT_EQ(bench.State.Settings.BandRef[5], 81);
  bench.State.Radio.MainFreqMHz = 7.1;
  bench.Cycle.UpdateScale();
  EXPECT_EQ(bench.State.Settings.RefLevel, -60);
  for (int i = 0; i < 100; ++i) bench.Cycle.Scale().ReferenceDown();
  for (int i = 0; i < 9; ++i) bench.Cycle.Scale().RangeDown();
  EXPECT_EQ(bench.State.Settings.RefLevel, -102);
  EXPECT_EQ(bench.State.Settings.RangeDivisor, 1);
  bench.State.Radio.MainFreqMHz = 14.2;
  bench.Cycle.UpdateScale();
  EXPECT_EQ(bench.State.Settings.RefLevel, 81);
}

TEST(IfOffset, FollowsTheLinkAndTheMode) {
  PanSettings settings;
  settings.OffsetKHz = {1, 2, 3, 4, 5};
  settings.CenterKHz = {14000, 14010, 14020, 14030};
  settings.GlobalOffsetKHz = -6;
  RadioState radio;
  radio.MainFreqMHz = 14.1;
  const std::tuple<CatControl, int, double> cases[] = {{CatControl::HostIf, 0, 2},
                                                       {CatControl::BridgeIf, mode::kUsb, -5.5},
                                                       {CatControl::FixedLo, mode::kCw, 100},
                                                       {CatControl::KetrelFixedLo, mode::kFm, 70},
                                                       {CatControl::BridgeFixedLo, mode::kData, 80},
                                                       {CatControl::RadioDirect, mode::kUsb, 0}};
  for (const auto& [control, mode, offsetKHz] : cases) {
    radio.RadioMode = mode;
    EXPECT_NEAR(IfOffsetKHz(control, radio, settings, 0.5), offsetKHz, 1e-9) << static_cast<int>(control);
  }
}

}  // namespace
}  // namespace spectrino
