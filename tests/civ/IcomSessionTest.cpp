// How a session brings its link back, by the clock: when a port is tried, when a scope is switched on again.
#include <gmock/gmock.h>

#include "civ/IcomBench.h"

namespace spectrino::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct IcomSessionTest : IcomBench {
  /// Passes go by for so many seconds. Those at which happens() was true, rounded.
  template <typename Happens>
  std::vector<int> Seconds(int count, Happens happens) {
    std::vector<int> seconds;
    for (int ms = 1; ms <= count * 1000; ++ms) {
      Time.Advance(1ms);
      Link.Poll({}, Line);
      if (happens()) seconds.push_back((ms + 500) / 1000);
    }
    return seconds;
  }
  bool Tried() { return std::exchange(opens_, Port.Opens) != Port.Opens; }
  bool Sends(const std::string& frame) {
    const auto sent = Port.Take();
    return std::ranges::find(sent, "FEFEA4E0" + frame + "FD") != sent.end();
  }
  void Hear(const std::string& body) { Port.DataArrival(Bytes("FEFEE0A4" + body + "FD")); }

 private:
  int opens_ = 0;
};

TEST_F(IcomSessionTest, ALostPortIsTriedAtGrowingPausesUntilStop) {
  Port.Trouble = "/dev/radio is not there";
  ASSERT_TRUE(Link.Open());
  EXPECT_TRUE(Tried());
  EXPECT_EQ(Session.Health().Why, Port.Trouble);
  EXPECT_THAT(Seconds(46, [&] { return Tried(); }), ElementsAre(1, 3, 7, 15, 30, 45));
  EXPECT_EQ(Pump.Waited, 0ms) << "the window waits for no port";
  EXPECT_THAT(User.Logged, ElementsAre(Port.Trouble)) << "each try says the same";
  EXPECT_THAT(User.Statuses, IsEmpty()) << "the window tells the health by itself";
  Store.SaveSetting("Spectrino", "Ports", "3", "/dev/other");
  Seconds(15, [&] { return Tried(); });
  EXPECT_EQ(Port.Path, "/dev/other") << "a lasting name is looked up each time";
  Link.Close();
  EXPECT_THAT(Seconds(40, [&] { return Tried(); }), IsEmpty());

  Store.SaveSetting("Spectrino", "Setup", "Reconnect", "0");
  Port.Trouble.clear();
  ASSERT_TRUE(Link.Open());
  EXPECT_TRUE(Tried());
  Port.Pull("ttyUSB0 was unplugged");
  EXPECT_THAT(Seconds(40, [&] { return Tried(); }), IsEmpty());
  EXPECT_EQ(Session.Health().State, LinkState::Lost);
  EXPECT_EQ(HealthText(Session.Health(), "ICOM", Time.Now()),
            "ttyUSB0 was unplugged. Press Stop, then Start to connect again.");
}

TEST_F(IcomSessionTest, AScopeThatFallsSilentIsSwitchedOnAgainWhileLinesAreWanted) {
  const auto answering = [&] {
    Hear("1900A4");
    return Sends("271101");
  };
  Pump.Meanwhile = [&] { Hear("1900A4"); };
  ASSERT_TRUE(Link.Open());
  EXPECT_THAT(Seconds(40, answering), ElementsAre(0, 2, 4, 8, 16, 31));
  EXPECT_THAT(User.Statuses,
              ElementsAre("The radio answers, but its scope sends nothing: it is switched on again.",
                          "The radio answers, but its scope stays off: switch it on at the radio."));
  Hear("2700000211");  // the second of eleven alone
  Seconds(1, answering);
  EXPECT_THAT(Session.Health().Why, testing::HasSubstr("come damaged"));
  // A whole line and the beginning of the next, on a bus that is cut off there: nothing is damaged.
  for (int division = 1; division <= 11; ++division)
    Hear("270000" + std::to_string(division / 10) + std::to_string(division % 10) + "11" +
         (division == 1 ? "000040071400005002000000" : std::string(division == 11 ? 50 : 100, '0')));
  Time.Advance(100ms);
  Hear("2700000111000040071400005002000000");
  std::string told;
  Seconds(2, [&] { return answering() && (told = Session.Health().Why, true); });
  EXPECT_THAT(told, testing::HasSubstr("its scope sends nothing"));
  User.Statuses.clear();
  // Behind a hidden window, and while the scan's dialog stands.
  Link.BeforeLayout();
  Link.AfterLayout(true);
  EXPECT_THAT(Seconds(20, answering), IsEmpty());
  State.ScanDialogOpen = true;
  Link.BeforeLayout();
  Link.AfterLayout(false);
  EXPECT_THAT(Seconds(20, answering), IsEmpty());
  EXPECT_EQ(User.Statuses.back(), "");
  State.ScanDialogOpen = false;
  EXPECT_THAT(Seconds(3, answering), ElementsAre(2));
  // While it transmits its menu may keep them off.
  Hear("1C0001");
  EXPECT_THAT(Seconds(20, answering), IsEmpty());
  Backend.Refresh(Radio);
  EXPECT_TRUE(Link.Paused() && Radio.Transmitting);
  Hear("1C0000");
  EXPECT_FALSE(Link.Paused());
  EXPECT_THAT(Seconds(3, answering), ElementsAre(2));
}

TEST_F(IcomSessionTest, ALongLayoutIsNoSilence) {
  Pump.Meanwhile = [&] { Hear("1900A4"); };
  ASSERT_TRUE(Link.Open());
  Seconds(1, [&] { return Sends("271001"); });
  Link.BeforeLayout();
  EXPECT_THAT(Seconds(5, [&] { return Hear("FB"), Session.Health().State != LinkState::Live; }), IsEmpty());
  Link.AfterLayout(false);
  EXPECT_THAT(Seconds(1, [&] { return Sends("271001"); }), IsEmpty())
      << "neither its scope nor all of it is set up anew";
}

}  // namespace
}  // namespace spectrino::test
