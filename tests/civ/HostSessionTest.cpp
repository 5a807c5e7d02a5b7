// An Icom behind a host program: what is asked of the host, and what becomes of what it tells.
#include "civ/HostSession.h"

#include <gmock/gmock.h>

#include "civ/CivDoubles.h"
#include "civ/IcomCarriers.h"
#include "civ/IcomCommands.h"
#include "civ/IcomSession.h"
#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"

namespace spectrino::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

using Words = std::vector<std::string>;

struct RecordingTuner final : RigBackend {
  explicit RecordingTuner(Words& said) : Said(said) {}
  void Refresh(RadioState&) override {}
  void SetFrequency(Vfo, double freqMHz, Aim) override { Said.push_back("tune " + std::to_string(freqMHz)); }
  void SelectBand(int) override {}
  bool SelectMode(const ModeRequest&) override { return false; }
  void SendMacro(std::string_view) override {}
  void StepFrequency(int, double) override {}
  Words& Said;
};

/// Records what it is told to do.
struct RecordingHost final : HostIcom {
  void Open() override { Said.emplace_back("open"); }
  void Close() override { Said.emplace_back("close"); }
  [[nodiscard]] LinkHealth Health() const override { return Now; }
  [[nodiscard]] int Findings() const override { return Found; }
  [[nodiscard]] std::string Trouble() const override { return {}; }
  [[nodiscard]] std::string ScopeOptions() const override { return Options; }
  [[nodiscard]] std::string Model() const override { return Name; }
  void SetUsualAddress(std::string_view address) override {
    Said.push_back("address " + std::string(address));
  }
  [[nodiscard]] RigBackend& Backend() override { return Tuner; }
  [[nodiscard]] double HostIcomFrequency() const override { return FreqMHz; }
  [[nodiscard]] bool HostIcomFrequencyIsAsked() const override { return Asked; }
  [[nodiscard]] bool HostIcomTransmits() const override { return Transmits; }
  [[nodiscard]] std::string HostIcomMode() const override { return "03"; }
  void SwitchScope(bool on) override { Said.emplace_back(on ? "scope on" : "scope off"); }
  void SendCommand(std::string_view hex) override { Said.emplace_back(hex); }
  void Ask(std::string_view hex) override { Said.push_back(std::string(hex) + "?"); }

  Words Take() { return std::exchange(Said, {}); }
  Words Said;
  RecordingTuner Tuner{Said};
  LinkHealth Now{.State = LinkState::Live};
  std::string Name = "IC-7610";
  int Found = 0;
  double FreqMHz = 14.074;
  bool Asked = false;
  bool Transmits = false;
  std::string Options = "--these";
};

struct HostSessionTest : testing::Test {
  void Pass(std::chrono::milliseconds time) {
    for (; time > 0ms; time -= 20ms) {
      Time.Advance(20ms);
      if (Answers) Host.Now.Since = Time.Now();
      Session.Pump();
    }
  }
  /// A hundred points of 64h, but for the second half.
  static HostScopeLine Line(const std::string& second, double centreMHz = 14.1) {
    std::string levels;
    for (int i = 0; i < 100; ++i) levels += i < 50 ? "64" : second;
    return {.CentreMHz = centreMHz,
            .SpanMHz = 0.05,
            .LowEdgeMHz = centreMHz - 0.025,
            .HighEdgeMHz = centreMHz + 0.025,
            .MaxLevel = 200,
            .Points = 100,
            .LevelsHex = levels};
  }

  FakeSerialPort Port;
  CivState State;
  RecordingPanel Panel;
  FakeClock Time;
  RecordingNotifier User;
  MemorySettingsFile File;
  SettingsStore Store{File, User};
  ScriptedPump Pump{&Time};
  RecordingHost Host;
  bool Answers = true;
  IcomParts Parts{Port, State, Panel, Store, Time, Pump, User};
  HostSession Session{Parts, Host};
};

