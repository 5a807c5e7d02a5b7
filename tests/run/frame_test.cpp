// Passes of the frame loop: where signals land, what waits, what restarts, what ends the run.
#include <gtest/gtest.h>

#include "run/IfOffset.h"
#include "run/RunBench.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

TEST(Frame, AToneStandsAtItsFrequency) {
  RunBench bench;
  bench.State.Radio.MainFreqMHz = 14.1;
  ASSERT_TRUE(bench.Cycle.Start());
  bench.Feed(6000);
  EXPECT_EQ(bench.Step(), 5ms);
  ASSERT_EQ(bench.Sink.Frames, 1);
  EXPECT_EQ(bench.PeakIndex(), 512 + 128);  // 6000 Hz of 48000 in 1024 points
  EXPECT_NEAR(bench.Sink.Geometry.FrequencyToPixel(14.106), bench.Sink.Geometry.PointX(640), 1e-6);
  EXPECT_NEAR(bench.Sink.Scale.Geometry.FrequencyAt(400), 14.1, 1e-9);
}

struct FlipCase {
  bool swapChannels;
  bool flip6;
  double freqMHz;
  int mode;
  bool iqCw;
  bool iqUsb;
  int side;  // +1 the tone stands above the centre
};

class Orientation : public testing::TestWithParam<FlipCase> {};

TEST_P(Orientation, IsTheProductOfItsReasons) {
  const FlipCase& flip = GetParam();
  RunBench bench;
  PanSettings& settings = bench.State.Settings;
  settings.Control = CatControl::HostIf;
  settings.Iq = flip.swapChannels;
  settings.Flip6 = flip.flip6;
  settings.IqCw = flip.iqCw;
  settings.IqUsb = flip.iqUsb;
  bench.Host.FreqMHz = flip.freqMHz;
  bench.Host.Mode = flip.mode;
  ASSERT_TRUE(bench.Cycle.Start());
  bench.Feed(6000);
  bench.Step();
  bench.Feed(6000);
  bench.Step();  // the flip follows the frequency that the first pass brought
  EXPECT_EQ(bench.PeakIndex(), 512 + flip.side * 128);
}

INSTANTIATE_TEST_SUITE_P(Reasons, Orientation,
                         testing::Values(FlipCase{false, false, 14, 2, false, false, +1},
                                         FlipCase{true, false, 14, 2, false, false, -1},
                                         FlipCase{true, true, 50.1, 2, true, false, -1},
                                         FlipCase{false, true, 54.0, 1, true, true, -1},
                                         FlipCase{false, true, 54.001, 1, true, true, +1},
                                         FlipCase{false, false, 7, 7, false, true, -1},
                                         FlipCase{false, false, 7, 3, true, false, +1}));

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
}

TEST(Frame, AnInputThatVanishesEndsTheRunOfAMinimisedWindowToo) {
  RunBench bench;
  ASSERT_TRUE(bench.Cycle.Start());
  bench.State.WindowMinimized = true;
  bench.Input.Shared->FailWith = "The input is gone.";
  bench.Step();
  EXPECT_FALSE(bench.Cycle.Running());
  EXPECT_EQ(bench.User.Messages, std::vector<std::string>{"Spectrino|The input is gone."});
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
  bench.State.Settings.SourceName = "K4D";
  bench.K4Rig.FreqMHz = 14.05;
  ASSERT_TRUE(bench.Cycle.Start());
  EXPECT_EQ(bench.Step(), 5ms);
  EXPECT_EQ(bench.Sink.Frames, 0);
  EXPECT_EQ(bench.State.Radio.MainFreqMHz, 14.05);
  bench.K4.Next =
      SpectrumLine{std::vector<float>(101, -120.0F), 100, 1, 14.0, 14.05, 14.1, -140, -40, 1, {}, {}};
  bench.K4.Next.Levels[100] = -60;
  bench.K4.Ready = true;
  bench.Step();
  bench.Step();
  ASSERT_EQ(bench.Sink.Frames, 1);
  EXPECT_DOUBLE_EQ(bench.Sink.Geometry.PointX(100), 800);
  EXPECT_NEAR(bench.Sink.Geometry.FrequencyAt(800), 14.1, 1e-12);
  EXPECT_EQ(bench.Sink.Scale.Levels, (LevelScale{-140, -40, 100, 20}));
  bench.Cycle.ReferenceUp();
  EXPECT_EQ(bench.State.Settings.RefLevel, -60);  // the radio's own scale is not ours to move
}

