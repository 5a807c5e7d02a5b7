// Which layout the buttons have, what each click asks of the radio, and which button lights up.
#include <gmock/gmock.h>

#include <cmath>

#include "bandplan/BandMemory.h"
#include "bandplan/Bands.h"
#include "bands/BandModes.h"
#include "fakes/FakeRig.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"

namespace spectrino {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct BandModesTest : testing::Test {
  MemorySettingsFile File;
  RecordingNotifier User;
  SettingsStore Store{File, User};
  RadioState Radio;
  PanSettings Settings;
  FakeRig Rig;
  RigBackend* Backend = &Rig;
  BandModes Modes{{[this] { return Backend; }, Radio, Settings, Store}};

  std::vector<std::string> ModeClick(int index) {
    Rig.Requests.clear();
    Modes.cmdMode_Click(index);
    return Rig.Requests;
  }
};

TEST_F(BandModesTest, TheLayoutIsThatOfTheBackEndInUse) {
  enum Source { Sound, Icom, K4, K4D };
  const DeckLayout designed, with60m{BandLayout::K4, ModeLayout::Designed},
      k4{BandLayout::K4, ModeLayout::K4};
  const DeckLayout whole{BandLayout::HostWhole, ModeLayout::Designed};
  const DeckLayout split{BandLayout::HostSplit, ModeLayout::Designed};
  const struct {
    CatControl Control;
    Source From;
    std::string Split80;
    DeckLayout Expected;
  } cases[] = {
      {CatControl::HostIf, Sound, "0", whole},
      {CatControl::HostIf, Sound, "1", split},
      {CatControl::HostIf, K4, "1", k4},
      {CatControl::HostIf, Icom, "", whole},
      {CatControl::FixedLo, K4, "2", whole},
      {CatControl::HostK3If, Sound, " 1 ", split},
      {CatControl::BridgeIf, Sound, "1", with60m},
      {CatControl::BridgeFixedLo, K4D, "", k4},
      {CatControl::KetrelIf, Sound, "1", designed},
      {CatControl::KetrelFixedLo, K4, "", designed},
      {CatControl::RadioDirect, Sound, "", designed},
      {CatControl::RadioDirect, Icom, "1", with60m},
      {CatControl::RadioDirect, K4, "", k4},
      {CatControl::RadioDirect, K4D, "", k4},
      {CatControl::IcomViaHost, Icom, "", with60m},
      {CatControl::IcomViaHost, K4, "", k4},
      {CatControl::IcomViaHost, Sound, "1", split},
  };
  for (const auto& at : cases) {
    Settings.Control = at.Control;
    Settings.Icom = at.From == Icom;
    Settings.K4 = at.From == K4;
    Settings.K4D = at.From == K4D;
    Store.SaveSetting("Bexmora", "BandDecoder", "Split80", at.Split80);
    EXPECT_TRUE(Modes.Layout() == at.Expected) << static_cast<int>(at.Control) << " source " << at.From;
  }
}

// Every tool tip names the edges of its band, where they are known.
TEST_F(BandModesTest, EveryBandLightsTheButtonThatNamesIt) {
  for (const BandLayout layout :
       {BandLayout::Designed, BandLayout::HostWhole, BandLayout::HostSplit, BandLayout::K4}) {
    const BandButtonTexts& texts = BandTexts(layout);
    for (int button = 1; button < kBandButtonCount; ++button) {
      const std::string tip(texts[static_cast<std::size_t>(button)].ToolTip);
      const double low = std::strtod(tip.c_str(), nullptr);
      const double high = std::strtod(tip.c_str() + tip.find('-') + 1, nullptr);
      // Radios keep no record for 1.5 to 1.8 MHz, so that their button still leads away from there.
      const bool beforeRecord = layout == BandLayout::K4 && button == 1;
      if (low > 0 && !beforeRecord) {
        EXPECT_EQ(BandButtonOf(layout, low + 0.05), button) << tip;
      }
      if (high > 0) {
        EXPECT_EQ(BandButtonOf(layout, high - 0.05), button) << tip;
      }
    }
    EXPECT_EQ(BandButtonOf(layout, 13.0), 0);
    EXPECT_EQ(BandButtonOf(layout, 0), std::nullopt) << "unknown is no band";
  }
  const BandMemory memory = LoadBandMemory(Store);
  for (int button = 0; button < kBandButtonCount; ++button) {
    const auto record = static_cast<std::size_t>(BandRecordOfButton(button));
    EXPECT_EQ(BandButtonOf(BandLayout::K4, memory.Records[record].FrequencyMHz), button);
  }
}

TEST_F(BandModesTest, ABandIsAskedOfTheBackEnd) {
  for (const int index : {-1, 0, 3, 13, 14}) Modes.cmdBand_Click(index);
  EXPECT_THAT(Rig.Requests, ElementsAre("band 0", "band 3", "band 13"));
  Backend = nullptr;
  Modes.cmdBand_Click(3);
  EXPECT_EQ(Rig.Requests.size(), 3U);
}

TEST_F(BandModesTest, ReverseTurnsTheModeInUse) {
  Radio.RadioMode = mode::kCw;
  EXPECT_THAT(ModeClick(9), ElementsAre("mode 2 reverse"));
  EXPECT_THAT(ModeClick(2), ElementsAre("mode 2 reverse")) << "the toggle holds";
  Radio.RadioMode = mode::kCwReverse;
  EXPECT_THAT(ModeClick(9), ElementsAre("mode 2"));
  EXPECT_FALSE(Settings.CwReverse);
  Radio.RadioMode = mode::kData;
  EXPECT_THAT(ModeClick(9), ElementsAre("mode 5 reverse"));
  EXPECT_THAT(ModeClick(2), ElementsAre("mode 2")) << "each mode has its own";
  Radio.RadioMode = mode::kDataReverse;
  EXPECT_THAT(ModeClick(9), ElementsAre("mode 5"));
  for (const int other : {mode::kUnknown, mode::kLsb, mode::kUsb, mode::kAm, mode::kFm}) {
    Radio.RadioMode = other;
    EXPECT_THAT(ModeClick(9), IsEmpty()) << other;
  }
  EXPECT_FALSE(Settings.CwReverse || Settings.FskReverse);
  EXPECT_THAT(ModeClick(8), ElementsAre("mode 8"));
  EXPECT_THAT(ModeClick(-1), IsEmpty());
  EXPECT_THAT(ModeClick(10), IsEmpty());
}

TEST_F(BandModesTest, TheK4TakesItsOwnEightModes) {
  Settings.Control = CatControl::RadioDirect;
  Settings.K4D = Settings.CwReverse = Settings.FskReverse = true;
  for (const int index : {2, 3, 5, 7})
    EXPECT_THAT(ModeClick(index), ElementsAre("mode " + std::to_string(index)));
  Radio.RadioMode = mode::kCw;
  EXPECT_THAT(ModeClick(8), IsEmpty());
  EXPECT_THAT(ModeClick(9), IsEmpty());
  EXPECT_TRUE(Settings.CwReverse);
}

// Clicks 0..9, each with the mode unknown before it; 0 where nothing is set.
TEST_F(BandModesTest, WithoutAModeCommandTheModeIsSetHere) {
  const auto clicks = [this] {
    std::vector<int> modes;
    for (int index = 0; index < kModeButtonCount; ++index) {
      Radio.RadioMode = mode::kUnknown;
      Modes.cmdMode_Click(index);
      modes.push_back(Radio.RadioMode);
    }
    return modes;
  };
  const std::vector<int> nothing(kModeButtonCount, 0);
  Rig.Modes = false;
  for (const CatControl control :
       {CatControl::BridgeIf, CatControl::BridgeFixedLo, CatControl::KetrelIf, CatControl::KetrelFixedLo}) {
    Settings = {};
    Settings.Control = control;
    EXPECT_THAT(clicks(), ElementsAre(1, 2, 3, 5, 4, 6, 5, 4, 4, 0));
    Settings.CwReverse = true;
    EXPECT_THAT(clicks(), ElementsAre(1, 2, 7, 5, 4, 6, 5, 4, 4, 0));
    Settings.CwReverse = false;
    Settings.FskReverse = true;
    EXPECT_THAT(clicks(), ElementsAre(1, 2, 3, 5, 4, 9, 5, 4, 4, 0));
  }
  Settings.Control = CatControl::BridgeIf;
  Settings.K4 = true;
  EXPECT_THAT(clicks(), ElementsAre(1, 2, 3, 7, 4, 5, 9, 6, 0, 0));
  Backend = nullptr;
  EXPECT_THAT(clicks(), ElementsAre(1, 2, 3, 7, 4, 5, 9, 6, 0, 0));
  Settings.Control = CatControl::HostIf;
  EXPECT_EQ(clicks(), nothing);
  Rig.Modes = true;
  Backend = &Rig;
  Settings.Control = CatControl::BridgeIf;
  EXPECT_EQ(clicks(), nothing) << "a back-end that takes the mode tells it itself";
}

TEST_F(BandModesTest, TheModeInUseLightsItsButton) {
  const auto buttons = [](ModeLayout layout) {
    std::vector<int> lit;
    for (int radioMode = 0; radioMode <= 9; ++radioMode)
      lit.push_back(ModeButtonOf(layout, radioMode).value_or(-1));
    return lit;
  };
  EXPECT_THAT(buttons(ModeLayout::Designed), ElementsAre(-1, 0, 1, 2, 4, 3, 5, 2, -1, 5));
  EXPECT_THAT(buttons(ModeLayout::K4), ElementsAre(-1, 0, 1, 2, 4, 5, 7, 3, -1, 6));
}

}  // namespace
}  // namespace spectrino
