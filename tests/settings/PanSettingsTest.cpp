// What the program starts with, given a file; and what a run leaves in it.
#include "settings/PanSettings.h"

#include <gmock/gmock.h>

#include "settings/SetupLimits.h"
#include "settings/TestStore.h"

namespace spectrino {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

struct PanSettingsTest : test::StoreTest {
  SetupSection Keys{Store};

  PanSettings Load(int soundInputs = 2, PanSettings settings = {}) {
    LoadStartup(Keys, settings);
    LoadSettings(Keys, soundInputs, settings);
    return settings;
  }
};

TEST_F(PanSettingsTest, AFreshStoreGivesTheDefaults) {
  EXPECT_EQ(Load(), PanSettings());
  const WindowGeometry window = LoadGeometry(Keys);
  EXPECT_THAT((std::array{window.Top, window.Left, window.Height, window.Width}),
              ElementsAre(0, 0, 5175, 10905));
}

TEST_F(PanSettingsTest, WhatIsRemovedFromTheFileIsBackAtItsDefault) {
  std::string text = "[Setup]\nTop=1\n";
  for (const char* key :
       {"24b",       "Bits",     "SRate",  "IQ",           "IQCW",     "IQUSB",    "Flip6",    "FlipFreq",
        "FlipFreq2", "TypZoom",  "Zoom",   "Spik0",        "APO",      "integr",   "Priority", "OptFreq",
        "Offset4",   "Center3",  "Global", "AutoSpan2",    "Step3",    "Inverted", "Design",   "subd",
        "BandMode",  "ccolor12", "MP",     "OptSM",        "SMCorr",   "SMHold",   "QSplit1",  "ICCTRL",
        "Ref",       "Divisor",  "db",     "Disp",         "OnTop",    "bph",      "WF",       "CWR",
        "FSKR",      "DePhase",  "DeAmp",  "HostEndpoint", "DeviceId", "Device"})
    text += std::string(key) + "=1\n";
  Write(text + "Fill=0\nMHZ=0\nqsy=0\nAutoREF=0\nMouse=0\n");
  const PanSettings loaded = Load();
  EXPECT_EQ(loaded.Control, CatControl::FixedLo);
  EXPECT_EQ(loaded.QSplitKHz[1], 1);
  EXPECT_FALSE(loaded.Fill || loaded.MHz || loaded.Qsy || loaded.AutoRef || loaded.Mouse);
  Write("[Setup]\nTop=1\n");
  EXPECT_EQ(Load(2, loaded), PanSettings());
}

struct Stored {
  std::string line;
  int (*loaded)(const PanSettings&);
  int expected;
};
class StoredTest : public PanSettingsTest, public ::testing::WithParamInterface<Stored> {};

TEST_P(StoredTest, LoadsAsAUsableValueAndStaysInTheFile) {
  const std::string text = "[Setup]\n" + GetParam().line + "\n";
  Write(text);
  const PanSettings settings = Load();
  EXPECT_EQ(GetParam().loaded(settings), GetParam().expected);
  // The line stays as it was written: the program took it for something, the user may have meant another.
  SaveMainKeys(Keys, settings, 3);
  EXPECT_EQ(OnDisk().substr(0, text.size()), text);
}

#define LOADED(field) [](const PanSettings& s) { return static_cast<int>(s.field); }
INSTANTIATE_TEST_SUITE_P(
    Values, StoredTest,
    ::testing::Values(
        Stored{"Ref=-250", LOADED(RefLevel), -60}, Stored{"Ref=-200", LOADED(RefLevel), -60},
        Stored{"Ref=-199", LOADED(RefLevel), -199}, Stored{"Ref=99999999999", LOADED(RefLevel), -60},
        Stored{"Ref=-62.5", LOADED(RefLevel), -62}, Stored{"REF= -63.5dB", LOADED(RefLevel), -64},
        Stored{"Ref=loud", LOADED(RefLevel), 0}, Stored{"Ref4=-200", LOADED(BandRef[4]), -200},
        Stored{"Ref4=-201", LOADED(BandRef[4]), -60}, Stored{"Ref=-90", LOADED(BandRef[12]), -90},
        Stored{"Divisor=0", LOADED(RangeDivisor), 1000000},
        Stored{"Divisor=10000000", LOADED(RangeDivisor), 10000000},
        Stored{"Divisor4=-1", LOADED(BandDivisor[4]), 1000000}, Stored{"Bits=9", LOADED(Bits), 8},
        Stored{"Bits=-1", LOADED(Bits), 0}, Stored{"Bits=", LOADED(Bits), 0},
        Stored{"APO=1e9", LOADED(WindowTypeIndex), 1}, Stored{"Disp=-7", LOADED(DisplayMode), 0},
        Stored{"OptFreq=9", LOADED(Control), 8}, Stored{"ccolor4=-1", LOADED(Colours[4]), 0xFFFFFF},
        Stored{"ccolor12=255", LOADED(Colours[12]), 255}, Stored{"Fill=0", LOADED(Fill), 0},
        Stored{"Fill=yes", LOADED(Fill), 0}, Stored{"subd= 1", LOADED(SubD), 1},
        Stored{"Step1=", LOADED(StepHz[1]), 0}, Stored{"Step1=40000", LOADED(StepHz[1]), 32767},
        Stored{"Offset3=-7.9", LOADED(OffsetKHz[3]), -7},
        Stored{"Center2=14100.5", LOADED(CenterKHz[2]), 14100}, Stored{"Device=-3", LOADED(Device), 0},
        Stored{"smcorr=-3", LOADED(SMeterCorrDb), -3}));

struct Source {
  std::string file, before, name;
  int device;
};
class SourceTest : public PanSettingsTest, public ::testing::WithParamInterface<Source> {};

TEST_P(SourceTest, IsSelected) {
  Write("[Setup]\n" + GetParam().file);
  PanSettings settings;
  settings.SourceName = GetParam().before;
  settings = Load(3, settings);
  EXPECT_EQ(settings.SourceName, GetParam().name);
  EXPECT_EQ(settings.Device, GetParam().device);
}

INSTANTIATE_TEST_SUITE_P(Choices, SourceTest,
                         ::testing::Values(Source{"", "", "", 0}, Source{"", "Card", "Card", 0},
                                           Source{"Device=1\nNDevice= UAC2 \n", "Card", "UAC2", 1},
                                           Source{"Device=1\nNDevice=UAC2\nICOM=1\nK4=1\n", "", "ICOM", 3},
                                           Source{"Device=9\nK4=1\nK4D=1\n", "", "K4", 4},
                                           Source{"Device=4\nNDevice=K4D\nK4D=1\n", "", "K4D", 5}));

TEST(FindChosenInput, FollowsTheCardNotTheIndex) {
  std::vector<SoundDevice> inputs{{"Built-in", "id-a"}, {"UAC2", "id-b"}, {"UAC2", "id-c"}};
  PanSettings settings;
  EXPECT_EQ(FindChosenInput(settings, inputs), 0U) << "nothing chosen: the first";
  settings.Device = 2;
  settings.NDevice = "UAC2";
  EXPECT_EQ(FindChosenInput(settings, inputs), 2U) << "two of one model: the index decides";
  settings.DeviceId = "id-c";
  inputs.insert(inputs.begin(), SoundDevice{"New", "id-n"});
  EXPECT_EQ(FindChosenInput(settings, inputs), 3U);
  inputs.pop_back();
  EXPECT_EQ(FindChosenInput(settings, inputs), std::nullopt) << "missing, not replaced";
  settings.DeviceId = "";
  settings.Device = 1;
  settings.NDevice = "Gone";
  EXPECT_EQ(FindChosenInput(settings, inputs), std::nullopt);
  settings.NDevice = "";
  EXPECT_EQ(FindChosenInput(settings, {}), std::nullopt);
}

TEST_F(PanSettingsTest, SavesTheRangeForItsBandOnlyWithAutoRef) {
  PanSettings settings = Load();
  settings.RefLevel = -72;
  settings.RangeDivisor = 10000;
  settings.BandLevelDb = -1.5;
  settings.AutoRef = false;
  SaveRange(Keys, settings, 5);
  EXPECT_EQ(OnDisk(), "[Setup]\ndb=-1.5\nRef=-72\nDivisor=10000\n");
  settings.AutoRef = true;
  for (const std::optional<int> noBand : {std::optional<int>(), std::optional(13), std::optional(-1)})
    SaveRange(Keys, settings, noBand);
  EXPECT_EQ(OnDisk(), "[Setup]\ndb=-1.5\nRef=-72\nDivisor=10000\n");
  settings.BandRef[12] = -75;  // another band is tuned by now: the band's own values are stored
  settings.BandDivisor[12] = 100;
  SaveRange(Keys, settings, 12);
  EXPECT_EQ(OnDisk(), "[Setup]\ndb=-1.5\nRef=-72\nDivisor=10000\nRef12=-75\nDivisor12=100\n");
}

TEST_F(PanSettingsTest, AWindowComesBackAsItWas) {
  PanSettings settings = Load();
  settings.DePhase = 0.0125;
  settings.OnTop = settings.CwReverse = true;
  settings.WaterfallSel = 2;
  SaveMainKeys(Keys, settings, std::nullopt);
  SaveZoom(Keys, 4);
  const PanSettings again = Load();
  EXPECT_EQ(again.DePhase, 0.0125);
  EXPECT_TRUE(again.OnTop && again.CwReverse && !again.FskReverse && !again.BackgroundPeakHold);
  EXPECT_EQ(again.WaterfallSel, 2);
  EXPECT_EQ(again.Zoom, 4);

  SaveGeometry(Keys, {150, 300, 32400, 57600, WindowState::Normal});  // 3840 x 2160 pixels
  SaveGeometry(Keys, {0, 0, 1, 1, WindowState::Maximised});
  SaveGeometry(Keys, {-9, -9, 2, 2, WindowState::Minimised});
  const WindowGeometry window = LoadGeometry(Keys);
  EXPECT_EQ(window.State, WindowState::Maximised);
  EXPECT_THAT((std::array{window.Top, window.Left, window.Height, window.Width}),
              ElementsAre(150, 300, 32400, 57600));
}

TEST(SetupLimits, HoldAtTheirEnds) {
  EXPECT_THAT(LimitQSplitKHz(99.5, 3), ElementsAre(98.9, 99.9));
  EXPECT_THAT(LimitQSplitKHz(-1, 0.5), ElementsAre(0, 1));
  EXPECT_THAT(LimitQSplitKHz(2, 120), ElementsAre(2, 99.9));
  EXPECT_EQ(LimitAutoSpanKHz(500), 368);
  EXPECT_EQ(LimitAutoSpanKHz(2), 6);
  EXPECT_EQ(LimitOffsetKHz(-20.5), -20);
}

}  // namespace
}  // namespace spectrino
