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
  FakeRig Rig;
  RigBackend* Backend = &Rig;
  RadioTraits Traits;
  Macros Set{{Store, [this] { return Backend; }, [this] { return Traits; }}};

  std::string& OnDisk() { return File.Files["Spectrino"]; }
};

TEST_F(MacrosTest, ARadioMayHaveASetOfItsOwn) {
  Set.Save(2, {"pre", "160201", "160200", true});
  Traits.MacroSection = "MacrosK4";
  EXPECT_EQ(Set.Load(2), (Macro{"MAC3", "", "", false}));
  Set.Save(2, {"-", "", "", true});
  EXPECT_EQ(Set.Load(2), (Macro{"-", "", "", true}));
  Traits = {};
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
    Macros reader({again, [this] { return Backend; }, [this] { return Traits; }});
    EXPECT_EQ(reader.Load(5), macro);
    Rig.Requests.clear();
    reader.cmdMacro_Click(5);
    reader.chkMacro_Click(5, false);
    EXPECT_THAT(Rig.Requests, ElementsAre("macro " + text, "macro " + text));
  }
  EXPECT_TRUE(User.Messages.empty());
  Store.SaveSetting("Spectrino", "Macros", "mac5", "edited in the file");
  Rig.Requests.clear();
  Set.cmdMacro_Click(5);
  EXPECT_THAT(Rig.Requests, ElementsAre("macro edited in the file"));
  Backend = nullptr;
  Set.cmdMacro_Click(5);
  Set.chkMacro_Click(5, true);
  EXPECT_EQ(Rig.Requests.size(), 1U);
}

}  // namespace
}  // namespace spectrino
