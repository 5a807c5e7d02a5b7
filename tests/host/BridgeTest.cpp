// A radio behind the bridge: what its texts become, and what is asked of it.
#include <gmock/gmock.h>

#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"
#include "host/BridgeBackend.h"

namespace spectrino::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RecordingPort final : public BridgePort {
 public:
  void Open() override { IsOpen = true; }
  void Close() override { IsOpen = false; }
  void Command(std::string_view text) override { Commands.emplace_back(text); }

  bool IsOpen = false;
  std::vector<std::string> Commands;
};

struct Bridge : ::testing::Test {
  void Begin(CatControl control) {
    Settings.Control = control;
    Settings.StepHz = {20, 25, 1000, 10};
    Link.OpenDdeLink();
    Port.Found();
    for (const auto& [item, text] :
         std::initializer_list<std::pair<BridgeItem, const char*>>{{BridgeItem::VfoAHz, "14074000"},
                                                                   {BridgeItem::VfoBHz, "14080500"},
                                                                   {BridgeItem::Offset, "1500"},
                                                                   {BridgeItem::Bandwidth, "2400"}})
      Port.Told(item, text);
    ASSERT_TRUE(Backend.Open());
  }
  void Refresh() {
    Time.Advance(std::chrono::milliseconds(100));
    Backend.Refresh(State);
  }
  void Pan(const std::string& keys) { File.Files["LP-Bridge"] = "[PAN]\n" + keys; }

  FakeClock Time;
  MemorySettingsFile File;
  RecordingNotifier User;
  SettingsStore Store{File, User, Time};
  PanSettings Settings;
  RecordingPort Port;
  BridgeLink Link{Port, User, Time};
  BridgeBackend Backend{Link, Store, Settings, Time};
  RadioState State;
};

TEST_F(Bridge, ItsTextsAndItsSectionMakeTheRadio) {
  Pan("MD=2\nMD2=3\nFT=1\nPI=650\nPRE=10\nFA=7000000\n");
  Begin(CatControl::BridgeIf);
  Refresh();
  EXPECT_DOUBLE_EQ(State.MainFreqMHz, 14.074);
  EXPECT_DOUBLE_EQ(State.SubFreqMHz, 14.0805);
  EXPECT_EQ(State.RadioMode, mode::kUsb);
  EXPECT_EQ(State.SubRadioMode, mode::kCw);
  EXPECT_EQ(State.SplitOn, 1);
  EXPECT_EQ(State.PreampDb, 10);
  EXPECT_EQ(State.PitchHz, 650);
  EXPECT_DOUBLE_EQ(State.MainBandwidthHz, 2400);
  EXPECT_DOUBLE_EQ(Backend.LinkOffsetKHz(), 1.5);
  Port.Told(BridgeItem::VfoAHz, "no number");
  Refresh();
  EXPECT_DOUBLE_EQ(State.MainFreqMHz, 14.074);
  Port.Told(BridgeItem::VfoAHz, "");
  Refresh();
  EXPECT_EQ(State.MainFreqMHz, 0) << "not known";
}

// No mode can be asked of the bridge: a button sets it here alone, for the wheel and the filters.
TEST_F(Bridge, AModeThatAButtonSetHoldsUntilTheBridgeTellsAnother) {
  for (const CatControl control : {CatControl::BridgeIf, CatControl::BridgeFixedLo}) {
    Store.SaveSetting("LP-Bridge", "PAN", "MD", "2");
    Begin(control);
    Refresh();
    State.RadioMode = mode::kAm;
    Refresh();
    EXPECT_EQ(State.RadioMode, mode::kAm);
    Port.Commands.clear();
    Backend.SetFrequency(Vfo::A, 14.0746, Aim::Dial);
    EXPECT_THAT(Port.Commands, ElementsAre("FA00014075000;"));
    Store.SaveSetting("LP-Bridge", "PAN", "MD", "3");
    Refresh();
    EXPECT_EQ(State.RadioMode, mode::kCw);
    Link.CloseDdeLink();
  }
}

TEST_F(Bridge, ARadioThatItDoesNotHearIsGone) {
  Begin(CatControl::BridgeIf);
  EXPECT_EQ(Link.Health().State, LinkState::Live);
  Port.Told(BridgeItem::Trouble, "the rigctld at localhost:4532 is gone: is it running?");
  EXPECT_EQ(Link.Health().State, LinkState::Lost);
  EXPECT_EQ(Link.Health().Why, "LP-Bridge: the rigctld at localhost:4532 is gone: is it running?");
  Port.Told(BridgeItem::Trouble, "");
  EXPECT_EQ(Link.Health().State, LinkState::Live);
}

TEST_F(Bridge, AFixedOscillatorTakesItAllFromTheSection) {
  Pan("MD=3\nFA=7030000\nFB=1\nFT=1\n");
  Begin(CatControl::BridgeFixedLo);
  Refresh();
  EXPECT_DOUBLE_EQ(State.MainFreqMHz, 7.03);
  EXPECT_EQ(State.RadioMode, mode::kCw);
  EXPECT_EQ(State.SplitOn, 0);
}

TEST_F(Bridge, TuningIsRoundedToTheStepAndCorrectedOnClicksAlone) {
  Pan("MD=2\nMD2=9\nCO=1\nSHIFT=170\n");
  Begin(CatControl::BridgeIf);
  Refresh();
  Backend.SetFrequency(Vfo::A, 14.02551, Aim::Signal);
  Backend.SetFrequency(Vfo::B, 14.08, Aim::Signal);
  Backend.SetFrequency(Vfo::B, 14.08, Aim::Dial);
  Backend.SetFrequency(Vfo::A, 14.174, Aim::Dial);
  Backend.SelectBand(5);
  Backend.SelectBand(0);
  EXPECT_THAT(Port.Commands,
              ElementsAre("FA00014025500;", "FB00014080080;", "FB00014080000;", "FA00014174000;", "BN04;"));
  Refresh();
  EXPECT_DOUBLE_EQ(State.MainFreqMHz, 14.174) << "at once";
  Time.Advance(std::chrono::seconds(3));
  Refresh();
  EXPECT_DOUBLE_EQ(State.MainFreqMHz, 14.074) << "the radio did not follow";
}

TEST_F(Bridge, OneThatIsMissingIsToldOnceAndFollowedLater) {
  Link.OpenDdeLink();
  Port.Missing("the bridge is not running");
  const std::string told =
      "Spectrino|                     LP-Bridge is not running.\nClose Spectrino, start LP-Bridge, then "
      "start Spectrino.";
  EXPECT_THAT(User.Messages, ElementsAre(told));
  EXPECT_EQ(Link.Health().State, LinkState::Lost);
  Begin(CatControl::BridgeIf);
  Port.Missing("the bridge was ended");
  Refresh();
  EXPECT_EQ(State.MainFreqMHz, 0);
  EXPECT_THAT(User.Messages, ElementsAre(told));
  Link.CloseDdeLink();
  EXPECT_FALSE(Port.IsOpen);
  Backend.SelectBand(5);
  EXPECT_THAT(Port.Commands, IsEmpty());
}

}  // namespace
}  // namespace spectrino::test
