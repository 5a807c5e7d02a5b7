// What the program starts with, given a file; and what a run leaves in it.
#include "settings/PanSettings.h"

#include <gmock/gmock.h>

#include "fakes/RadioSources.h"
#include "settings/TestStore.h"

namespace spectrino {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

struct PanSettingsTest : test::StoreTest {
  SetupSection Keys{Store};

  PanSettings Load(PanSettings settings = {}) {
    LoadStartup(Keys, settings);
    LoadSettings(Keys, settings, kRadioSources);
    return settings;
  }
};

TEST_F(PanSettingsTest, WhatIsRemovedFromTheFileIsBackAtItsDefault) {
  std::string text = "[Setup]\nTop=1\n";
  std::istringstream keys(
      "24b Bits SRate IQ IQCW IQUSB Flip6 FlipFreq FlipFreq2 TypZoom Zoom Spik0 APO integr Priority OptFreq "
      "Offset4 Center3 Global AutoSpan2 Step3 Inverted Design subd BandMode ccolor12 MP OptSM SMCorr SMHold "
      "QSplit1 ICCTRL Ref Divisor db Disp OnTop bph WF CWR FSKR DePhase DeAmp HostEndpoint DeviceId Device "
      "WFPalette WFFloor WFContrast BandPlanRegion");
  for (std::string key; keys >> key;) text += key + "=1\n";
  Write(text + "Fill=0\nMHZ=0\nqsy=0\nAutoREF=0\nMouse=0\nAutoLevel=0\n");
  const PanSettings loaded = Load();
  EXPECT_EQ(loaded.Control, CatControl::FixedLo);
  EXPECT_FALSE(loaded.Fill || loaded.MHz || loaded.Qsy || loaded.AutoRef || loaded.Mouse || loaded.AutoLevel);
  Write("[Setup]\nTop=1\n");
  EXPECT_EQ(Load(loaded), PanSettings());
}

#define LOADED(field) [](const PanSettings& s) { return static_cast<int>(s.field); }
TEST_F(PanSettingsTest, AnyValueLoadsAsAUsableOneAndStaysInTheFile) {
  const std::tuple<std::string, int (*)(const PanSettings&), int> lines[] = {
      {"Ref=-200", LOADED(RefLevel), -60},
      {"Ref=-199", LOADED(RefLevel), -199},
      {"Ref=99999999999", LOADED(RefLevel), -60},
      {"Ref=-62.5", LOADED(RefLevel), -62},
      {"REF= -63.5dB", LOADED(RefLevel), -64},
      {"Ref=loud", LOADED(RefLevel), 0},
      {"Ref4=-200", LOADED(BandRef[4]), -200},
      {"Ref4=-201", LOADED(BandRef[4]), -60},
      {"Ref=-90", LOADED(BandRef[12]), -90},
      {"Divisor=0", LOADED(RangeDivisor), 1000000},
      {"Divisor=10000000", LOADED(RangeDivisor), 10000000},
      {"Divisor4=-1", LOADED(BandDivisor[4]), 1000000},
      {"Bits=9", LOADED(Bits), 8},
      {"Bits=", LOADED(Bits), 0},
      {"APO=1e9", LOADED(WindowTypeIndex), 0},
      {"Disp=-7", LOADED(DisplayMode), 0},
      {"BandPlanRegion=4", LOADED(BandPlanRegion), 3},
      {"OptFreq=9", LOADED(Control), 8},
      {"ccolor4=-1", LOADED(Colours[4]), 0xFFFFFF},
      {"ccolor12=255", LOADED(Colours[12]), 255},
      {"Fill=yes", LOADED(Fill), 0},
      {"subd= 1", LOADED(SubD), 1},
      {"Step1=40000", LOADED(StepHz[1]), 32767},
      {"Offset3=-7.9", LOADED(OffsetKHz[3]), -7},
      {"Center2=14100.5", LOADED(CenterKHz[2]), 14100},
      {"Device=-3", LOADED(Source.Index), 0},
      {"smcorr=-3", LOADED(SMeterCorrDb), -3}};
  for (const auto& [line, loaded, expected] : lines) {
    const std::string text = "[Setup]\n" + line + "\n";
    Write(text);
    const PanSettings settings = Load();
    EXPECT_EQ(loaded(settings), expected) << line;
    // The line stays as it was written: the program took it for something, the user may have meant another.
    SaveMainKeys(Keys, settings, 3);
    EXPECT_EQ(OnDisk().substr(0, text.size()), text);
  }
}

TEST_F(PanSettingsTest, AbsurdValuesAreLimitedAndNamedInTheLogOnce) {
  const std::string huge = "1" + std::string(308, '0');
  const PanSettings usual;
  for (const auto& [key, text, loaded, taken] :
       std::vector<std::tuple<std::string, std::string, double (*)(const PanSettings&), double>>{
           {"DeAmp", huge, [](const PanSettings& s) { return s.DeAmp; }, 500},
           {"DePhase", "-" + huge, [](const PanSettings& s) { return s.DePhase; }, -500},
           {"db", huge + "0", [](const PanSettings& s) { return s.BandLevelDb; }, 200},
           {"SMHold", "-1", [](const PanSettings& s) { return s.SMeterHoldSeconds; }, 0},
           {"Offset0", "-" + huge, [](const PanSettings& s) { return s.OffsetKHz[0]; }, -1e6},
           {"Center3", huge, [](const PanSettings& s) { return s.CenterKHz[3]; }, 1e9},
           {"Global", "1e308", [](const PanSettings& s) { return s.GlobalOffsetKHz; }, usual.GlobalOffsetKHz},
           {"FlipFreq2", huge, [](const PanSettings& s) { return s.FlipFreq2MHz; }, 1e6},
           {"DeAmp", "-inf", [](const PanSettings& s) { return s.DeAmp; }, 0},
           {"SMCorr", "nan", [](const PanSettings& s) { return double(s.SMeterCorrDb); }, 0}}) {
    Write("[Setup]\n" + key + "=" + text + "\n");
    Notes.Logged.clear();
    EXPECT_EQ(loaded(Load()), taken) << key;
    static_cast<void>(Load());
    EXPECT_THAT(Notes.Logged, ElementsAre(::testing::HasSubstr(key + "="))) << key;
  }
}

TEST_F(PanSettingsTest, SavesTheRangeForItsBandOnlyWithAutoRef) {
  PanSettings settings = Load();
  settings.RefLevel = -72;
  settings.RangeDivisor = 10000;
  settings.BandLevelDb = -1.5;
  settings.AutoRef = false;
  SaveRange(Keys, settings, 5);
  EXPECT_EQ(OnDisk(), "[Setup]\nAutoLevel=1\nWFFloor=0\nWFContrast=100\ndb=-1.5\nRef=-72\nDivisor=10000\n");
  settings.AutoRef = true;
  for (const std::optional<int> noBand : {std::optional<int>(), std::optional(13), std::optional(-1)})
    SaveRange(Keys, settings, noBand);
  EXPECT_EQ(OnDisk(), "[Setup]\nAutoLevel=1\nWFFloor=0\nWFContrast=100\ndb=-1.5\nRef=-72\nDivisor=10000\n");
  settings.BandRef[12] = -75;  // another band is tuned by now: the band's own values are stored
  settings.BandDivisor[12] = 100;
  SaveRange(Keys, settings, 12);
  EXPECT_EQ(OnDisk(),
            "[Setup]\nAutoLevel=1\nWFFloor=0\nWFContrast=100\ndb=-1.5\nRef=-72\nDivisor=10000\nRef12=-"
            "75\nDivisor12=100\n");
}

TEST_F(PanSettingsTest, AWindowComesBackAsItWas) {
  PanSettings settings = Load();
  settings.DePhase = 0.0125;
  settings.OnTop = settings.CwReverse = true;
  SaveMainKeys(Keys, settings, std::nullopt);
  const PanSettings again = Load();
  EXPECT_EQ(again.DePhase, 0.0125);
  EXPECT_TRUE(again.OnTop && again.CwReverse && !again.FskReverse);

  SaveGeometry(Keys, {150, 300, 32400, 57600, WindowState::Normal});  // 3840 x 2160 pixels
  SaveGeometry(Keys, {0, 0, 1, 1, WindowState::Maximised});
  SaveGeometry(Keys, {-9, -9, 2, 2, WindowState::Minimised});
  const WindowGeometry window = LoadGeometry(Keys);
  EXPECT_EQ(window.State, WindowState::Maximised);
  EXPECT_THAT((std::array{window.Top, window.Left, window.Height, window.Width}),
              ElementsAre(150, 300, 32400, 57600));
  Write("[Setup]\nWidth=-1\n");
  EXPECT_EQ(LoadGeometry(Keys).Width, WindowGeometry().Width);
  EXPECT_THAT(Notes.Logged, ElementsAre(::testing::HasSubstr("Width=-1 ")));
}

}  // namespace
}  // namespace spectrino
