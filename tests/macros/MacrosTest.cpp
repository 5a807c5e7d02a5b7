// What the store holds of the macros, and what a press sends.
#include <gmock/gmock.h>

#include "fakes/FakeRig.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"
#include "macros/Macros.h"

namespace spectrino {
namespace {

using ::testing::ElementsAre;

struct MacrosTest : testing::Test {
  MemorySettingsFile File;
  RecordingNotifier User;
  SettingsStore Store{File, User};
  PanSettings Settings;
  FakeRig Rig;
  RigBackend* Backend = &Rig;
  Macros Set{{Store, Settings, [this] { return Backend; }}};

  std::string& OnDisk() { return File.Files["Spectrino"]; }
};

TEST_F(MacrosTest, AFreshStoreHasNineEmptyButtons) {
  const MacroSet all = Set.LoadAll();
  for (int n = 0; n < kMacroCount; ++n)
    EXPECT_EQ(all[static_cast<std::size_t>(n)], (Macro{"MAC" + std::to_string(n + 1), "", "", false})) << n;
  EXPECT_EQ(OnDisk(), "") << "reading stores nothing";
}

TEST_F(MacrosTest, PressesSendWhatTheStoreHoldsNow) {
  Set.Save(0, {"Tune", "SWT16;", "unused", false});
  Set.Save(8, {"NB", "NB1;", "NB0;", true});
  Set.cmdMacro_Click(0);
  Set.chkMacro_Click(8, true);
  Set.chkMacro_Click(8, false);
  Set.cmdMacro_Click(4);
  Store.SaveSetting("Spectrino", "Macros", "mac0", "SWT20;");
  Set.cmdMacro_Click(0);
  EXPECT_THAT(Rig.Requests,
              ElementsAre("macro SWT16;", "macro NB1;", "macro NB0;", "macro ", "macro SWT20;"));
  Backend = nullptr;
  Set.cmdMacro_Click(0);
  Set.chkMacro_Click(8, true);
  EXPECT_EQ(Rig.Requests.size(), 5U);
}

TEST_F(MacrosTest, TheK4HasASetOfItsOwn) {
  Set.Save(2, {"pre", "160201", "160200", true});
  Settings.K4 = true;
  EXPECT_EQ(Set.Load(2), (Macro{"MAC3", "", "", false}));
  Set.Save(2, {"-", "", "", true});
  Settings.K4 = false;
  Settings.K4D = true;
  EXPECT_EQ(Set.Load(2), (Macro{"-", "", "", true}));
  Settings.K4D = false;
  EXPECT_EQ(Set.Load(2), (Macro{"pre", "160201", "160200", true}));
  EXPECT_EQ(OnDisk(),
            "[Macros]\nmac2=160201\ncap2=pre\nmaco2=160200\noff2=1\n"
            "\n[MacrosK4]\nmac2=\ncap2=-\nmaco2=\noff2=1\n");
}

TEST_F(MacrosTest, AnyTextComesBackFromTheFileAndGoesOutAsItIs) {
  const std::string texts[] = {
      std::string(10000, '9'), " blanks at both ends ", "two\r\nlines\\n", "\x01\x1b\x7f\t;", "[Macros]",
      "=;#\xC3\xA9",
  };
  for (const std::string& text : texts) {
    const Macro macro{text, text, text, true};
    Set.Save(5, macro);
    SettingsStore again(File, User);
    Macros reader({again, Settings, [this] { return Backend; }});
    EXPECT_EQ(reader.Load(5), macro);
    Rig.Requests.clear();
    reader.cmdMacro_Click(5);
    reader.chkMacro_Click(5, false);
    EXPECT_THAT(Rig.Requests, ElementsAre("macro " + text, "macro " + text));
  }
  EXPECT_TRUE(User.Messages.empty());
}

}  // namespace
}  // namespace spectrino
