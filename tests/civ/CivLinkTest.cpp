// The link between a serial port and the program: what is written when, and what of a stream is understood.
#include "civ/CivLink.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "civ/CivDoubles.h"
#include "civ/IcomBackend.h"
#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"

namespace spectrino::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

struct Bench : ::testing::Test {
  /// Every frame that leaves within the time, a look each millisecond.
  template <typename Link>
  std::vector<std::string> Sent(Link& link, std::chrono::milliseconds time) {
    for (auto left = time; left > 0ms; left -= 1ms) {
      Time.Advance(1ms);
      link.Pump();
    }
    return Port.Take();
  }
  FakeSerialPort Port;
  CivState State;
  RecordingPanel Panel;
  FakeClock Time;
  RecordingNotifier User;
};

struct CivLinkTest : Bench {
  CivLinkTest() {
    State.RadioAddress = "94";
    State.ControllerAddress = "E0";
    EXPECT_EQ(Link.Open("/dev/radio"), "");
  }
  CivLink Link{Port, State, Panel, Time, User};
};

TEST_F(CivLinkTest, FramesLeaveInOrderTenMillisecondsApart) {
  Link.SendCiv("16", "12", "02");
  Link.SendCiv("14", "01", "0128");
  Link.SendCiv("14", "01", "0129");
  Link.SendCiv("19", "00", "?");
  EXPECT_THAT(Port.Take(), ElementsAre("FEFE94E0161202FD"));
  EXPECT_THAT(Sent(Link, 9ms), IsEmpty());
  EXPECT_THAT(Sent(Link, 1ms), ElementsAre("FEFE94E014010128FD"));
  EXPECT_THAT(Sent(Link, 100ms), ElementsAre("FEFE94E014010129FD", "FEFE94E01900FD"));
  Link.SendCiv("07", "", "");
  EXPECT_THAT(Port.Take(), ElementsAre("FEFE94E007FD"));  // nothing waits: at once
}

TEST_F(CivLinkTest, WhateverAMacroHoldsIsOneFrame) {
  const std::pair<std::string, std::string> macros[] = {{"160201", "160201"},
                                                        {"16020", "1602"},
                                                        {"", ""},
                                                        {"1", ""},
                                                        {"16 zz\x01", "160000"},
                                                        {std::string(10001, '7'), std::string(10000, '7')}};
  for (const auto& [text, body] : macros) {
    Link.SendCiv(text, {}, {});
    EXPECT_THAT(Sent(Link, 20ms), ElementsAre("FEFE94E0" + body + "FD"));
  }
}

TEST_F(CivLinkTest, ATurningWheelSendsItsNewestFrequencyAndAsksOnce) {
  for (const char* bcd : {"0040071400", "0041071400", "0042071400", "0043071400"}) {
    Link.SendFrequency(bcd);
    Link.RequestIcomStatus();
  }
  EXPECT_THAT(Sent(Link, 200ms),
              ElementsAre("FEFE94E0050040071400FD", "FEFE94E0050043071400FD", "FEFE94E003FD", "FEFE94E004FD",
                          "FEFE94E01401FD", "FEFE94E01403FD", "FEFE94E0271400FD", "FEFE94E0271A00FD",
                          "FEFE94E0271900FD"));
}

TEST_F(CivLinkTest, NothingLeavesWhileAFrameIsBuiltOrThePortIsClosed) {
  State.CivSendBusy = true;
  Link.SendCiv("07", "", "");
  State.CivSendBusy = false;
  Port.Close();
  Link.SendCiv("08", "", "");
  EXPECT_THAT(Sent(Link, 100ms), IsEmpty());
}

TEST_F(CivLinkTest, ClosingWritesWhatWaitsButAsksNoMore) {
  Link.SendCiv("07", "", "");
  Link.RequestIcomStatus();
  Link.SendCiv("27", "11", "00");
  Link.Close();
  Link.SendCiv("08", "", "");
  EXPECT_THAT(Port.Take(), ElementsAre("FEFE94E007FD")) << "nobody waited";
  EXPECT_THAT(Sent(Link, 100ms), ElementsAre("FEFE94E0271100FD"));
  EXPECT_FALSE(Port.IsOpen());
}

// Each frame told apart by what it changes; noise and other stations between them.
constexpr const char* kStream =
    "12 FD FE 94 FD"                        // noise with ends of message
    "FE FE 94 E0 14 01 00 11 FD"            // our own echo
    "FE FE E0 94 03 00 00 23 14 00 FD"      // 14.23 MHz
    "0F D0"                                 // FD across the byte boundary: half a byte is left
    "FE FE E0 94 14 03 00 99 FD"            // squelch
    "FE FE E0 76 14 01 00 22 FD"            // another radio
    "FE FE E0 94 FB FD 00"                  // acknowledged, and a stray zero
    "FE FE E0 94 14 01 01 28 FD FE FE E0";  // AF level, and a frame that has only begun

