// Click in, exact frames out, for every control of the Icom panel; the scan; the level of each band.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "civ/IcomCommands.h"
#include "civ/IcomFilters.h"
#include "civ/RecordingCivSender.h"
#include "civ/ScanCommands.h"
#include "civ/StatusMemory.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"
#include "state/RadioState.h"

namespace spectrino {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Commands : public testing::Test {
 protected:
  Commands() { state_.IcomActive = true; }

  CivState state_;
  test::RecordingCivSender sender_;
  ScriptedPump pump_;
  FakeClock clock_;
  IcomCommands commands_{state_, sender_, pump_, clock_};
};

/// A round of what the panel shows.
void AskAll(IcomCommands& commands) {
  for (int i = 0; i < IcomCommands::kPanelStates; ++i) commands.AskPanelState(i);
}

TEST_F(Commands, EachControlSendsItsFrame) {
  using C = IcomCommands;
  struct Row {
    const char* RadioId;
    void (*Click)(C&);
    const char* Frames;
  };
  const Row rows[] = {
      {"94", [](C& c) { c.chkFunc_Click(3, true); }, "164101"},
      // The attenuator differs by model, and only its known steps are sent.
      {"94", [](C& c) { c.chkFunc_Click(4, true); }, "1120"},
      {"98", [](C& c) { c.chkFunc_Click(4, true); }, "1112"},
      {"98", [](C& c) { c.chkFunc_Click(4, false); }, "1100"},
      {"77", [](C& c) { c.chkFunc_Click(4, true); }, ""},
      {"A4", [](C& c) { c.chkFunc_Click(5, true); }, ""},
      {"98", [](C& c) { c.chkFunc_Click(5, true); }, "166501"},
      {"94", [](C& c) { c.cboSpan_Click(0); }, "2715000025000000"},
      {"94", [](C& c) { c.cboSpan_Click(10); }, ""},
      {"94", [](C& c) { c.SetIcomAfLevel(300); }, "14010255"},
      {"94", [](C& c) { c.SetIcomSquelch(-1); }, "14030000"},
      {"94", [](C& c) { c.sldRFLevel_Change(-21); }, "271900105001"},
      {"94", [](C& c) { c.sldRFLevel_Change(0); }, "271900000001"},
      {"94", [](C& c) { c.SetIcomRefLevel(5.5); }, "271900055000 | 271900?"},
      {"94", [](C& c) { c.SetIcomRefLevel(-300); }, "271900200001 | 271900?"},
      {"96", [](C& c) { c.SetIcomFrequency(1296.1); }, "050000109612 | status"},
      {"94", [](C& c) { c.SetIcomFrequency(0); }, ""},
      {"94", [](C& c) { c.SetIcomFrequency(10014.074); }, ""},  // more digits than a frame has
      {"94", [](C& c) { c.SetIcomMode(2, true, 3); }, "060703 | status"},
      {"94", [](C& c) { c.SetIcomMode(8, false, 1); }, "061701 | status"},
      {"94", [](C& c) { c.SetIcomMode(9, false, 0); }, ""},
      {"94", AskAll,
       "1602? | 1622? | 1640? | 1641? | 11? | 1A07? | 1612? | 1401? | 1403? | 271900? | 271A00? | 1A03?"},
      {"A4", AskAll,
       "1602? | 1622? | 1640? | 1641? | 11? | 1612? | 1401? | 1403? | 271900? | 271A00? | 1A03?"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << "row " << &row - rows);
    state_.RadioId = row.RadioId;
    row.Click(commands_);
    EXPECT_EQ(sender_.Take(), row.Frames);
  }
}

// Numbers of 1A 03 from the radios' guides: 00 is 50 Hz, 09 500, 10 600, 40 3600; AM 00 is 200 Hz, 49 10 kHz.
TEST(IcomFilters, NumbersAreTheGuidesWidths) {
  const struct {
    int Mode;
    double WantedHz;
    int Number;
    double Hz;
  } widths[] = {{mode::kUsb, 2430, 28, 2400}, {mode::kCw, 510, 9, 500},      {mode::kCw, 590, 10, 600},
                {mode::kLsb, 9000, 40, 3600}, {mode::kData, 9000, 31, 2700}, {mode::kAm, 10, 0, 200},
                {mode::kAm, 9990, 49, 10000}, {mode::kFm, 2400, -1, 0},      {mode::kCw, 50, 0, 50}};
  for (const auto& width : widths) {
    EXPECT_EQ(IcomFilterNumber(width.Mode, width.WantedHz), width.Number) << width.Mode;
    EXPECT_EQ(IcomFilterHz(width.Mode, width.Number), width.Hz);
  }
}

TEST_F(Commands, FilterGoesWithTheModeThatTheRadioIsIn) {
  commands_.cmdFil_Click(1);  // no mode known: 02 alone would be AM
  EXPECT_EQ(sender_.Take(), "03? | receive | 04?");

  state_.IcomModeText = "01";
  sender_.Received = [this] { state_.IcomModeText = "07"; };
  pump_.Waited = {};
  commands_.cmdFil_Click(0);
  EXPECT_EQ(sender_.Take(), "03? | receive | 060701 | 04?");
  EXPECT_EQ(pump_.Waited, std::chrono::milliseconds(25));

  pump_.Meanwhile = [this] { commands_.cmdFil_Click(2); };
  commands_.cmdFil_Click(0);
  EXPECT_EQ(sender_.Take(), "03? | receive | 060703 | 04?");
}

TEST_F(Commands, StepIsAThirdOfTheSpanAndLeavesFixedMode) {
  state_.ScopeSpanMHz = 0.3;
  commands_.cmdUpDn_Click(2, 14.1);
  EXPECT_EQ(sender_.Take(), "050000201400 | status | 03? | 2714?");
  state_.ScopeFixedMode = 1;
  commands_.cmdUpDn_Click(1, 14.1);
  EXPECT_EQ(sender_.Take(), "27140000 | 050000001400 | status | 03? | 2714?");
  EXPECT_EQ(state_.ScopeFixedMode, 0);
  state_.IcomActive = false;
  commands_.cmdUpDn_Click(0, 14.1);
  EXPECT_EQ(sender_.Take(), "");
}

/// Windows that write down, among the frames, what happens to them.
class Scan : public testing::Test, public ScanWindow {
 protected:
  Scan() { state_.RadioId = "94"; }