TEST_F(HostSessionTest, SetsTheRadioUpWhenItIsFoundAndAgainWhenItIsSilent) {
  ASSERT_TRUE(Session.Open());
  Pass(100ms);
  EXPECT_THAT(Host.Take(), ElementsAre("open"));
  Host.Found = 1;
  Pass(20ms);
  EXPECT_THAT(Host.Take(), ElementsAre("address 98", "scope on", "271001", "271200", "271300", "27140000",
                                       "1401?", "1403?", "271400?", "271A00?", "271900?"));
  EXPECT_EQ(State.IcomModelName, "IC-7610");
  EXPECT_EQ(State.RadioFreqMHz, 14.074);
  EXPECT_EQ(State.RadioModeIndex, 2);
  EXPECT_TRUE(Session.Answers());
  Pass(2100ms);
  EXPECT_THAT(Host.Take(), ElementsAre("scope on", "271001"));
  EXPECT_THAT(User.Statuses, ElementsAre(testing::HasSubstr("rigctld with --these")));
  Host.LineCame(Line("64"));
  Pass(40ms);
  EXPECT_EQ(User.Statuses.back(), "");
  Host.Now.State = LinkState::Lost;
  Pass(5000ms);
  EXPECT_THAT(Host.Take(), IsEmpty());
  Host.Now.State = LinkState::Live;
  Host.Found = 2;
  Pass(20ms);
  EXPECT_THAT(Host.Take(), ElementsAre("scope on", "271001", "271200", "271300", "1401?", "1403?", "271400?",
                                       "271A00?", "271900?"))
      << "what the operator changed is kept";
  Session.Close();
  EXPECT_THAT(Host.Take(), ElementsAre("close"));
}

TEST_F(HostSessionTest, LinesGoThroughTheRadiosOwnAssembly) {
  ASSERT_TRUE(Session.Open());
  Host.Found = 1;
  Pass(20ms);
  Host.LineCame(Line("C8"));
  ASSERT_EQ(State.ScopeSerial, 1U);
  EXPECT_EQ(State.ScopeLevels.size(), 101U);
  EXPECT_EQ(State.ScopeLevels[1], 80);
  EXPECT_EQ(State.ScopeLevels[100], 160);
  EXPECT_NEAR(State.ScopeLineLowMHz, 14.075, 1e-9);
  EXPECT_NEAR(State.ScopeLineHighMHz, 14.125, 1e-9);
  EXPECT_THAT(Panel.Told, testing::HasSubstr("span 3; "));
  Host.FreqMHz = 0.000163;
  Pass(40ms);
  EXPECT_EQ(State.RadioFreqMHz, 14.074);
  Host.FreqMHz = 14.11;
  Pass(40ms);
  EXPECT_EQ(State.RadioFreqMHz, 14.11);
  Host.LineCame(Line("00"));
  EXPECT_EQ(State.ScopeSerial, 1U) << "a division is missing";
  Host.LineCame(Line("00", 14.2));
  EXPECT_EQ(State.ScopeSerial, 2U) << "of another part of the band nothing is known";
  Host.LineCame(Line("C8", 14.2));
  Time.Advance(1600ms);
  Host.LineCame(Line("00", 14.2));
  EXPECT_EQ(State.ScopeSerial, 4U) << "it has been so for long";
  HostScopeLine fixed = Line("C8");
  fixed.Fixed = true;
  fixed.LowEdgeMHz = 14.0;
  fixed.HighEdgeMHz = 14.35;
  Host.LineCame(fixed);
  EXPECT_EQ(State.ScopeLineHighMHz, 14.35);
  EXPECT_THAT(Panel.Told, testing::HasSubstr("FIX: 175.0k"));
}

