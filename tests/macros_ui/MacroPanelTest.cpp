// The macro buttons and their editor, used by hand, with the real store and handlers behind them.
#include <gmock/gmock.h>

#include <QContextMenuEvent>
#include <QLabel>
#include <QPointer>
#include <QTest>
#include <QVBoxLayout>

#include "fakes/FakeRig.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"
#include "macros/ui/frmRemFunction.h"

namespace spectrino {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct MacroPanelTest : testing::Test {
  MacroPanelTest() {
    QObject::connect(Panel, &MacroPanel::cmdMacro_Click, [this](int n) { Set.cmdMacro_Click(n); });
    QObject::connect(Panel, &MacroPanel::chkMacro_Click,
                     [this](int n, bool on) { Set.chkMacro_Click(n, on); });
    QObject::connect(Panel, &MacroPanel::EditMacro, [this](int n) {
      Asked.push_back(n);
      ShowMacroEditor(Set, n, *Panel, &Window, Commands);
      Editor = Window.findChild<frmRemFunction*>();
    });
    (new QVBoxLayout(&Window))->addWidget(Panel);
    Panel->SetupMacroButtons(Set.LoadAll());
    Window.resize(900, 60);
    Window.show();
  }
  template <typename Widget = QPushButton>
  Widget* Find(const QString& name) {
    auto* widget = Window.findChild<Widget*>(name);
    if (widget == nullptr) ADD_FAILURE() << name.toStdString();
    return widget;
  }
  void Store8(const Macro& macro) {
    Set.Save(8, macro);
    Panel->SetupMacroButtons(Set.LoadAll());
  }
  void Type(const char* name, const char* text) {
    auto* line = Find<QLineEdit>(name);
    line->selectAll();
    QTest::keyClicks(line, text);
  }
  void Close(Qt::Key key) {
    QTest::keyClick(Find<QLineEdit>("txtMacro"), key);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Editor, nullptr) << "the dialog deletes itself";
  }

  MemorySettingsFile File;
  RecordingNotifier User;
  SettingsStore Store{File, User};
  RadioTraits Traits;
  FakeRig Rig;
  Macros Set{{Store, [this] { return &Rig; }, [this] { return Traits; }}};
  RecordingWindow Commands;
  QWidget Window;
  MacroPanel* Panel = new MacroPanel(&Window);
  QPointer<frmRemFunction> Editor;
  std::vector<int> Asked;
};

TEST_F(MacroPanelTest, APlaceIsAPushButtonOrAToggle) {
  EXPECT_EQ(Find("cmdMacro8")->text(), "MAC9");
  EXPECT_FALSE(Find("chkMacro8")->isVisible());
  const QRect place = Find("cmdMacro8")->geometry();
  Store8({"nb", "NB1", "NB0", true});
  QTest::qWait(0);
  auto* toggle = Find("chkMacro8");
  EXPECT_FALSE(Find("cmdMacro8")->isVisible());
  EXPECT_EQ(toggle->geometry(), place);
  EXPECT_EQ(toggle->text(), "nb");
  EXPECT_EQ(toggle->accessibleName(), "Macro 9: nb");
  QTest::mouseClick(toggle, Qt::LeftButton);
  QTest::keyClick(toggle, Qt::Key_Space);
  QTest::mouseClick(toggle, Qt::LeftButton);
  QTest::mouseClick(Find("cmdMacro0"), Qt::LeftButton);
  EXPECT_THAT(Rig.Requests, ElementsAre("macro NB1", "macro NB0", "macro NB1", "macro "));
  Store8({"blanker", "NB1", "NB0", true});
  EXPECT_TRUE(toggle->isChecked()) << "only its name is another";
  Store8({"blanker", "NB1", "NB2", true});
  EXPECT_FALSE(toggle->isChecked());
  toggle->setChecked(true);
  Store8({"blanker", "NB1", "NB2", false});
  EXPECT_TRUE(Find("cmdMacro8")->isVisible());
  EXPECT_FALSE(toggle->isVisible());
  EXPECT_EQ(Rig.Requests.size(), 4U) << "only the hand sends";
}

