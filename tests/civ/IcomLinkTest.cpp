// The Icom as source of spectrum and as radio: what Start sends, what a line becomes, what its buttons do.
#include <gmock/gmock.h>

#include "civ/IcomBench.h"

namespace spectrino::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using IcomLinkTest = IcomBench;

TEST_F(IcomLinkTest, StartIdentifiesTheRadioAndSetsItsScopeUp) {
  Pump.Meanwhile = [&] {
    EXPECT_THAT(Port.Written, ElementsAre("FEFEA4E01900FD"));
    Port.DataArrival(Bytes("FE FE E0 A4 19 00 A4 FD"));
  };
  State.ScopeShownSpan = 1;
  ASSERT_TRUE(Link.Open());
  EXPECT_EQ(Port.Path, "/dev/radio");
  EXPECT_EQ(Pump.Waited, 150ms);
  EXPECT_EQ(State.IcomModelName, "IC-705");
  EXPECT_EQ(State.ScopeLevels.size(), 476U);
  EXPECT_EQ(State.ScopeShownSpan, 0);
  EXPECT_EQ(Panel.Told, "list; ");
  EXPECT_THAT(
      Sent(Session, 200ms),
      ElementsAre("FEFEA4E01900FD", "FEFEA4E0271001FD", "FEFEA4E0271101FD", "FEFEA4E0271200FD",
                  "FEFEA4E0271300FD", "FEFEA4E027140000FD", "FEFEA4E003FD", "FEFEA4E004FD", "FEFEA4E01401FD",
                  "FEFEA4E01403FD", "FEFEA4E0271400FD", "FEFEA4E0271A00FD", "FEFEA4E0271900FD"));
}

TEST_F(IcomLinkTest, AWrongAddressEndsTheStart) {
  for (const char* address : {"", "9", "094"}) {
    Store.SaveSetting("Spectrino", "Setup", "ICADDR", address);
    User.Messages.clear();
    EXPECT_FALSE(Link.Open());
    EXPECT_THAT(User.Messages, ElementsAre("Spectrino|COM/ICOM ERROR"));
    EXPECT_EQ(User.Cures.back().Does, Remedy::OpenSetup);
    EXPECT_EQ(Port.Path, "");
    EXPECT_FALSE(State.IcomActive);
  }
}

TEST_F(IcomLinkTest, EachLineIsPolledOnceWithItsOwnEdges) {
  ASSERT_TRUE(Link.Open());
  Port.DataArrival(Bytes("FE FE E0 A4 19 00 A4 FD FE FE E0 A4 03 00 40 07 14 00 FD FE FE E0 A4 04 03 01 FD"));
  EXPECT_EQ(Link.Poll({}, Line), PollResult::Pending);
  const auto arrival = Time.Now();
  Port.DataArrival(
      Bytes("FE FE E0 A4 27 00 00 01 01 00 0040071400 0050020000 00" + std::string(950, '5') + "FD"));
  Time.Advance(3ms);
  ASSERT_EQ(Link.Poll({}, Line), PollResult::Line);
  EXPECT_EQ(Line.Levels.size(), 476U);
  EXPECT_EQ(Line.Levels[1], 0x55);
  EXPECT_EQ(Line.FirstIndex, 1);
  EXPECT_EQ(Line.PointCount, 475);
  EXPECT_DOUBLE_EQ(Line.LeftMHz, 14.049);
  EXPECT_DOUBLE_EQ(Line.CentreMHz, 14.074);
  EXPECT_DOUBLE_EQ(Line.RightMHz, 14.099);
  EXPECT_EQ(Line.TopLevel, 160);
  EXPECT_EQ(Line.Arrived, arrival);
  EXPECT_EQ(Link.Poll({}, Line), PollResult::Pending);

  Radio.SplitOn = 1;
  Backend.Refresh(Radio);
  EXPECT_EQ(Radio.MainFreqMHz, 14.074);
  EXPECT_EQ(Radio.RadioMode, mode::kCw);
  EXPECT_EQ(Radio.SplitOn, 0);
}

