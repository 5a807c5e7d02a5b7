// The Icom's panel and its scan dialog, clicked and typed at, with the kit behind them down to the port.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QPointer>
#include <QTest>

#include "civ/CivDoubles.h"
#include "civ/ui/IcomKit.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

class Panel : public testing::Test {
 protected:
  Panel() {
    file_.Files["Spectrino"] = "[Setup]\nPort=1\nICADDR=94\n[Ports]\n1=/dev/radio\n";
    pump_.Meanwhile = [this] { Hear("190094"); };
    EXPECT_TRUE(kit_.Link()->Open());
    kit_.SetWindow(&window_);
    kit_.Panel()->setEnabled(true);
    kit_.Panel()->show();
    Sent();
  }
  ~Panel() override { delete dialog_; }

  void Hear(const std::string& body) { port_->DataArrival(test::Bytes("FEFEE094" + body + "FD")); }
  /// "160201 | 03": what left the port since the last call, less addresses and ends.
  std::string Sent() {
    for (int frame = 0; frame < 20; ++frame) {
      clock_.Advance(10ms);
      kit_.Link()->Source().Poll({}, line_);
    }
    std::string all;
    for (const std::string& text : port_->Take())
      all += (all.empty() ? "" : " | ") + text.substr(8, text.size() - 10);
    return all;
  }
  template <typename Widget>
  Widget* Find(const QString& name) {
    QWidget* parent = dialog_ != nullptr ? static_cast<QWidget*>(dialog_) : kit_.Panel();
    auto* widget = parent->findChild<Widget*>(name);
    if (widget == nullptr) ADD_FAILURE() << name.toStdString();
    return widget;
  }
  std::string Click(const char* name) {
    Find<QAbstractButton>(name)->click();
    return Sent();
  }
  std::string Key(const char* name, Qt::Key key) {
    QTest::keyClick(Find<QWidget>(name), key);
    return Sent();
  }

  test::FakeSerialPort* port_ = new test::FakeSerialPort;
  ScriptedPump pump_;
  FakeClock clock_;
  MemorySettingsFile file_;
  RecordingNotifier user_;
  SettingsStore store_{file_, user_};
  PanSettings settings_;
  RecordingWindow window_;
  SpectrumLine line_;
  IcomKit kit_{{store_, settings_, user_, pump_, clock_, [] { return false; }},
               std::unique_ptr<SerialPort>(port_)};
  QPointer<frmICOMScan> dialog_;
};

TEST_F(Panel, ClicksReachTheRadio) {
  Hear("040101");
  const std::pair<const char*, const char*> clicks[] = {
      {"chkFunc0", "160201"},  {"chkFunc5", "1A0701"}, {"chkMEM", "08"},
      {"chkFIX", "27140001"},  {"cmdAGC", "161202"},   {"cmdFil2", "03 | 060103 | 04"},
      {"cmdSpeed", "271A0001"}};
  for (const auto& [name, frames] : clicks) EXPECT_EQ(Click(name), frames) << name;
  EXPECT_EQ(Key("cboSpan", Qt::Key_Down), "2715000050000000");
  EXPECT_THAT(Key("sldVol0", Qt::Key_Right), testing::HasSubstr("14010001"));
  EXPECT_THAT(Key("sldSQL", Qt::Key_Right), testing::HasSubstr("14030001"));
  EXPECT_THAT(Key("sldRFLevel", Qt::Key_Left), testing::HasSubstr("271900005001"));
}

TEST_F(Panel, FollowsTheRadioWithoutAnswering) {
  const std::string points(950, '5');
  Find<QSlider>("sldVol0")->setSliderDown(true);
  for (const std::string body : {"14010128", "14030128", "271900105001"}) Hear(body);
  Hear("27 00 00 01 01 00 0040071400 0000500000 00" + points);
  EXPECT_EQ(Find<QComboBox>("cboSpan")->currentText(), "500");
  Hear("27 00 00 01 01 01 0000001400 0000351400 00" + points);
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(Find<QSlider>("sldVol0")->value(), 0) << "a held slider stays in the hand";
  EXPECT_EQ(Find<QSlider>("sldSQL")->value(), 128);
  EXPECT_EQ(Find<QSlider>("sldRFLevel")->value(), -21);
  EXPECT_TRUE(Find<QAbstractButton>("chkFIX")->isChecked());
  EXPECT_FALSE(Find<QWidget>("cboSpan")->isVisible());
  EXPECT_TRUE(Find<QWidget>("lblSpan")->isVisible());
}

TEST_F(Panel, ScanDialogIsModalWorksByKeyboardAndLetsTheScanRunOn) {
  EXPECT_EQ(Click("chkScan"), "271100");
  dialog_ = kit_.Panel()->findChild<frmICOMScan*>();
  ASSERT_NE(dialog_, nullptr);
  EXPECT_TRUE(dialog_->isModal());
  auto* type = Find<QComboBox>("cboScan");
  EXPECT_EQ(type->currentText(), "Programmed/memory scan");
  EXPECT_FALSE(Find<QWidget>("cboDFScan")->isEnabled());
  for (int i = 0; i < 5; ++i) QTest::keyClick(type, Qt::Key_Down);
  EXPECT_EQ(type->currentText(), "Fine DF scan");
  EXPECT_TRUE(Find<QWidget>("cboDFScan")->isEnabled());
  QTest::keyClick(Find<QWidget>("cboDFScan"), Qt::Key_Down);
  EXPECT_EQ(Key("cboScan", Qt::Key_Return), "") << "Enter in a list starts nothing";
  EXPECT_EQ(Key("chkScan", Qt::Key_Space), "0EA2 | 0ED3 | 0E13");
  EXPECT_THAT(Key("chkScan", Qt::Key_Space), testing::StartsWith("0E00 | 03 | 04"));
  EXPECT_EQ(Key("chkScan", Qt::Key_Space), "0EA2 | 0ED3 | 0E13");
  QTest::keyClick(dialog_, Qt::Key_Escape);
  EXPECT_EQ(Sent(), "271101");
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(dialog_, nullptr);
  EXPECT_THAT(window_.Tops, testing::ElementsAre(false, true));
  EXPECT_THAT(Click("chkScan"), testing::StartsWith("0E00 | 03 | 04"));
  EXPECT_FALSE(Find<QAbstractButton>("chkScan")->isChecked());
  EXPECT_EQ(store_.GetSetting("Spectrino", "SCIcom", "94DFScan", ""), "1");
}

}  // namespace
}  // namespace spectrino