TEST_F(MacroPanelTest, CaptionsAreTextAndNothingElse) {
  const int height = Window.height();
  Store8({"A&B", "", "", false});
  EXPECT_EQ(Find("cmdMacro8")->text(), "A&&B") << "no mnemonic";
  Store8({"<b>x</b>\r\ny", "", "", true});
  EXPECT_TRUE(Find("chkMacro8")->toolTip().contains("&lt;b&gt;x&lt;/b&gt; y"));
  Store8({std::string(10000, 'W'), "", "", true});
  QTest::qWait(0);
  EXPECT_TRUE(Find("chkMacro8")->text().endsWith(QChar(0x2026)));
  EXPECT_LT(Find("chkMacro8")->fontMetrics().horizontalAdvance(Find("chkMacro8")->text()),
            Find("chkMacro8")->width());
  EXPECT_EQ(Find("chkMacro8")->width(), Find("cmdMacro0")->width());
  EXPECT_EQ(Window.height(), height);
}

TEST_F(MacroPanelTest, TheEditorOpensByMouseAndByKeyboard) {
  QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, Find("cmdMacro0")->mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(Find("cmdMacro0"), &event);
  Close(Qt::Key_Escape);
  Window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window));
  Find("cmdMacro3")->setFocus();
  QTest::keyClick(Find("cmdMacro3"), Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_THAT(Commands.Tops, ElementsAre(false, true, false));
  Close(Qt::Key_Escape);
  EXPECT_THAT(Asked, ElementsAre(0, 3));
}

TEST_F(MacroPanelTest, OkSavesAndTheButtonFollows) {
  emit Panel->EditMacro(8);
  EXPECT_FALSE(Find<QLabel>("lblIcom")->isVisible());
  EXPECT_EQ(Find<QLineEdit>("txtCaption")->text(), "MAC9");
  EXPECT_FALSE(Find<QLineEdit>("txtOff")->isEnabled());
  Type("txtCaption", "pre");
  Type("txtMacro", "160201");
  QTest::mouseClick(Find("cmdTest"), Qt::LeftButton);
  QTest::keyClick(Find<QCheckBox>("chkOnOff"), Qt::Key_Space);
  Type("txtOff", "160200");
  for (int press = 0; press < 2; ++press) QTest::mouseClick(Find("chkTest"), Qt::LeftButton);
  EXPECT_THAT(Rig.Requests, ElementsAre("macro 160201", "macro 160201", "macro 160200"));
  EXPECT_EQ(File.Files["Spectrino"], "") << "a try stores nothing";
  Close(Qt::Key_Return);
  EXPECT_EQ(File.Files["Spectrino"], "[Macros]\nmac8=160201\ncap8=pre\nmaco8=160200\noff8=1\n");
  EXPECT_EQ(Find("chkMacro8")->text(), "pre");
  EXPECT_TRUE(Find("chkMacro8")->isVisible());

  Traits.MacrosInHex = true;
  emit Panel->EditMacro(8);
  EXPECT_TRUE(Find<QLabel>("lblIcom")->isVisible());
  QTest::mouseClick(Find("cmdClear"), Qt::LeftButton);
  Close(Qt::Key_Escape);
  EXPECT_EQ(Set.Load(8), (Macro{"pre", "160201", "160200", true})) << "Escape keeps what was";
  emit Panel->EditMacro(8);
  QTest::mouseClick(Find("cmdClear"), Qt::LeftButton);
  QTest::mouseClick(Find("cmdOK"), Qt::LeftButton);
  EXPECT_EQ(Set.Load(8), (Macro{"-", "", "", true}));
  EXPECT_EQ(Rig.Requests.size(), 3U);
}

}  // namespace
}  // namespace spectrino