TEST_F(CivLinkTest, AStreamMeansTheSameHoweverItIsCut) {
  const auto stream = Bytes(kStream);
  for (std::size_t cut = 0; cut <= stream.size(); ++cut) {
    State.RadioFreqMHz = State.AfLevel = State.SqlLevel = 0;
    Panel.Told.clear();
    const std::span<const std::uint8_t> whole(stream);
    Port.DataArrival(whole.first(cut));
    // The first round goes byte by byte.
    for (std::size_t at = cut; at < stream.size(); at += cut == 0 ? 1 : stream.size()) {
      Port.DataArrival(cut == 0 ? whole.subspan(at, 1) : whole.subspan(at));
    }
    EXPECT_EQ(State.RadioFreqMHz, 14.23) << cut;
    EXPECT_EQ(Panel.Told, "squelch 99; af 128; ") << cut;
  }
}

TEST_F(CivLinkTest, NoiseWithoutAnEndIsDroppedBeforeItFillsTheMemory) {
  const std::vector<std::uint8_t> noise(CivRxBuffer::kMaxText / 4, 0xA5);
  Port.DataArrival(Bytes("FE FE E0 94 03"));
  for (int i = 0; i < 2; ++i) Port.DataArrival(noise);
  EXPECT_THAT(User.Logged, ElementsAre(HasSubstr("64 KiB")));
  Port.DataArrival(Bytes("FE FE E0 94 03 00 00 23 14 00 FD"));
  EXPECT_EQ(State.RadioFreqMHz, 14.23);
}

struct IcomLinkTest : Bench {
  IcomLinkTest() { File.Files["Spectrino"] = "[Setup]\nPort=3\nICADDR= a4 \n[Ports]\n3=/dev/radio\n"; }
  MemorySettingsFile File;
  SettingsStore Store{File, User};
  ScriptedPump Pump;
  RadioState Radio;
  SpectrumLine Line;
  IcomLink Link{{Port, State, Panel, Store, Time, Pump, User}};
  IcomCommands Commands{State, Link.Sender(), Pump};
  BandMemory Memory = LoadBandMemory(Store);
  IcomBackend Backend{State, Link, Commands, Store, Memory};
};

TEST_F(IcomLinkTest, StartIdentifiesTheRadioAndSetsItsScopeUp) {
  Pump.Meanwhile = [&] {
    EXPECT_THAT(Port.Written, ElementsAre("FEFEA4E01900FD"));
    Port.DataArrival(Bytes("FE FE E0 A4 19 00 A4 FD"));
  };
  State.ScopeShownSpan = 1;
  ASSERT_TRUE(Link.Open(Radio));
  EXPECT_EQ(Port.Path, "/dev/radio");
  EXPECT_EQ(Pump.Waited, 150ms);
  EXPECT_EQ(State.IcomModelName, "IC-705");
  EXPECT_EQ(State.ScopeLevels.size(), 476U);
  EXPECT_EQ(State.ScopeShownSpan, 0);
  EXPECT_EQ(Panel.Told, "list; ");
  EXPECT_THAT(
      Sent(Link, 200ms),
      ElementsAre("FEFEA4E01900FD", "FEFEA4E0271001FD", "FEFEA4E0271101FD", "FEFEA4E0271200FD",
                  "FEFEA4E0271300FD", "FEFEA4E027140000FD", "FEFEA4E003FD", "FEFEA4E004FD", "FEFEA4E01401FD",
                  "FEFEA4E01403FD", "FEFEA4E0271400FD", "FEFEA4E0271A00FD", "FEFEA4E0271900FD"));
}

TEST_F(IcomLinkTest, AWrongAddressEndsTheStart) {
  for (const char* address : {"", "9", "094"}) {
    Store.SaveSetting("Spectrino", "Setup", "ICADDR", address);
    User.Messages.clear();
    EXPECT_FALSE(Link.Open(Radio));
    EXPECT_THAT(User.Messages, ElementsAre("Spectrino|COM/ICOM ERROR"));
    EXPECT_EQ(Port.Path, "");
    EXPECT_FALSE(State.IcomActive);
  }
}

TEST_F(IcomLinkTest, APortThatIsNotToBeHadOrGoesAwayIsToldAndStaysClosed) {
  Port.Trouble = "/dev/radio is not there";
  EXPECT_TRUE(Link.Open(Radio));
  EXPECT_THAT(User.Statuses, ElementsAre("/dev/radio is not there"));
  EXPECT_EQ(Pump.Waited, 0ms);
  Link.Close();

  Port.Trouble.clear();
  ASSERT_TRUE(Link.Open(Radio));
  EXPECT_THAT(Port.Take(), ElementsAre("FEFEA4E01900FD"));
  Port.Pull("The serial port is gone");
  EXPECT_THAT(User.Statuses.back(), HasSubstr("Stop and Start"));
  EXPECT_THAT(Sent(Link, 500ms), IsEmpty());
  EXPECT_EQ(Link.Poll({}, Line), PollResult::Pending);
}