TEST_F(IcomLinkTest, ABandButtonGoesBackToWhereOneWasThere) {
  ASSERT_TRUE(Link.Open());
  Sent(Session, 300ms);
  State.RadioFreqMHz = 0.1371;
  State.RadioModeIndex = 2;
  State.ScopeRefLevel = 4.5F;
  State.ScopeFixedMode = 1;
  Memory.Records[8] = {14.0741, 1, 10};
  Backend.SelectBand(6);
  EXPECT_THAT(Sent(Session, 25ms),
              ElementsAre("FEFEA4E0050041071400FD", "FEFEA4E00601FD", "FEFEA4E027140000FD"));
  EXPECT_EQ(Sent(Session, 300ms).size(), 7U) << "and the status is asked for once";
  EXPECT_EQ(State.ScopeFixedMode, 0);
  EXPECT_NE(File.Files["Spectrino"].find("FREQ1=0.1371\nMODE1=2\nLEVEL1=4\n"), std::string::npos);

  State.RadioFreqMHz = 14.2;
  const std::string stored = File.Files["Spectrino"];
  Backend.SelectBand(6);
  EXPECT_THAT(Sent(Session, 100ms), IsEmpty()) << "it is there already";
  EXPECT_EQ(File.Files["Spectrino"], stored);
}

TEST_F(IcomLinkTest, AMacroMayHaveBlanksAndSteppingUpRaisesTheFrequency) {
  ASSERT_TRUE(Link.Open());
  Sent(Session, 300ms);
  Backend.SendMacro(" 16 02\t01 ");
  EXPECT_THAT(Sent(Session, 100ms), ElementsAre("FEFEA4E0160201FD"));
  State.ScopeSpanMHz = 0.3;
  Backend.StepFrequency(+1, 14.1);
  EXPECT_EQ(Sent(Session, 300ms).front(), "FEFEA4E0050000201400FD");
  Backend.StepFrequency(-1, 14.1);
  EXPECT_EQ(Sent(Session, 300ms).front(), "FEFEA4E0050000001400FD");
}

TEST_F(IcomLinkTest, TheScopeRestsDuringALayoutAndEndsWithTheRun) {
  ASSERT_TRUE(Link.Open());
  Sent(Session, 300ms);
  Link.BeforeLayout();
  Panel.Told.clear();
  Port.DataArrival(Bytes("FE FE E0 A4 14 01 01 28 FD"));
  EXPECT_EQ(Panel.Told, "");
  Link.AfterLayout(false);
  Port.DataArrival({});
  EXPECT_EQ(Panel.Told, "af 128; ");
  EXPECT_THAT(Sent(Session, 50ms), ElementsAre("FEFEA4E0271100FD", "FEFEA4E0271101FD"));
  Link.BeforeLayout();
  Link.AfterLayout(true);
  EXPECT_THAT(Sent(Session, 50ms), ElementsAre("FEFEA4E0271100FD"));
  Link.Close();
  EXPECT_THAT(Sent(Session, 50ms), ElementsAre("FEFEA4E0271100FD"));
  EXPECT_FALSE(Port.IsOpen());
  Link.BeforeLayout();
  Link.AfterLayout(false);
  EXPECT_THAT(Port.Take(), IsEmpty());
  EXPECT_FALSE(State.ResizeInProgress);
}

// Half a decibel a step over the reference: what the S-meter is made of.
TEST_F(IcomLinkTest, HeightsOfTheScopeAreLevelsAtTheAntenna) {
  EXPECT_FLOAT_EQ(Link.AntennaDbm(120), -73);
  State.ScopeRefLevel = 10;
  EXPECT_FLOAT_EQ(Link.AntennaDbm(100), -93);
}

}  // namespace
}  // namespace spectrino::test
