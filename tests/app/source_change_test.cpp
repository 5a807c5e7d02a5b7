// Another source while a run is on, and the keys that buttons name.
#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
#include <QWheelEvent>

#include "app/WindowBench.h"
#include "settings/ui/frmFirstSteps.h"
#include "settings/ui/frmSetupPan.h"
#include "tuning/WindowKeys.h"

namespace spectrino {
namespace {

class SourceChangeTest : public Window {
 protected:
  static constexpr double kDemoSpanHz = 44100;

  void Choose(const char* name) {
    auto* devices = Find<QComboBox>("DevicesBox");
    const int index = devices->findText(name);
    ASSERT_GE(index, 0) << name;
    devices->setCurrentIndex(index);
    emit devices->activated(index);
  }
  [[nodiscard]] bool Runs() { return Find("StopButton")->isVisible(); }
  // New lines of the demo band, or of another source.
  [[nodiscard]] bool Shown(bool demo) {
    return QTest::qWaitFor(
               [&] {
                 const double spanHz = program_->Display().Geometry().ShownSpanHz();
                 return Runs() && (std::abs(spanHz - kDemoSpanHz) < 1) == demo;
               },
               10000) &&
           LinesCome(3);
  }
};

TEST_F(SourceChangeTest, TheRunGoesOverToWhatIsChosenAndKeepsItsLevels) {
  Reload({"spectrino", "--demo=k4"});
  const char* const demo = "Demo signal (no hardware)";
  Click("StartButton");
  ASSERT_TRUE(Shown(false));
  testing::internal::CaptureStderr();
  Choose(demo);
  ASSERT_TRUE(Shown(true));
  Click("Command1");
  Click("Command1");
  Choose(demo);
  EXPECT_TRUE(Runs()) << "the same source goes on";

  // Of quick choices the last one counts; the Icom between has no address and would say so.
  Choose("ICOM");
  Choose("K4");
  ASSERT_TRUE(Shown(false));
  Choose(demo);
  ASSERT_TRUE(Shown(true));
  EXPECT_EQ(Find<QLabel>("lblRef")->text(), "Ref -54 dB");

  // While the K4 is being called.
  Choose("K4");
  QTimer::singleShot(20, &program_->Window(), [&] { Choose(demo); });
  QTest::qWait(60);
  ASSERT_TRUE(Shown(true));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");

  // Stop is the last word.
  Choose("K4");
  program_->Window().StopButton_Click();
  QTest::qWait(100);
  EXPECT_FALSE(Runs());
}

TEST_F(SourceChangeTest, TheWheelOverTheListLeavesTheRunAlone) {
  auto* devices = Find<QComboBox>("DevicesBox");
  QWheelEvent event(QPointF(5, 5), devices->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(devices, &event);
  EXPECT_EQ(devices->currentText(), "Demo signal (no hardware)");
}

TEST_F(SourceChangeTest, TheButtonOfABoxDoesWhatItSays) {
  QtNotifier watched(false);
  watched.SetWindow(&program_->Window());
  watched.CureWanted = program_->User().CureWanted;
  const auto box = [] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); };
  const auto press = [&](const Cure& cure, bool take) {
    watched.ShowMessage("Spectrino", "Quoted text", Severity::Exclamation, cure);
    ASSERT_TRUE(QTest::qWaitFor([&] { return box() != nullptr; }, 5000));
    EXPECT_EQ(box()->text(), "Quoted text");
    EXPECT_EQ(box()->informativeText().toStdString(), cure.Text);
    auto* button = box()->findChild<QPushButton*>("cmdCure");
    EXPECT_EQ(button->text().toStdString(), cure.Button);
    if (take)
      button->click();
    else
      box()->button(QMessageBox::Ok)->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return box() == nullptr; }, 5000));
  };
  press(Cure::UseRate("It runs at 96000 Hz.", 96000), false);
  EXPECT_FALSE(SettingsText().contains("SRate=5")) << "OK changes nothing";
  press(Cure::UseRate("It runs at 96000 Hz.", 96000), true);
  EXPECT_TRUE(LinesCome(3));
  EXPECT_NEAR(program_->Display().Geometry().ShownSpanHz(), 96000, 1);
  EXPECT_TRUE(SettingsText().contains("SRate=5"));
  press(Cure::OpenSetup("Enter it."), true);
  EXPECT_NE(program_->Window().findChild<frmSetupPan*>(), nullptr);
}

TEST_F(SourceChangeTest, FirstStepsAreReachedFromSetupAndStartWhatIsChosen) {
  const auto open = [&] {
    Click("cmdSetup");
    Find("cmdFirstSteps")->click();
    return QTest::qWaitFor([&] { return program_->Window().findChild<frmFirstSteps*>() != nullptr; }, 5000);
  };
  ASSERT_TRUE(open());
  EXPECT_TRUE(Find<QAbstractButton>("optSource0")->isChecked());
  Find("cmdStepsStart")->click();
  EXPECT_TRUE(Shown(true));
  // An address that is missing is asked for; the run goes on meanwhile.
  ASSERT_TRUE(
      QTest::qWaitFor([&] { return program_->Window().findChild<frmFirstSteps*>() == nullptr; }, 5000));
  ASSERT_TRUE(open());
  Find<QAbstractButton>("optSource2")->click();
  Find("cmdStepsStart")->click();
  EXPECT_EQ(Find<QLabel>("lblMissing")->text(), "Enter the K4's address.");
  Find("cmdStepsLater")->click();
  EXPECT_TRUE(LinesCome(2));
}

TEST_F(SourceChangeTest, EachButtonNamesTheKeyThatDoesTheSame) {
  const std::pair<const char*, const char*> expected[] = {
      {"cmdSpot", "Center signal (P)"}, {"optZoom0", "Zoom 1X (Z)"}, {"cmdFullScreen", "Full screen (Esc)"}};
  for (const auto& [name, text] : expected) EXPECT_EQ(Find(name)->toolTip(), text);
  for (const WindowKey& key : kWindowKeys)
    if (!key.Button.empty())
      Find(std::string(key.Button).c_str());  // fails where it is no button of the window
  // One that changes its tool tip keeps the key; what a screen reader says stays as it was.
  Find("cmdSpot")->setToolTip("Another");
  EXPECT_EQ(Find("cmdSpot")->toolTip(), "Another (P)");
  EXPECT_EQ(Find("cmdSpot")->accessibleName(), "Center signal");
  // The key does what the button named for it does.
  Click("optZoom3");
  program_->Window().setFocus();
  QTest::keyClick(&program_->Window(), Qt::Key_Z);
  EXPECT_TRUE(Find("optZoom0")->isChecked());
}

}  // namespace
}  // namespace spectrino
