// A K4 as the source of a run: its lines, its failures, and what it tells beside another way to its
// frequency.
#include "k4/K4Link.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "k4/PanFrames.h"
#include "k4/SessionBench.h"

namespace spectrino {
namespace {

struct LinkTest : ::testing::Test {
  test::SessionBench Bench;
  K4Status Status;
  K4Link Link{Bench.State, *Bench.Session, Status, Bench.User, Bench.Time};
  RadioState Radio;
  SpectrumLine Line;

  void Open() {
    Bench.Setting("K4TCP", "k4.local");
    Bench.RadioAnswers(true, true);
    ASSERT_TRUE(Link.Open());
    Bench.State.PanScaleDb = 70;
    Bench.State.PanSpanMHz = 0.05;
  }
  void Receive(const test::Bytes& bytes) { Bench.WSPan.DataArrival(bytes); }
};

TEST_F(LinkTest, EachNewLineOfTheMainPanadapterIsTakenOnce) {
  Open();
  EXPECT_TRUE(Bench.State.K4Connected);
  EXPECT_EQ(Link.Poll({}, Line), PollResult::Pending);
  test::FrameFields fields;
  fields.Reference = "-1355";
  fields.Level = [](int sample) { return -1200 + (sample == 513 ? 10 : 0); };
  const test::Bytes frame = test::PanFrame(fields);
  Receive({frame.begin(), frame.begin() + 1000});
  Bench.Time.Advance(std::chrono::milliseconds(7));
  Receive({frame.begin() + 1000, frame.end()});
  const auto arrived = Bench.Time.Now();
  Bench.Time.Advance(std::chrono::milliseconds(3));

  ASSERT_EQ(Link.Poll({}, Line), PollResult::Line);
  EXPECT_EQ(Line.PointCount, 1024);
  EXPECT_EQ(Line.FirstIndex, 1);
  ASSERT_EQ(Line.Levels.size(), 1025U);
  EXPECT_FLOAT_EQ(Line.Levels[1], -119);
  EXPECT_FLOAT_EQ(Line.Levels[1024], -120);
  EXPECT_DOUBLE_EQ(Line.LeftMHz, 14.049);
  EXPECT_DOUBLE_EQ(Line.CentreMHz, 14.074);
  EXPECT_DOUBLE_EQ(Line.RightMHz, 14.099);
  EXPECT_EQ(Line.Arrived, arrived);
  EXPECT_FLOAT_EQ(Line.BottomLevel, -136);  // whole dB below -135.5 and -65.5
  EXPECT_FLOAT_EQ(Line.TopLevel, -66);
  EXPECT_EQ(Link.Scale(), (LevelScale{-136, -66, 70, 20}));
  EXPECT_DOUBLE_EQ(Link.GridHz()[10], 50000);
  EXPECT_EQ(Link.Poll({}, Line), PollResult::Pending);

  test::FrameFields mini;
  mini.Letter = 'Y';
  Receive(test::PanFrame(mini));
  EXPECT_EQ(Link.Poll({}, Line), PollResult::Pending);
  Receive(frame);
  Bench.WSPan.Closed();
  EXPECT_EQ(Link.Poll({}, Line), PollResult::Line);
  Receive(frame);  // what a closed connection still delivers
  EXPECT_EQ(Link.Poll({}, Line), PollResult::Pending);

  // The line of one run is not the first of the next.
  Link.Close();
  EXPECT_FALSE(Bench.State.K4Connected);
  Open();
  EXPECT_EQ(Link.Poll({}, Line), PollResult::Pending);
}

TEST_F(LinkTest, AFailedOpenTellsWhyAndAnAbandonedOneSaysNothing) {
  EXPECT_FALSE(Link.Open());
  EXPECT_THAT(Bench.User.Messages, ::testing::ElementsAre("Spectrino|TCP Port not defined"));
  EXPECT_EQ(Bench.User.Cures.back().Does, Remedy::OpenSetup);
  Bench.Setting("K4TCP", "k4.local");
  Bench.GivenUp = true;
  EXPECT_FALSE(Link.Open());
  EXPECT_EQ(Bench.User.Messages.size(), 1U);
}

TEST_F(LinkTest, BesideAnotherWayTheSignalAloneIsToldWhileItIsHeard) {
  Open();
  Bench.WSCat.Receive("FB;");
  Bench.State.MainFreqMHz = Bench.State.SubFreqMHz = 7.1;
  Bench.State.SMeterMain = 54;  // S9
  Bench.State.Transmitting = 1;
  for (const bool heard : {true, false}) {
    Link.TellBeside(Radio);
    EXPECT_EQ(Radio.SMeterTold, heard);
    EXPECT_EQ(Radio.Transmitting, heard);
    EXPECT_EQ(Radio.SMeterDbm, -73);
    EXPECT_EQ(Radio.MainFreqMHz + Radio.SubFreqMHz, 0);
    Bench.Time.Advance(std::chrono::seconds(3));
  }
}

}  // namespace
}  // namespace spectrino
