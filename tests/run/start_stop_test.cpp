// Start and Stop: what is opened and closed, in which order, and what the user is told.
#include <gtest/gtest.h>

#include "run/RunBench.h"
#include "run/SetupChecks.h"

namespace spectrino {
namespace {

TEST(StartStop, WhatOneRadioToldIsNotKnownOfTheNext) {
  RunBench bench;
  bench.State.Settings.SourceName = "K4";
  bench.K4Rig.FreqMHz = 14.05;
  ASSERT_TRUE(bench.Cycle.Start());
  bench.Step();
  bench.State.Radio.Transmitting = true;
  bench.State.Radio.MainNotchHz = 900;
  bench.Cycle.Stop();
  EXPECT_EQ(bench.State.Radio.MainFreqMHz, 14.05) << "still shown";
  bench.State.Settings.SourceName = "Card";
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

TEST(Start, ARefusedRateIsToldInFullAndLeavesTheWindowStopped) {
  RunBench bench;
  bench.State.Settings.SRate = 6;
  bench.Input.RefusedRates = {192000, 96000};
  EXPECT_FALSE(bench.Cycle.Start());
  EXPECT_FALSE(bench.Cycle.Running());
  bench.State.Settings.TypZoom = true;
  bench.State.Settings.Zoom = 2;
  EXPECT_FALSE(bench.Cycle.Start());
  const std::string plain =
      "Spectrino|Wave input device didn't open at 192000!\r\nPlease check Sample Rate of your Sound Card";
  const std::string zoomed =
      "Spectrino|Wave input device didn't open at 96000!\r\nPlease check Sample Rate of your Sound Card"
      "\r\nPlease disable High Res. Zoom or \r\nor close other audio applications";
  EXPECT_EQ(bench.User.Messages, (std::vector<std::string>{plain, zoomed}));
}

TEST(Start, AMissingHostIsShownForASecondAndTheRunGoesOn) {
  RunBench bench;
  bench.State.Settings.Control = CatControl::HostIf;
  bench.Host.Found = false;
  EXPECT_TRUE(bench.Cycle.Start());
  EXPECT_EQ(bench.User.Statuses.back(), "Castelon not found");
  EXPECT_EQ(bench.Pump.Waited, std::chrono::milliseconds(1000));
  bench.Step();
  EXPECT_EQ(bench.Host.Refreshes, 0);
}

TEST(Start, StopWhileTheHostIsLookedForEndsIt) {
  RunBench bench;
  bench.State.Settings.Control = CatControl::HostIf;
  bench.Host.Found = false;
  bench.Pump.Meanwhile = [&bench] {
    EXPECT_FALSE(bench.Cycle.Start());
    bench.Cycle.Stop();
  };
  EXPECT_FALSE(bench.Cycle.Start());
  EXPECT_FALSE(bench.Cycle.Running());
  EXPECT_TRUE(bench.Input.Opened.empty());
}

TEST(Start, TheHostIsReleasedWhenTheInputDoesNotOpen) {
  RunBench bench;
  bench.State.Settings.Control = CatControl::HostK3If;
  bench.Input.RefusedRates = {48000};
  EXPECT_FALSE(bench.Cycle.Start());
  EXPECT_EQ(bench.Host.Closes, 1);
}

TEST(Start, AK4ThatIsNotConnectedEndsAtSetUp) {
  RunBench bench;
  bench.State.Settings.SourceName = "K4";
  bench.K4.Connects = false;
  EXPECT_FALSE(bench.Cycle.Start());
  EXPECT_EQ(bench.K4.Closes, 1);
  EXPECT_FALSE(bench.State.Radio.K4Active);
  bench.K4.Connects = true;
  EXPECT_TRUE(bench.Cycle.Start());
  EXPECT_TRUE(bench.State.Radio.K4Active);
}

TEST(Start, IcomThroughTheHostIsAlwaysTheIfAdapter) {
  RunBench bench;
  bench.State.Settings.SourceName = "ICOM";
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

TEST(SetupChecks, LengthsThatAreNoPowerOfTwoAreNamed) {
  EXPECT_EQ(FftLengthError(3),
            "Error in FFT:\r\nNumSamples is 3, which is not a positive integer power of two.");
  EXPECT_FALSE(FftLengthError(2));
  EXPECT_TRUE(FftLengthError(1));
  EXPECT_TRUE(FftLengthError(-8));
}

}  // namespace
}  // namespace spectrino