TEST_F(HostSessionTest, WhyLinesStayAwayIsToldOnlyOfARadioThatAnswers) {
  ASSERT_TRUE(Session.Open());
  Host.Found = 1;
  Host.Options.clear();
  Pass(20ms);
  Host.Transmits = true;
  Pass(3s);
  EXPECT_TRUE(State.Transmitting);
  EXPECT_FALSE(Session.LinesDue());
  Host.Transmits = Answers = false;
  Pass(2400ms);
  Host.Now.State = LinkState::Silent;
  Host.Take();
  Pass(9s);
  EXPECT_THAT(Host.Take(), IsEmpty()) << "nobody hears it";
  EXPECT_THAT(User.Statuses, IsEmpty()) << "is it switched on? says the health alone";
  Host.Now.State = LinkState::Live;
  Host.Found = 2;
  Answers = true;
  Pass(2100ms);
  EXPECT_THAT(Host.Take(), testing::Contains("271300")) << "it was off, and is set up anew";
  EXPECT_THAT(User.Statuses,
              ElementsAre(testing::HasSubstr("another machine. Let Spectrino run rigctld here")));
}

TEST_F(HostSessionTest, TheDialIsWhereItWasAskedForWhateverALineOfBeforeTells) {
  ASSERT_TRUE(Session.Open());
  Host.Found = 1;
  State.CivParserBusy = true;
  Pass(20ms);
  State.CivParserBusy = false;
  Pass(20ms);
  EXPECT_EQ(State.RadioModeIndex, 2) << "refused the first time";
  Host.LineCame(Line("64"));
  Host.FreqMHz = 21.2;
  Host.Asked = true;
  Pass(20ms);
  EXPECT_EQ(State.RadioFreqMHz, 21.2) << "at once";
  Host.FreqMHz = 14.08;
  Host.Asked = false;
  Pass(20ms);
  EXPECT_EQ(State.RadioFreqMHz, 14.08) << "taken back";
  Session.Close();
  Host.FreqMHz = 7.1;
  ASSERT_TRUE(Session.Open());
  Pass(20ms);
  EXPECT_EQ(State.RadioFreqMHz, 7.1) << "the line was another run's";
  Host.LineCame(Line("64", 7.1));
  Host.Name = "IC-9700";
  Host.Found = 3;
  Host.FreqMHz = 145.0;
  Pass(40ms);
  EXPECT_EQ(State.RadioFreqMHz, 145.0) << "the line was another radio's";
  Host.Name = "IC-718";
  Host.Found = 4;
  Host.Take();
  Pass(20ms);
  EXPECT_EQ(Host.Take().front(), "address ") << "not that of the former radio";
}

TEST_F(HostSessionTest, TheSerialLineHasSaidItsLastWordsBeforeTheHostBegins) {
  Store.SaveSetting("Spectrino", "Setup", "ICADDR", "98");
  IcomSession serial(Parts);
  IcomCarriers carriers(State, serial, &Session);
  ASSERT_TRUE(carriers.Open());
  carriers.Close();
  EXPECT_TRUE(carriers.Closing());
  State.IcomControl = 1;
  ASSERT_TRUE(carriers.Open());
  EXPECT_FALSE(Port.IsOpen());
  EXPECT_EQ(Port.Written.back(), "FEFE98E0271100FD");
  EXPECT_EQ(Host.Take().back(), "open");
}

TEST_F(HostSessionTest, CommandsLeaveAsTheHostTakesThem) {
  State.Transmitting = true;
  ASSERT_TRUE(Session.Open());
  EXPECT_FALSE(State.Transmitting) << "that was another radio";
  Host.Take();
  IcomCommands commands(State, Session.Sender(), Pump, Time);
  State.RadioId = "98";
  commands.chkFunc_Click(4, true);
  commands.SetIcomFrequency(7.1);
  Session.Sender().SendCiv("27", "11", "00");
  EXPECT_THAT(Host.Take(), ElementsAre("1112", "tune 7.100000", "1401?", "1403?", "271400?", "271A00?",
                                       "271900?", "scope off"));
  Host.Replied("14010128");
  Host.Replied("271900105001");
  EXPECT_EQ(State.AfLevel, 128);
  EXPECT_EQ(Panel.Told, "af 128; ref -21; ");
}

}  // namespace
}  // namespace spectrino::test
