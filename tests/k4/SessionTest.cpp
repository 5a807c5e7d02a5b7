// What goes over the two connections, in which order, and what the user is told when they do not come about.
#include "k4/K4Session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "k4/SessionBench.h"

namespace spectrino {
namespace {

using test::Log;
using test::SessionBench;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

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
    // What asks for the radio's state comes twice, before the displays are chosen and after.
    const auto last = std::ranges::find(bench.Events.rbegin(), bench.Events.rend(), "CAT AI5;").base() - 1;
    const Log burst(last, bench.Events.end());
    EXPECT_THAT(burst,
                ::testing::IsSupersetOf({"CAT FA;", "CAT MD$;", "CAT #SPN;", "CAT #SCL;", "CAT ME0070;"}));
    EXPECT_EQ(std::ranges::count(bench.Events, "CAT FA;"), 2);
    Log others = bench.Events;
    std::erase_if(others, [&](const std::string& event) { return std::ranges::count(burst, event) != 0; });
    EXPECT_EQ(others, connecting + opening + displays + sub);
    EXPECT_THAT(bench.User.Statuses, ElementsAre("Connected to k4.local:4532:9200/9201", ""));
    EXPECT_TRUE(bench.State.K4Active && bench.State.K4Connected && bench.State.MinipanOn);
    EXPECT_TRUE(bench.View.MinipanTicked && bench.View.BsetCleared && !bench.View.Waiting);
    EXPECT_EQ(bench.State.SubRxOn, -1);
    EXPECT_EQ(bench.State.RxSuffix, "");
    EXPECT_EQ(bench.State.K4SpanPreset, 1);
    EXPECT_EQ(bench.View.SpanPreset, 1);
  }
}

TEST(K4Session, AddressAndPortsDecideWhereToConnect) {
  struct Case {
    std::string Address, CatPort, PanPort;
    Log Connects;
    std::string Message;
  };
  const auto tcpError = [](const std::string& host, const std::string& ports, const std::string& cause = {}) {
    return "TCP ERROR - HOST = " + host + " " + ports + ": " +
           (cause.empty() ? "no answer within 1000 ms: is the radio switched on?" : cause);
  };
  const std::string usual = "PORTPAN = 9201 PORTCAT = 9200";
  const auto usualConnects = [](const std::string& host) {
    return Log{"PAN connect " + host + ":9201", "CAT connect " + host + ":9200"};
  };
  for (const Case& c :
       {Case{"", "1", "2", {}, "TCP Port not defined"},
        Case{" :9200", "9200", "9201", {}, tcpError("", usual, "the address names no host")},
        Case{" 10.0.0.4 :77", "", "x", usualConnects("10.0.0.4"), tcpError("10.0.0.4", usual)},
        Case{"radio",
             "65535",
             " 40000",
             {"PAN connect radio:40000", "CAT connect radio:65535"},
             tcpError("radio", "PORTPAN = 40000 PORTCAT = 65535")},
        Case{"::1", "", "", usualConnects("::1"), tcpError("::1", usual)},
        Case{" [::1]:9200 ", "", "", usualConnects("::1"), tcpError("::1", usual)},
        Case{"[fe80::1%eth0", "", "", usualConnects("fe80::1%eth0"), tcpError("fe80::1%eth0", usual)},
        Case{"2001:db8:0:0:0:0:0:7", "", "", usualConnects("2001:db8:0:0:0:0:0:7"),
             tcpError("2001:db8:0:0:0:0:0:7", usual)},
        Case{"[]:9200", "", "", {}, tcpError("", usual, "the address names no host")},
        Case{"k4:9200:9201", "", "", usualConnects("k4"), tcpError("k4", usual)}}) {
    SessionBench bench;
    bench.Setting("K4TCP", c.Address);
    bench.Setting("K4CATPORT", c.CatPort);
    bench.Setting("K4PANPORT", c.PanPort);
    const K4ConnectOutcome outcome = bench.Session->Start();  // silence, and nobody says OK
    EXPECT_TRUE(outcome.Failed);
    EXPECT_EQ(outcome.Message, c.Message);
    EXPECT_EQ(bench.Events.empty(), c.Address.empty());
    std::erase_if(bench.Events, [](const std::string& event) { return event.find("connect ") != 4; });
    EXPECT_EQ(bench.Events, c.Connects);
    EXPECT_FALSE(bench.State.K4Connected || bench.State.K4Active);
  }
}

