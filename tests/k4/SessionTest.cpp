// What goes over the two connections, in which order, and what the user is told when they do not come about.
#include "k4/K4Session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "k4/K4Backend.h"
#include "k4/K4Link.h"
#include "k4/PanFrames.h"
#include "k4/SessionBench.h"

namespace spectrino {
namespace {

using test::Log;
using test::SessionBench;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

const std::string kBurst =
    "AI5;K41;TM1;#SCL;#SPN;MD$;#REF;#SCL;#FXT;ME0102;FA;FB;MD;FT;AG;AG$;BL;BW;BW$;IS;IS$;CW;DV;SB;DT;DT$;NM;"
    "NM$;"
    "NA;NA$;RT;XT;FP;FP$;SMH;SMH$;AP;AP$;GT;GT$;NR;NR$;NB;NB$;AN;PA$;PA;RA$;RA;VX;RO;BS;AR;AR$;TS;AT;#MP$;"
    "ME0070;"
    "#DPM;#HDPM;";

/// Each command of a burst as a send of its own.
Log Sends(const std::string& burst) {
  Log sends;
  for (std::size_t from = 0, end; (end = burst.find(';', from)) != std::string::npos; from = end + 1) {
    sends.push_back("CAT " + burst.substr(from, end + 1 - from));
  }
  return sends;
}

Log operator+(Log left, const Log& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

TEST(K4Session, StartOpensBothConnectionsAndSetsTheRadioUp) {
  for (const bool isK4D : {false, true}) {
    SessionBench bench;
    bench.Setting("K4TCP", "k4.local:4532");
    bench.View.Sub = isK4D;
    bench.State.SubRxOn = 1;  // of an earlier session
    bench.State.RxSuffix = "$";
    bench.Pump.Meanwhile = [&] {
      bench.WSPan.Answer(true);
      bench.WSCat.Answer(true);
      if (!bench.Events.empty() && bench.Events.back() == "CAT #HDPM;") bench.State.IsK4D = isK4D;
    };
    const K4ConnectOutcome outcome = bench.Session->Start();
    EXPECT_FALSE(outcome.Failed);
    EXPECT_EQ(outcome.Message, "");
    const Log connecting{"PAN close", "CAT close", "PAN connect k4.local:9201", "CAT connect k4.local:9200"};
    const Log opening{"PAN PING\r\n", "CAT ID;", "CAT ME0005;"};
    const Log displays{"PAN A1\r\n", "PAN B0\r\n", "PAN Y1\r\n", isK4D ? "PAN Z1\r\n" : "PAN Z0\r\n"};
    const Log sub = isK4D ? Log{"CAT #HDPM1;"} : Log{};
    EXPECT_EQ(bench.Events, connecting + opening + Sends(kBurst) + displays + sub + Sends(kBurst));
    EXPECT_THAT(bench.User.Statuses, ElementsAre("Connected to k4.local:4532:9200/9201", ""));
    EXPECT_TRUE(bench.State.K4Active && bench.State.K4Connected && bench.State.MinipanOn);
    EXPECT_TRUE(bench.View.MinipanTicked && bench.View.BsetCleared && !bench.View.Waiting);
    EXPECT_EQ(bench.State.SubRxOn, -1);
    EXPECT_EQ(bench.State.RxSuffix, "");
    EXPECT_EQ(bench.State.K4SpanPreset, 1);
    EXPECT_EQ(bench.View.SpanPreset, 1);
    EXPECT_TRUE(bench.Session->TimerEnabled());
  }
}

TEST(K4Session, AddressAndPortsDecideWhereToConnect) {
  struct Case {
    std::string Address, CatPort, PanPort;
    Log Connects;
    std::string Message;
  };
  const std::string tcpError = "TCP ERROR - HOST = ";
  for (const Case& c : {Case{"", "1", "2", {}, "TCP Port not defined"},
                        Case{" :9200", "9200", "9201", {}, tcpError + " PORTPAN = 9201 PORTCAT = 9200"},
                        Case{" 10.0.0.4 :77",
                             "",
                             "x",
                             {"PAN connect 10.0.0.4:9201", "CAT connect 10.0.0.4:9200"},
                             tcpError + "10.0.0.4 PORTPAN = 9201 PORTCAT = 9200"},
                        Case{"radio",
                             "65535",
                             " 40000",
                             {"PAN connect radio:40000", "CAT connect radio:65535"},
                             tcpError + "radio PORTPAN = 40000 PORTCAT = 65535"}}) {
    SessionBench bench;
    bench.Setting("K4TCP", c.Address);
    bench.Setting("K4CATPORT", c.CatPort);
    bench.Setting("K4PANPORT", c.PanPort);
    const K4ConnectOutcome outcome = bench.Session->Start();  // silence, and nobody says OK
    EXPECT_TRUE(outcome.Failed);
    EXPECT_EQ(outcome.Message, c.Message);
    Log connects;
    for (const std::string& event : bench.Events) {
      if (event.find("connect ") == 4) connects.push_back(event);
    }
    EXPECT_EQ(connects, c.Connects);
    EXPECT_EQ(bench.Events.empty(), c.Address.empty());
    EXPECT_FALSE(bench.State.K4Connected || bench.State.K4Active || bench.Session->TimerEnabled());
  }
}

TEST(K4Session, SilenceAsksForOtherSettingsAndOkTriesThem) {
  SessionBench bench;
  bench.Setting("K4TCP", "old");
  bench.Setting("TCPTimeOut", "400");
  bench.Retry.Answers = {{" new ", " 5000x ", "5001", "5000"}, {"third", "abc", "", "100"}};
  const auto start = bench.Time.Now();
  const K4ConnectOutcome outcome = bench.Session->TCPConnect();
  EXPECT_EQ(outcome.Message, "TCP ERROR - HOST = third PORTPAN = 9201 PORTCAT = 9200");
  const std::string help = "\nMake sure of your settings and click OK to resume or Cancel to abort";
  const auto attempt = [&](const std::string& host, const std::string& cat, const std::string& pan,
                           const std::string& shown) {
    return Log{"PAN close",
               "CAT close",
               "PAN connect " + host + ":" + pan,
               "CAT connect " + host + ":" + cat,
               "not on top",
               "dialog: Unable to connect " + shown + help,
               "on top"};
  };
  const Log expected = attempt("old", "9200", "9201", "old 9200 9201") +
                       attempt("new", "5000", "5001", "new 5000 5001") +
                       attempt("third", "9200", "9201", "third 0 0") + Log{"PAN close", "CAT close"};
  EXPECT_EQ(bench.Events, expected);
  EXPECT_EQ(bench.Retry.Shown[1], (K4ConnectTexts{"new", "5000", "5001", "3000"}));
  EXPECT_EQ(bench.Setting("K4TCP"), "third");
  EXPECT_EQ(bench.Setting("K4CATPORT"), "abc");
  EXPECT_EQ(bench.Setting("K4PANPORT"), "");
  EXPECT_EQ(bench.Setting("TCPTimeOut"), "250");
  // Two pauses of 50 ms, then looks of 30 ms until the time is exceeded: 420, 3030 and 270 ms.
  EXPECT_EQ(bench.Time.Now() - start, 300ms + 420ms + 3030ms + 270ms + 30ms);
}

TEST(K4Session, OnePortIsEnoughWhicheverAnswersFirst) {
  struct Case {
    bool Cat, Pan, CatFirst;
    std::string Missing;
  };
  for (const Case& c : {Case{true, false, false, "The K4's panadapter port 9201 does not answer"},
                        Case{true, false, true, "The K4's panadapter port 9201 does not answer"},
                        Case{false, true, false, "The K4's CAT port 9200 does not answer"},
                        Case{false, true, true, "The K4's CAT port 9200 does not answer"}}) {
    SessionBench bench;
    bench.Setting("K4TCP", "k4.local");
    bench.Pump.Meanwhile = [&] {
      if (c.CatFirst && bench.Events.size() < 4) return;  // both answers in one turn
      if (c.CatFirst) bench.WSCat.Answer(c.Cat);
      bench.WSPan.Answer(c.Pan);
      bench.WSCat.Answer(c.Cat);
    };
    EXPECT_FALSE(bench.Session->Start().Failed);
    EXPECT_TRUE(bench.State.K4Connected);
    EXPECT_THAT(bench.User.Statuses, ElementsAre(HasSubstr("Connected to"), c.Missing));
  }
}

TEST(K4Session, GivingUpEndsTheStartAtTheNextLook) {
  for (const int look : {1, 2, 5}) {
    SessionBench bench;
    bench.Setting("K4TCP", "k4.local");
    int turns = 0;
    bench.Pump.Meanwhile = [&] { bench.GivenUp = ++turns == look || bench.GivenUp; };
    const K4ConnectOutcome outcome = bench.Session->Start();
    EXPECT_TRUE(outcome.Failed);
    EXPECT_EQ(outcome.Message, "");
    EXPECT_THAT(bench.Retry.Shown, IsEmpty());
    EXPECT_EQ(bench.Events.back(), "CAT close");
    EXPECT_LE(turns, look + 2);
  }
}

TEST(K4Session, TheTimerPollsAndSelectsTheMonitorOnce) {
  SessionBench bench;
  bench.BeginSession();
  const Log before = Sends("#SCL;#SPN;#REF;#SCL;#FXT;TQX;");
  const Log after = Sends("SMH;SMH$;#HDPM;#DPM;");
  bench.Session->tmrK4_Timer();
  EXPECT_EQ(bench.Take(), before + after);
  bench.State.SubRxOn = 0;
  bench.Session->tmrK4_Timer();
  bench.Session->tmrK4_Timer();
  EXPECT_EQ(bench.Take(), before + Log{"monitor 0"} + after + before + after);
}

TEST(K4Session, ALostConnectionIsToldOnceAndNothingIsSentAnyMore) {
  for (const auto& loss : std::vector<std::function<void(SessionBench&)>>{
           [](SessionBench& bench) { bench.WSCat.Closed(); },
           [](SessionBench& bench) { bench.WSPan.Closed(); },
           [](SessionBench& bench) { bench.WSCat.Error("reset"); },
           [](SessionBench& bench) { bench.WSPan.Error("timed out"); }}) {
    SessionBench bench;
    bench.BeginSession();
    loss(bench);
    EXPECT_FALSE(bench.State.K4Connected);
    bench.WSCat.Closed();
    bench.WSPan.Closed();
    bench.Session->SendK4("FA");
    bench.Session->SendPan("A1");
    bench.Session->RefreshK4();
    bench.Session->tmrK4_Timer();
    EXPECT_THAT(bench.Events, IsEmpty());
    EXPECT_FALSE(bench.Session->TimerEnabled());
    EXPECT_THAT(bench.User.Statuses,
                ElementsAre("Connection to the K4 lost. Press Stop, then Start to connect again."));
  }
}

TEST(K4Session, CommandsLeaveTrimmedWithOneSemicolon) {
  SessionBench bench;
  bench.BeginSession();
  for (const std::string_view command : {"FA", " FA; ", "MD$3;MD$", "", "KY hello "}) {
    bench.Session->SendK4(command);
  }
  bench.Session->SendCat("FA00014074000;");
  EXPECT_THAT(bench.Events, ElementsAre("CAT FA;", "CAT FA;", "CAT MD$3;MD$;", "CAT ;", "CAT KY hello;",
                                        "CAT FA00014074000;"));
}

TEST(K4Session, RepliesReachTheParserAsTheyAdd) {
  SessionBench bench;
  bench.BeginSession();
  bench.WSCat.Receive("FA0001");
  bench.WSCat.Receive("4074000;MD");
  bench.State.K4ParserBusy = true;
  bench.WSCat.Receive("2;");
  bench.State.K4ParserBusy = false;
  bench.WSCat.Receive("");
  EXPECT_THAT(bench.Replies, ElementsAre("FA0001", "FA00014074000;MD", "MD2;"));

  bench.Replies.clear();
  bench.WSCat.Receive(std::string(65536, 'x'));
  bench.WSCat.Receive("y");
  bench.WSCat.Receive("FB;");
  ASSERT_EQ(bench.Replies.size(), 3U);
  EXPECT_EQ(bench.Replies[1].size(), 65537U);
  EXPECT_EQ(bench.Replies[2], "FB;");
  EXPECT_THAT(bench.User.Logged.back(), HasSubstr("65537"));
}

TEST(K4Session, StopSwitchesTheMonitorOffBeforeItCloses) {
  SessionBench bench;
  bench.BeginSession();
  bench.WSCat.Receive("FA000");
  bench.Session->Stop();
  EXPECT_EQ(bench.Take(), (Log{"monitor 0", "PAN close", "CAT close"}));
  EXPECT_FALSE(bench.State.K4Connected || bench.State.K4PanDataSeen || bench.State.K4Active);
  bench.Session->Stop();
  EXPECT_EQ(bench.Take(), (Log{"PAN close", "CAT close"}));

  bench.BeginSession();
  bench.WSCat.Receive("FB;");
  EXPECT_EQ(bench.Replies.back(), "FB;");  // not behind the half reply of the old connection
}

struct LinkTest : ::testing::Test {
  SessionBench Bench;
  K4Link Link{Bench.State, *Bench.Session, Bench.User, Bench.Time};
  RadioState Radio;
  SpectrumLine Line;

  void Open() {
    Bench.Setting("K4TCP", "k4.local");
    Bench.RadioAnswers(true, true);
    ASSERT_TRUE(Link.Open(Radio));
    Bench.State.PanScaleDb = 70;
    Bench.State.PanSpanMHz = 0.05;
  }
  void Receive(const test::Bytes& bytes) { Bench.WSPan.DataArrival(bytes); }
};

TEST_F(LinkTest, EachNewLineOfTheMainPanadapterIsTakenOnce) {
  Open();
  EXPECT_TRUE(Radio.K4Connected);
  EXPECT_EQ(Link.Poll({}, Line), PollResult::Pending);
  test::FrameFields fields;
  fields.Reference = "-1355";
  fields.Level = [](int sample) { return -1200 + (sample == 513 ? 10 : 0); };
  const test::Bytes frame = test::PanFrame(fields);
  Receive({frame.begin(), frame.begin() + 1000});
  Bench.Time.Advance(7ms);
  Receive({frame.begin() + 1000, frame.end()});
  const auto arrived = Bench.Time.Now();
  Bench.Time.Advance(3ms);

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
  Link.Close(Radio);
  EXPECT_FALSE(Radio.K4Connected);
  Open();
  EXPECT_EQ(Link.Poll({}, Line), PollResult::Pending);
}

TEST_F(LinkTest, AFailedOpenTellsWhyAndAnAbandonedOneSaysNothing) {
  EXPECT_FALSE(Link.Open(Radio));
  EXPECT_THAT(Bench.User.Messages, ElementsAre("Spectrino|TCP Port not defined"));
  Bench.Setting("K4TCP", "k4.local");
  Bench.GivenUp = true;
  EXPECT_FALSE(Link.Open(Radio));
  EXPECT_EQ(Bench.User.Messages.size(), 1U);
}

TEST_F(LinkTest, FiltersAreCountedFromTheDial) {
  Bench.State.RadioMode = mode::kCw;
  Bench.State.SubRadioMode = mode::kLsb;
  Bench.State.IfShiftMainHz = 750;
  Bench.State.IfShiftSubHz = 1500;
  Bench.State.CwPitchHz = 700;
  TellRadioState(Bench.State, Radio);
  EXPECT_EQ(Radio.MainShiftHz, 50);
  EXPECT_EQ(Radio.SubShiftHz, 1500);
}

}  // namespace
}  // namespace spectrino
