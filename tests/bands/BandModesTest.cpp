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
  RadioTraits Traits;
  BandModes Modes{{[this] { return Backend; }, [this] { return Traits; }, Radio, Settings, Store}};

  std::vector<std::string> ModeClick(int index) {
    Rig.Requests.clear();
    Modes.cmdMode_Click(index);
    return Rig.Requests;
  }
};

TEST_F(BandModesTest, TheHostsBandDecoderDivides80MetersWhereItSaysSo) {
  for (const auto& [of, split80, expected] :
       std::initializer_list<std::tuple<BandLayout, const char*, BandLayout>>{
           {BandLayout::HostWhole, "0", BandLayout::HostWhole},
           {BandLayout::HostWhole, " 1 ", BandLayout::HostSplit},
           {BandLayout::With60m, "1", BandLayout::With60m},
           {BandLayout::Designed, "1", BandLayout::Designed}}) {
    Traits.Deck.Bands = of;
    Store.SaveSetting("Bexmora", "BandDecoder", "Split80", split80);
    EXPECT_EQ(Modes.Layout().Bands, expected) << split80;
  }
}

// Every tool tip names the edges of its band, where they are known.
TEST_F(BandModesTest, EveryBandLightsTheButtonThatNamesIt) {
  for (const BandLayout layout :
       {BandLayout::Designed, BandLayout::HostWhole, BandLayout::HostSplit, BandLayout::With60m}) {
    const BandButtonTexts& texts = BandTexts(layout);
    for (int button = 1; button < kBandButtonCount; ++button) {
      const std::string tip(texts[static_cast<std::size_t>(button)].ToolTip);
      const double low = std::strtod(tip.c_str(), nullptr);
      const double high = std::strtod(tip.c_str() + tip.find('-') + 1, nullptr);
      // Radios keep no record for 1.5 to 1.8 MHz, so that their button still leads away from there.
      const bool beforeRecord = layout == BandLayout::With60m && button == 1;
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
    EXPECT_EQ(BandButtonOf(BandLayout::With60m, memory.Records[record].FrequencyMHz), button);
  }
}

TEST_F(BandModesTest, ReverseTurnsTheModeInUse) {
  Radio.RadioMode = mode::kCw;
  EXPECT_THAT(ModeClick(9), ElementsAre("mode 2 reverse"));
  EXPECT_THAT(ModeClick(2), ElementsAre("mode 2 reverse")) << "the toggle holds";
  Radio.RadioMode = mode::kCwReverse;
  EXPECT_THAT(ModeClick(9), ElementsAre("mode 2"));
  EXPECT_FALSE(Settings.CwReverse);
  EXPECT_THAT(ModeClick(9), ElementsAre("mode 2")) << "it is turned at the radio, and lit";
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
  for (const int index : {-1, 0, 13, 14}) Modes.cmdBand_Click(index);
  EXPECT_THAT(Rig.Requests, ElementsAre("band 0", "band 13"));
}

TEST_F(BandModesTest, TheK4TakesItsOwnEightModes) {
  Traits.Deck.Modes = ModeLayout::WithReverse;
  Settings.CwReverse = Settings.FskReverse = true;
  for (const int index : {2, 3, 5, 7})
    EXPECT_THAT(ModeClick(index), ElementsAre("mode " + std::to_string(index)));
  Radio.RadioMode = mode::kCw;
  EXPECT_THAT(ModeClick(8), IsEmpty());
  EXPECT_THAT(ModeClick(9), IsEmpty());
  EXPECT_TRUE(Settings.CwReverse);
}

// Clicks 0..9, each with the mode unknown before it; 0 where nothing is set.
TEST_F(BandModesTest, WithoutAModeCommandTheModeIsSetHereAndLightsItsButton) {
  const auto clicks = [this] {
    std::vector<int> modes;
    for (int index = 0; index < kModeButtonCount; ++index) {
      Radio.RadioMode = mode::kUnknown;
      Modes.cmdMode_Click(index);
      modes.push_back(Radio.RadioMode);
      // Synchronous AM, wide FM and DV are no modes of the radio's own.
      const auto lit = ModeButtonOf(Modes.Layout().Modes, Radio.RadioMode);
      if (Radio.RadioMode != mode::kUnknown && (Traits.Deck.Modes == ModeLayout::WithReverse || index < 6)) {
        EXPECT_EQ(lit, index);
      }
    }
    return modes;
  };
  Traits.TakesMode = false;
  EXPECT_THAT(clicks(), ::testing::Each(mode::kUnknown)) << "a back-end that takes the mode tells it itself";
  Rig.Modes = false;
  EXPECT_THAT(clicks(), ElementsAre(1, 2, 3, 5, 4, 6, 5, 4, 4, 0));
  Settings.CwReverse = Settings.FskReverse = true;
  EXPECT_THAT(clicks(), ElementsAre(1, 2, 7, 5, 4, 9, 5, 4, 4, 0));
  Traits.Deck.Modes = ModeLayout::WithReverse;
  EXPECT_THAT(clicks(), ElementsAre(1, 2, 3, 7, 4, 5, 9, 6, 0, 0));
  Traits.TakesMode = true;
  EXPECT_THAT(clicks(), ::testing::Each(mode::kUnknown));
}

}  // namespace
}  // namespace spectrino