TEST(K4Session, SilenceAsksForOtherSettingsAndOkTriesThem) {
  SessionBench bench;
  bench.Setting("K4TCP", "old");
  bench.Setting("TCPTimeOut", "400");
  bench.Retry.Answers = {{" new ", " 5000x ", "5001", "5000"}, {"third", "abc", "", "100"}};
  const auto start = bench.Time.Now();
  const K4ConnectOutcome outcome = bench.Session->TCPConnect();
  EXPECT_EQ(outcome.Message,
            "TCP ERROR - HOST = third PORTPAN = 9201 PORTCAT = 9200: no answer within 250 ms: is the radio "
            "switched on?");
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
  for (const bool cat : {true, false}) {
    for (const bool catFirst : {true, false}) {
      SessionBench bench;
      bench.Setting("K4TCP", "k4.local");
      bench.Pump.Meanwhile = [&] {
        if (catFirst && bench.Events.size() < 4) return;  // both answers in one turn
        if (catFirst) bench.WSCat.Answer(cat);
        bench.WSPan.Answer(!cat);
        bench.WSCat.Answer(cat);
      };
      EXPECT_FALSE(bench.Session->Start().Failed);
      EXPECT_TRUE(bench.State.K4Connected);
      const std::string missing = cat ? "panadapter port 9201" : "CAT port 9200";
      EXPECT_THAT(bench.User.Statuses,
                  ElementsAre(HasSubstr("Connected to"), "The K4's " + missing + ": refused"));
    }
  }
}

TEST(K4Session, EachPortIsOpenedOnceWheneverItConnects) {
  for (const bool cat : {true, false}) {
    for (int late = 3; late <= 7; ++late) {  // the last pause of the opening is the seventh
      SessionBench bench;
      bench.Setting("K4TCP", "k4.local");
      int pauses = 0;
      bench.Pump.Meanwhile = [&] {
        (cat ? bench.WSPan : bench.WSCat).Answer(true);
        if (++pauses >= late) (cat ? bench.WSCat : bench.WSPan).Answer(true);
      };
      EXPECT_FALSE(bench.Session->Start().Failed);
      const auto sent = [&bench](const char* what) { return std::ranges::count(bench.Events, what); };
      EXPECT_EQ(sent("PAN PING\r\n"), 1) << late;
      EXPECT_EQ(sent("PAN A1\r\n"), 1) << late;
      EXPECT_EQ(sent("CAT ID;"), 1) << late;
      EXPECT_EQ(sent("CAT AI5;"), 2) << late;
      EXPECT_EQ(bench.User.Statuses.back(), "") << late;
    }
  }
}