TEST(Frame, AVanishedInputEndsTheRunWithItsMessage) {
  RunBench bench;
  ASSERT_TRUE(bench.Cycle.Start());
  int told = 0;
  bench.Cycle.RunningChanged = [&told] { ++told; };
  bench.Input.Shared->FailWith = "The input was unplugged.";
  bench.Step();
  EXPECT_FALSE(bench.Cycle.Running());
  EXPECT_EQ(bench.User.Messages, std::vector<std::string>{"Spectrino|The input was unplugged."});
  EXPECT_EQ(bench.Input.Shared->OpenStreams, 0);
  EXPECT_EQ(told, 1);
}

TEST(Meter, ShowsTheStrongestLevelInThePassbandAndHoldsIt) {
  RunBench bench;
  bench.State.Radio.MainFreqMHz = 14.1;
  bench.State.Radio.RadioMode = mode::kUsb;
  bench.State.Settings.SMeterHoldSeconds = 1;
  ASSERT_TRUE(bench.Cycle.Start());
  bench.Feed(1500);
  bench.Step();
  const Readings inside = bench.Cycle.Meter();
  bench.Feed(-6000);
  bench.Step();
  const Readings outside = bench.Cycle.Meter();
  EXPECT_TRUE(inside.SMeterKnown);
  EXPECT_NEAR(inside.SMeterDbm,
              *std::max_element(bench.Sink.Line.Levels.begin(), bench.Sink.Line.Levels.end()), 3);
  EXPECT_LT(outside.SMeterDbm, inside.SMeterDbm - 20);
  EXPECT_EQ(outside.SMeterHeldDbm, inside.SMeterDbm);
  bench.Time.Advance(1500ms);
  bench.Feed(-6000);
  bench.Step();
  EXPECT_EQ(bench.Cycle.Meter().SMeterHeldDbm, bench.Cycle.Meter().SMeterDbm);
}

TEST(Scale, ReferenceAndRangeStopAtTheirEndsAndBelongToTheBand) {
  RunBench bench;
  bench.State.Radio.MainFreqMHz = 14.1;
  ASSERT_TRUE(bench.Cycle.Start());
  for (int i = 0; i < 100; ++i) bench.Cycle.ReferenceUp();
  for (int i = 0; i < 9; ++i) bench.Cycle.RangeUp();
  EXPECT_EQ(bench.State.Settings.RefLevel, 81);
  EXPECT_EQ(bench.State.Settings.RangeDivisor, 10'000'000);
  EXPECT_EQ(bench.State.Settings.BandRef[5], 81);
  bench.State.Radio.MainFreqMHz = 7.1;
  bench.Cycle.UpdateScale();
  EXPECT_EQ(bench.State.Settings.RefLevel, -60);
  for (int i = 0; i < 100; ++i) bench.Cycle.ReferenceDown();
  for (int i = 0; i < 9; ++i) bench.Cycle.RangeDown();
  EXPECT_EQ(bench.State.Settings.RefLevel, -102);
  EXPECT_EQ(bench.State.Settings.RangeDivisor, 1);
  bench.State.Radio.MainFreqMHz = 14.2;
  bench.Cycle.UpdateScale();
  EXPECT_EQ(bench.State.Settings.RefLevel, 81);
}

struct OffsetCase {
  CatControl control;
  int mode;
  double offsetKHz;
};

class OffsetOf : public testing::TestWithParam<OffsetCase> {};

TEST_P(OffsetOf, FollowsTheLinkAndTheMode) {
  PanSettings settings;
  for (std::size_t i = 0; i < 5; ++i) settings.OffsetKHz[i] = static_cast<double>(i) + 1;
  for (std::size_t i = 0; i < 4; ++i) settings.CenterKHz[i] = 14000 + 10 * static_cast<double>(i);
  settings.GlobalOffsetKHz = -6;
  RadioState radio;
  radio.MainFreqMHz = 14.1;
  radio.RadioMode = GetParam().mode;
  EXPECT_NEAR(IfOffsetKHz(GetParam().control, radio, settings, 0.5), GetParam().offsetKHz, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Links, OffsetOf,
                         testing::Values(OffsetCase{CatControl::HostIf, mode::kCwReverse, 1},
                                         OffsetCase{CatControl::HostIf, 0, 2},
                                         OffsetCase{CatControl::HostIf, mode::kLsb, 3},
                                         OffsetCase{CatControl::HostIf, mode::kFm, 4},
                                         OffsetCase{CatControl::HostIf, mode::kDataReverse, 5},
                                         OffsetCase{CatControl::BridgeIf, mode::kUsb, -5.5},
                                         OffsetCase{CatControl::FixedLo, mode::kCw, 100},
                                         OffsetCase{CatControl::KetrelFixedLo, mode::kFm, 70},
                                         OffsetCase{CatControl::BridgeFixedLo, mode::kData, 80},
                                         OffsetCase{CatControl::RadioDirect, mode::kUsb, 0}));

}  // namespace
}  // namespace spectrino
