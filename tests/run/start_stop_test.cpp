// Start and Stop: what is opened and closed, in which order, and what the user is told.
#include <gtest/gtest.h>

#include "run/RunBench.h"

namespace spectrino {
namespace {

TEST(StartStop, WhatOneRadioToldIsNotKnownOfTheNext) {
  RunBench bench;
  bench.State.Settings.Source = {{SourceKind::K4}, "K4"};
  bench.RadioRig.FreqMHz = 14.05;
  ASSERT_TRUE(bench.Cycle.Start());
  bench.Step();
  bench.State.Radio.Transmitting = true;
  bench.State.Radio.MainNotchHz = 900;
  bench.Cycle.Stop();
  EXPECT_EQ(bench.State.Radio.MainFreqMHz, 14.05) << "still shown";
  bench.State.Settings.Source = {{}, "Card"};
  ASSERT_TRUE(bench.Cycle.Start());
  EXPECT_EQ(bench.State.Radio.MainFreqMHz, 0);
  EXPECT_FALSE(bench.State.Radio.Transmitting);
  EXPECT_FALSE(bench.State.Radio.MainNotchHz);
}

TEST(Start, OpensTheChosenInputAtTheChosenRateAndSize) {
  RunBench bench;
  ASSERT_TRUE(bench.Cycle.Start());
  EXPECT_EQ(bench.Input.Opened, std::vector<std::string>{"card@48000/256"});
  EXPECT_FALSE(bench.Cycle.Start());  // a second press changes nothing
  bench.Cycle.Stop();
  EXPECT_EQ(bench.Input.Shared->OpenStreams, 0);
  EXPECT_TRUE(bench.User.Messages.empty());
}

TEST(Start, AnInputThatDoesNotOpenIsToldWithItsCauseAndLeavesTheWindowStopped) {
  RunBench bench;
  bench.State.Settings.SRate = 6;
  bench.Input.RefusedRates = {192000, 96000};
  EXPECT_FALSE(bench.Cycle.Start());
  EXPECT_FALSE(bench.Cycle.Running());
  bench.State.Settings.TypZoom = true;
  bench.State.Settings.Zoom = 2;
  EXPECT_FALSE(bench.Cycle.Start());
  const std::string plain =
      "Spectrino|Wave input device didn't open at 192000!\r\nPlease check Sample Rate of your Sound Card"
      "\r\n\r\nIt runs at another rate.";
  const std::string zoomed =
      "Spectrino|Wave input device didn't open at 96000!\r\nPlease check Sample Rate of your Sound Card"
      "\r\nPlease disable High Res. Zoom or \r\nor close other audio applications\r\n\r\nIt runs at another "
      "rate.";
  bench.State.Settings.TypZoom = false;
  bench.State.Settings.Source.Name = "Unplugged";
  EXPECT_FALSE(bench.Cycle.Start());
  const std::string missing =
      "Spectrino|Wave input device didn't open at 192000!\r\nPlease check Sample Rate of your Sound Card"
      "\r\n\r\nThe input \"Unplugged\" is not there.";
  EXPECT_EQ(bench.User.Messages, (std::vector<std::string>{plain, zoomed, missing}));

  // What each box offers below its text.
  bench.State.Settings.Source.Name = "Card";
  for (const int usualHz : {96000, 192000, 12345}) {
    bench.Input.List[0].UsualRateHz = usualHz;
    bench.Devices.InitDevices();
    EXPECT_FALSE(bench.Cycle.Start());
  }
  std::vector<std::string> buttons;
  for (const Cure& cure : bench.User.Cures) buttons.push_back(cure.Button);
  EXPECT_EQ(buttons, (std::vector<std::string>{"Use 48000 Hz", "Switch High Res. Zoom off", "Open Setup",
                                               "Use 96000 Hz", "Open Setup", "Open Setup"}));
}

TEST(Start, AMissingHostIsShownForASecondAndTheRunGoesOn) {
  RunBench bench;
  bench.State.Settings.Control = CatControl::HostIf;
  bench.Host.Found = false;
  bool told = false;
  bench.Cycle.RunningChanged = [&] {
    told = told || (bench.Cycle.Starting() && bench.Pump.Waited.count() == 0);
  };
  EXPECT_TRUE(bench.Cycle.Start());
  EXPECT_TRUE(told) << "Stop is to be had while it is looked for";
  EXPECT_EQ(bench.User.Statuses, (std::vector<std::string>{"", "Castelon not found", ""}));
  EXPECT_EQ(bench.Pump.Waited, std::chrono::milliseconds(1000));
  bench.Step();
  EXPECT_EQ(bench.Host.Refreshes, 0);
  EXPECT_FALSE(bench.Cycle.HostMissing()) << "the picture is for the band";
  bench.Cycle.Stop();
  for (const bool found : {false, true}) {
    bench.State.Settings.Source = {{SourceKind::K4}, "K4"};
    bench.State.Settings.Control = CatControl::IcomViaHost;
    bench.RadioKit.Has.ScopeThroughHost = true;
    bench.Host.Found = found;
    ASSERT_TRUE(bench.Cycle.Start());
    EXPECT_EQ(bench.Cycle.HostMissing(), !found) << "a radio's news must not wipe it";
    bench.Cycle.Stop();
  }
}

TEST(Start, StopWhileTheHostIsLookedForEndsIt) {
  for (const bool missing : {false, true}) {  // Stop in the search, or while its outcome is shown
    RunBench bench;
    bench.State.Settings.Control = CatControl::HostIf;
    bench.Host.Found = false;
    (missing ? bench.Pump.Meanwhile : bench.Host.Opening) = [&bench] {
      EXPECT_FALSE(bench.Cycle.Start());
      bench.Cycle.Stop();
    };
    EXPECT_FALSE(bench.Cycle.Start());
    EXPECT_FALSE(bench.Cycle.Running());
    EXPECT_TRUE(bench.Input.Opened.empty());
    EXPECT_EQ(bench.User.Statuses.size(), missing ? 3U : 1U) << "a search that was ended missed nothing";
  }
}

TEST(Start, TheHostIsReleasedWhenTheInputDoesNotOpen) {
  RunBench bench;
  bench.State.Settings.Control = CatControl::HostK3If;
  bench.Input.RefusedRates = {48000};
  EXPECT_FALSE(bench.Cycle.Start());
  EXPECT_EQ(bench.Host.Closes, 1);
}

TEST(Start, ARadioThatRefusesLeavesTheWindowStopped) {
  RunBench bench;
  bench.State.Settings.Source.Id.Kind = SourceKind::K4;
  bench.Radio.Accepts = false;
  EXPECT_FALSE(bench.Cycle.Start());
  EXPECT_EQ(bench.Radio.Closes, 1);
  EXPECT_FALSE(bench.State.Radio.OwnSpectrum);
  bench.Radio.Accepts = true;
  EXPECT_TRUE(bench.Cycle.Start());
  EXPECT_TRUE(bench.State.Radio.OwnSpectrum);
}

TEST(Start, IcomThroughTheHostIsAlwaysTheIfAdapter) {
  RunBench bench;
  bench.State.Settings.Source = {{SourceKind::Icom}, "ICOM"};
  bench.State.Settings.Control = CatControl::FixedLo;
  EXPECT_FALSE(bench.Cycle.Start());  // no such link here: told, and nothing is left open
  EXPECT_EQ(bench.User.Messages.size(), 1U);
  EXPECT_EQ(bench.Host.Closes, bench.Host.Opens);
}

TEST(Stop, EndsAPendingBlockWithoutAFrame) {
  RunBench bench;
  ASSERT_TRUE(bench.Cycle.Start());
  EXPECT_EQ(bench.Step(), std::chrono::milliseconds(5)) << "256 frames take longer than that";
  EXPECT_EQ(bench.Step(), std::chrono::milliseconds(1)) << "now it is due";
  bench.Feed(1000);
  bench.Cycle.Stop();
  bench.Step();
  EXPECT_EQ(bench.Sink.Frames, 0);
  EXPECT_EQ(bench.Store.GetSetting("Spectrino", "Setup", "ICSCOPE", "?"), "0");
}

TEST(HighResolutionZoom, ReopensAtTheLowerRateOnlyWhenItChanges) {
  RunBench bench;
  bench.State.Settings.TypZoom = true;
  ASSERT_TRUE(bench.Cycle.Start());
  bench.Cycle.SetZoom(1);
  bench.Cycle.SetZoom(2);
  bench.Cycle.SetZoom(4);
  EXPECT_EQ(bench.Input.Opened,
            (std::vector<std::string>{"card@48000/256", "card@22050/256", "card@22050/512"}));
  EXPECT_EQ(bench.Input.Shared->OpenStreams, 1);
  EXPECT_EQ(bench.Store.GetSetting("Spectrino", "Setup", "Zoom", "?"), "4");
}

// The band, the operator's way back and the host program have nothing to do with the card's rate.
TEST(HighResolutionZoom, ReopensTheInputAndNothingElse) {
  RunBench bench;
  PanSettings& settings = bench.State.Settings;
  settings.Control = CatControl::HostIf;
  settings.TypZoom = true;
  settings.Zoom = 3;
  bench.Host.FreqMHz = 14.1;
  ASSERT_TRUE(bench.Cycle.Start());
  int told = 0;
  bench.Cycle.RunningChanged = [&told] { ++told; };
  const auto middleMHz = [&bench] {
    const ZoomPlan& plan = bench.Cycle.View().Plan;
    bench.Input.Shared->Blocks.push_back(RunBench::Tone(1 << plan.FftBits, plan.SampleRate, 0));
    while (bench.Step() == std::chrono::milliseconds(1)) {
    }
    return (bench.Sink.Geometry.LeftMHz + bench.Sink.Geometry.RightMHz) / 2;
  };
  static_cast<void>(middleMHz());  // learns the frequency
  static_cast<void>(middleMHz());
  bench.Cycle.Scale().PanBy(0.5);
  const double before = middleMHz();
  EXPECT_GT(before, 14.1005);
  const FrameGeometry shown = bench.Sink.Scale.Geometry;
  bench.Cycle.SetZoom(4);
  EXPECT_EQ(bench.Sink.Scale.Geometry, shown) << "the picture stands until its first line";
  EXPECT_NEAR(middleMHz(), before, 22050 / 1024 / 1e6);
  EXPECT_EQ(bench.Input.Opened.size(), 2U);
  EXPECT_EQ(bench.Host.Opens, 1);
  EXPECT_EQ(bench.Host.Closes, 0);
  EXPECT_EQ(bench.Sink.Clears, 1);
  EXPECT_EQ(told, 0);
}

}  // namespace
}  // namespace spectrino