TEST(K4Session, BothPortsLostInTheOpeningAreTriedAgainOrTold) {
  for (const bool again : {true, false}) {
    for (int lost = 4; lost <= 7; ++lost) {
      SessionBench bench;
      bench.Setting("Reconnect", again ? "1" : "0");
      bench.Setting("K4TCP", "k4.local");
      int pauses = 0;
      bench.Pump.Meanwhile = [&] {
        for (test::ScriptedSocket* socket : {&bench.WSPan, &bench.WSCat}) {
          socket->Answer(true);
          if (pauses + 1 == lost) socket->Closed();
        }
        ++pauses;
      };
      const K4ConnectOutcome outcome = bench.Session->Start();
      EXPECT_EQ(outcome.Failed, !again) << lost;
      EXPECT_EQ(outcome.Message, again ? ""
                                       : "TCP ERROR - HOST = k4.local PORTPAN = 9201 PORTCAT = 9200: closed "
                                         "by the radio");
      EXPECT_EQ(bench.Session->Health().NextTry.has_value(), again);
      EXPECT_EQ(bench.User.Statuses.back(), "") << lost;
    }
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

TEST(K4Session, ALostPortComesBackByItselfWhileTheOtherWorksOn) {
  for (const bool cat : {true, false}) {
    SCOPED_TRACE(cat ? "CAT" : "PAN");
    SessionBench bench;
    bench.BeginSession();
    bench.WSCat.Receive("FB;");
    test::ScriptedSocket& lost = cat ? bench.WSCat : bench.WSPan;
    lost.Error("reset");
    EXPECT_TRUE(bench.State.K4Connected);
    EXPECT_EQ(bench.Session->Health().State, LinkState::Lost);
    EXPECT_THAT(bench.Session->Health().Why,
                HasSubstr(cat ? "CAT port 9200: reset" : "panadapter port 9201: reset"));
    bench.Session->SendK4("FA");
    bench.Session->SendPan("A1");
    EXPECT_THAT(bench.Take(), ElementsAre(cat ? "PAN A1\r\n" : "CAT FA;"));
    std::vector<int> tries;
    for (int half = 1; half <= 90; ++half) {
      bench.Time.Advance(500ms);
      bench.Session->tmrK4_Timer();
      if (lost.Connecting) tries.push_back(half / 2);
      lost.Answer(half == 90);
    }
    EXPECT_THAT(tries, ElementsAre(1, 3, 7, 15, 30, 45));
    const auto sent = [&bench](const char* what) { return std::ranges::count(bench.Events, what); };
    bench.Session->tmrK4_Timer();
    EXPECT_EQ(sent("CAT AI5;"), cat ? 2 : 0) << "both bursts";
    EXPECT_EQ(sent("PAN A1\r\n"), cat ? 0 : 1);
    EXPECT_EQ(sent("PAN Z0\r\n"), 1) << "with whichever came back";
    EXPECT_EQ(bench.User.Logged.size(), 1U) << "each failed try says the same";
    bench.WSCat.Receive("FB;");
    bench.WSPan.Receive("noise");
    EXPECT_EQ(bench.Session->Health().State, LinkState::Live);
    for (const auto& [heard, pause] : {std::pair{0s, 15s}, {5s, 1s}}) {
      bench.Time.Advance(heard);
      lost.Receive("FB;");
      lost.Closed();
      EXPECT_EQ(bench.Session->Health().NextTry, bench.Time.Now() + pause) << "a byte alone is no recovery";
      lost.Connected();
      lost.Receive("FB;");
    }
    EXPECT_EQ(bench.User.Logged.size(), 2U);
    bench.Session->Stop();
    bench.Time.Advance(60s);
    bench.Session->tmrK4_Timer();
    EXPECT_FALSE(lost.Connecting);
  }
}

TEST(K4Session, ARadioThatFallsSilentIsNotLiveAndWithoutReconnectingNothingIsTried) {
  SessionBench bench;
  bench.Setting("Reconnect", "0");
  bench.BeginSession();
  bench.WSCat.Receive("FB;");
  bench.WSPan.Receive("noise");
  EXPECT_EQ(bench.Session->Health().State, LinkState::Live);
  bench.Time.Advance(3001ms);
  EXPECT_EQ(bench.Session->Health().State, LinkState::Silent);
  EXPECT_EQ(HealthText(bench.Session->Health(), "K4", bench.Time.Now()),
            "K4 silent for 3 s: is it switched on?");
  bench.WSCat.Receive("FB;");
  EXPECT_EQ(
      bench.Session->Health().Why,
      "its panadapter port 9201 sends nothing, the other one does. Press Stop, then Start to open it anew.");
  bench.WSCat.Closed();
  bench.WSPan.Closed();
  bench.Time.Advance(60s);
  bench.Session->SendK4("FA");
  bench.Session->tmrK4_Timer();
  EXPECT_THAT(bench.Events, IsEmpty());
  EXPECT_EQ(HealthText(bench.Session->Health(), "K4", bench.Time.Now()),
            "The K4's CAT port 9200 and panadapter port 9201: closed by the radio. Press Stop, then Start to "
            "connect again.");
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
  bench.WSCat.Receive(std::string(65537, 'x'));
  bench.WSCat.Receive("FB;");
  ASSERT_EQ(bench.Replies.size(), 4U);
  EXPECT_EQ(bench.Replies[1].size(), 65537U);
  EXPECT_EQ(bench.Replies[3], "FB;");
  EXPECT_THAT(bench.User.Logged, ElementsAre(HasSubstr("65537"))) << "once";
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

}  // namespace
}  // namespace spectrino