TEST_F(IcomLinkTest, ARadioThatIsSwitchedOnLaterIsSetUpThen) {
  State.RadioFreqMHz = 7.1;
  ASSERT_TRUE(Link.Open(Radio));
  EXPECT_EQ(State.RadioFreqMHz, 0) << "what an earlier radio told";
  Sent(Link, 300ms);
  for (int tick = 0; tick < 3; ++tick) {
    Link.tmrAnswer_Timer();
    EXPECT_THAT(Sent(Link, 100ms), ElementsAre("FEFEA4E01900FD"));
  }
  EXPECT_THAT(User.Statuses, ElementsAre(HasSubstr("No answer from CI-V address A4")));
  Port.DataArrival(Bytes("FE FE E0 A4 19 00 A4 FD"));
  Link.tmrAnswer_Timer();
  EXPECT_EQ(User.Statuses.back(), "");
  const std::vector<std::string> sent = Sent(Link, 300ms);
  ASSERT_EQ(sent.size(), 12U);
  EXPECT_EQ(sent[1], "FEFEA4E0271101FD");
  EXPECT_EQ(State.ScopeLevels.size(), 476U);
  Link.tmrAnswer_Timer();
  EXPECT_THAT(Sent(Link, 100ms), IsEmpty());
}

TEST_F(IcomLinkTest, EachLineIsPolledOnceWithItsOwnEdges) {
  ASSERT_TRUE(Link.Open(Radio));
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
  ASSERT_TRUE(Link.Open(Radio));
  Sent(Link, 300ms);
  State.RadioFreqMHz = 0.1371;
  State.RadioModeIndex = 2;
  State.ScopeRefLevel = 4.5F;
  State.ScopeFixedMode = 1;
  Memory.Records[8] = {14.0741, 1, 10};
  Backend.SelectBand(6);
  const std::vector<std::string> sent = Sent(Link, 300ms);
  ASSERT_GE(sent.size(), 3U);
  EXPECT_EQ(sent[0], "FEFEA4E0050041071400FD");
  EXPECT_EQ(sent[1], "FEFEA4E00601FD");
  EXPECT_EQ(sent[2], "FEFEA4E027140000FD");
  EXPECT_EQ(sent.size(), 10U) << "and the status is asked for once";
  EXPECT_EQ(State.ScopeFixedMode, 0);
  for (const char* band : {"1", "0"}) {  // 2200 m counts as general coverage as well
    EXPECT_EQ(Store.GetSetting("Spectrino", "BSR", std::string("FREQ") + band, ""), "0.1371");
    EXPECT_EQ(Store.GetSetting("Spectrino", "BSR", std::string("MODE") + band, ""), "2");
    EXPECT_EQ(Store.GetSetting("Spectrino", "BSR", std::string("LEVEL") + band, ""), "4");
  }

  State.RadioFreqMHz = 14.2;
  const std::string stored = File.Files["Spectrino"];
  Backend.SelectBand(6);
  EXPECT_THAT(Sent(Link, 100ms), IsEmpty()) << "it is there already";
  EXPECT_EQ(File.Files["Spectrino"], stored);
}

TEST_F(IcomLinkTest, AMacroMayHaveBlanksAndSteppingUpRaisesTheFrequency) {
  ASSERT_TRUE(Link.Open(Radio));
  Sent(Link, 300ms);
  Backend.SendMacro(" 16 02\t01 ");
  EXPECT_THAT(Sent(Link, 100ms), ElementsAre("FEFEA4E0160201FD"));
  State.ScopeSpanMHz = 0.3;
  Backend.StepFrequency(+1, 14.1);
  EXPECT_EQ(Sent(Link, 300ms).front(), "FEFEA4E0050000201400FD");
  Backend.StepFrequency(-1, 14.1);
  EXPECT_EQ(Sent(Link, 300ms).front(), "FEFEA4E0050000001400FD");
}

TEST_F(IcomLinkTest, TheScopeRestsDuringALayoutAndEndsWithTheRun) {
  ASSERT_TRUE(Link.Open(Radio));
  Sent(Link, 300ms);
  Link.BeforeLayout();
  Panel.Told.clear();
  Port.DataArrival(Bytes("FE FE E0 A4 14 01 01 28 FD"));
  EXPECT_EQ(Panel.Told, "");
  Link.AfterLayout(false);
  Port.DataArrival({});
  EXPECT_EQ(Panel.Told, "af 128; ");
  EXPECT_THAT(Sent(Link, 50ms), ElementsAre("FEFEA4E0271100FD", "FEFEA4E0271101FD"));
  Link.BeforeLayout();
  Link.AfterLayout(true);
  EXPECT_THAT(Sent(Link, 50ms), ElementsAre("FEFEA4E0271100FD"));
  Link.Close();
  EXPECT_THAT(Sent(Link, 50ms), ElementsAre("FEFEA4E0271100FD"));
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
