// The Icom's panel and its scan dialog, clicked and typed at, with the real handlers behind them.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QPointer>
#include <QTest>

#include "civ/IcomCommands.h"
#include "civ/RecordingCivSender.h"
#include "civ/ui/IcomPanel.h"
#include "civ/ui/frmICOMScan.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"

namespace spectrino {
namespace {

class Panel : public testing::Test {
 protected:
  Panel() {
    state_.RadioId = "94";
    state_.IcomActive = true;
    Wire(&IcomPanel::chkFunc_Click, &IcomCommands::chkFunc_Click);
    Wire(&IcomPanel::chkMEM_Click, &IcomCommands::chkMEM_Click);
    Wire(&IcomPanel::chkFIX_Click, &IcomCommands::chkFIX_Click);
    Wire(&IcomPanel::cmdAGC_Click, &IcomCommands::cmdAGC_Click);
    Wire(&IcomPanel::cmdFil_Click, &IcomCommands::cmdFil_Click);
    Wire(&IcomPanel::cmdSpeed_Click, &IcomCommands::cmdSpeed_Click);
    Wire(&IcomPanel::cboSpan_Click, &IcomCommands::cboSpan_Click);
    Wire(&IcomPanel::sldVol_Change, &IcomCommands::sldVol_Change);
    Wire(&IcomPanel::sldSQL_Change, &IcomCommands::sldSQL_Change);
    Wire(&IcomPanel::sldRFLevel_Change, &IcomCommands::sldRFLevel_Change);
    QObject::connect(&panel_, &IcomPanel::chkScan_Click, [this](bool on) { scan_.MainChkScan_Click(on); });
    panel_.show();
  }
  ~Panel() override { delete dialog_; }

  template <typename Signal, typename Handler>
  void Wire(Signal signal, Handler handler) {
    QObject::connect(&panel_, signal, [this, handler](auto... values) { (commands_.*handler)(values...); });
  }
  template <typename Widget>
  Widget* Find(const QString& name) {
    auto* widget = panel_.findChild<Widget*>(name);
    if (dialog_ != nullptr) widget = dialog_->findChild<Widget*>(name);
    if (widget == nullptr) ADD_FAILURE() << name.toStdString();
    return widget;
  }
  std::string Click(const char* name) {
    Find<QAbstractButton>(name)->click();
    return sender_.Take();
  }
  void FindDialog() { dialog_ = panel_.findChild<frmICOMScan*>(); }

  CivState state_;
  test::RecordingCivSender sender_;
  ScriptedPump pump_;
  FakeClock clock_;
  IcomCommands commands_{state_, sender_, pump_, clock_};
  MemorySettingsFile file_;
  RecordingNotifier user_;
  SettingsStore store_{file_, user_};
  RecordingWindow window_;
  IcomPanel panel_;
  IcomScanWindow windows_{[this] { return &panel_; }, panel_};
  ScanCommands scan_{{state_, sender_, store_, window_, windows_}};
  QPointer<frmICOMScan> dialog_;
};

TEST_F(Panel, ClicksReachTheRadio) {
  state_.IcomModeText = "01";
  state_.ScopeSpanMHz = 0.3;
  const std::pair<const char*, const char*> clicks[] = {
      {"chkFunc0", "160201"},   {"chkFunc5", "1A0701"}, {"chkMEM", "08"},
      {"chkFIX", "27140001"},   {"cmdAGC", "161202"},   {"cmdFil2", "03? | receive | 060103 | 04?"},
      {"cmdSpeed", "271A0001"},
  };
  for (const auto& [name, frames] : clicks) EXPECT_EQ(Click(name), frames) << name;
  QTest::keyClick(Find<QComboBox>("cboSpan"), Qt::Key_Down);
  EXPECT_EQ(sender_.Take(), "2715000050000000");
  QTest::keyClick(Find<QSlider>("sldVol0"), Qt::Key_Right);
  QTest::keyClick(Find<QSlider>("sldSQL"), Qt::Key_Right);
  QTest::keyClick(Find<QSlider>("sldRFLevel"), Qt::Key_Left);
  EXPECT_EQ(sender_.Take(), "14010001 | 14030001 | 271900005001");
  EXPECT_EQ(state_.AfLevel, 1);
  EXPECT_EQ(state_.SqlLevel, 1);
  EXPECT_FLOAT_EQ(state_.ScopeRefLevel, -0.5f);
}

TEST_F(Panel, FollowsTheRadioWithoutAnswering) {
  state_.CivParserBusy = true;
  Find<QSlider>("sldVol0")->setSliderDown(true);
  panel_.SetAfSlider(128);
  panel_.SetSquelchSlider(128);
  panel_.SetRefLevelSlider(-21);
  panel_.SelectSpan(7);
  panel_.SetFixedMode(true);
  panel_.ShowSpanList(false);
  EXPECT_EQ(sender_.Take(), "");
  EXPECT_EQ(state_.SqlLevel, 0);
  EXPECT_EQ(Find<QSlider>("sldVol0")->value(), 0) << "a held slider stays in the hand";
  EXPECT_EQ(Find<QSlider>("sldSQL")->value(), 128);
  EXPECT_EQ(Find<QSlider>("sldRFLevel")->value(), -21);
  EXPECT_EQ(Find<QComboBox>("cboSpan")->currentText(), "500");
  EXPECT_TRUE(Find<QAbstractButton>("chkFIX")->isChecked());
  EXPECT_FALSE(Find<QWidget>("cboSpan")->isVisible());
  EXPECT_TRUE(Find<QWidget>("lblSpan")->isVisible());
}

TEST_F(Panel, ScanDialogIsModalAndWorksByKeyboard) {
  EXPECT_EQ(Click("chkScan"), "271100");
  FindDialog();
  ASSERT_NE(dialog_, nullptr);
  EXPECT_TRUE(dialog_->isModal());
  auto* type = Find<QComboBox>("cboScan");
  EXPECT_EQ(type->currentText(), "Programmed/memory scan");
  EXPECT_FALSE(Find<QWidget>("cboDFScan")->isEnabled());
  for (int i = 0; i < 5; ++i) QTest::keyClick(type, Qt::Key_Down);
  EXPECT_EQ(type->currentText(), "Fine DF scan");
  EXPECT_TRUE(Find<QWidget>("cboDFScan")->isEnabled());
  QTest::keyClick(Find<QWidget>("cboDFScan"), Qt::Key_Down);
  QTest::keyClick(type, Qt::Key_Return);
  EXPECT_EQ(sender_.Take(), "") << "Enter in a list starts nothing";
  QTest::keyClick(Find<QWidget>("chkScan"), Qt::Key_Space);
  EXPECT_EQ(sender_.Take(), "0EA2 | 0ED3 | 0E13");
  QTest::keyClick(Find<QWidget>("chkScan"), Qt::Key_Space);
  EXPECT_EQ(sender_.Take(), "0E00 | status");
  QTest::keyClick(dialog_, Qt::Key_Escape);
  EXPECT_EQ(sender_.Take(), "271101");
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(dialog_, nullptr);
  EXPECT_FALSE(Find<QAbstractButton>("chkScan")->isChecked());
  EXPECT_EQ(store_.GetSetting("Spectrino", "SCIcom", "94DFScan", ""), "1");
}

}  // namespace
}  // namespace spectrino