  void ShowScanDialog(ScanCommands&, const ScanChoice& stored) override {
    shown_.push_back({stored.Scan, stored.DFScan, stored.RESScan});
  }
  void ClearScanCheck() override {}

  CivState state_;
  test::RecordingCivSender sender_;
  MemorySettingsFile file_;
  RecordingNotifier user_;
  SettingsStore store_{file_, user_};
  RecordingWindow window_;
  ScanCommands scan_{{state_, sender_, store_, window_, *this}};
  std::vector<std::vector<int>> shown_;
};

TEST_F(Scan, EachModelKeepsItsLists) {
  const auto visit = [this](const char* id, const ScanChoice& choice) {
    state_.RadioId = id;
    scan_.MainChkScan_Click(true);
    scan_.Unload(choice);
  };
  file_.Files["Spectrino"] = "[SCIcom]\nA4Scan=10\nA4DFScan=4\nA4CHREScan=-1\n";  // two of them damaged
  visit("A4", {});
  visit("94", {5, 3, 0});
  visit("98", {2, 6, 1});
  visit("94", {0, 0, 1});
  EXPECT_THAT(shown_, ElementsAre(ElementsAre(0, 4, 1), ElementsAre(0, 0, 1), ElementsAre(0, 0, 1),
                                  ElementsAre(5, 3, 0)));
  EXPECT_THAT(file_.Files["Spectrino"], HasSubstr("94Scan=0\n94DFScan=0\n94CHREScan=1\n"));
  EXPECT_THAT(file_.Files["Spectrino"], HasSubstr("98Scan=2\n98DFScan=6\n98CHREScan=1\n"));
}

class Status : public Commands {
 protected:
  /// One second on a frequency, with the level that the radio last told.
  std::string Tick(double mhz, float level, bool autoRef = true, bool running = true) {
    state_.RadioFreqMHz = mhz;
    state_.ScopeRefLevel = level;
    status_.tmrIcomStatus_Timer(autoRef, running);
    return sender_.Take();
  }
  std::string Stored(const char* key) { return store_.GetSetting("Spectrino", "BSR", key, "none"); }

  MemorySettingsFile file_;
  RecordingNotifier user_;
  SettingsStore store_{file_, user_};
  BandMemory memory_;
  StatusMemory status_{state_, commands_, store_, memory_};
};

TEST_F(Status, LevelFollowsTheBand) {
  memory_.Records[8].Level = -12;
  EXPECT_EQ(Tick(0, 3), "");
  EXPECT_EQ(Tick(14.1, 3, false), "");
  EXPECT_EQ(Tick(14.1, 3, true, false), "");
  EXPECT_EQ(Tick(14.1, 3), "271900120001 | 271900?");
  status_.tmrIcomStatus_Timer(true, true);
  EXPECT_EQ(Stored("LEVEL8"), "-12") << "an answer that never came must not bring in the old band's level";
  EXPECT_EQ(Tick(14.2, 4.5f), "");
  EXPECT_EQ(Stored("LEVEL8"), "4");
  EXPECT_EQ(Stored("LEVEL0"), "none");
  EXPECT_EQ(Tick(7.1, 4.5f), "271900100000 | 271900?");
  EXPECT_EQ(Tick(14.1, 9), "271900040000 | 271900?");
  status_.Restart();
  EXPECT_EQ(Tick(14.1, 9), "271900040000 | 271900?");
  // Coarse band 28 has no record: nothing to restore, and only the general level to keep.
  EXPECT_EQ(Tick(12.0, 5) + Tick(12.0, 5), "");
  EXPECT_EQ(Stored("LEVEL28") + Stored("LEVEL0"), "none5");
}

}  // namespace
}  // namespace spectrino
