// The setup dialog driven as a person would: choose, type, press OK, read the file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QColorDialog>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include "fakes/MemorySettingsFile.h"
#include "fakes/RadioSources.h"
#include "fakes/Recorders.h"
#include "settings/ui/frmSetupPan.h"

namespace spectrino {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class TwoPorts final : public SerialPorts {
 public:
  [[nodiscard]] std::vector<SerialPortEntry> List() const override {
    return {{"IC-7300 (03001) - ttyUSB1", "/dev/serial/by-id/usb-IC-7300"},
            {"Adapter - ttyUSB0", "/dev/serial/by-id/usb-adapter"}};
  }
  [[nodiscard]] bool SameDevice(const std::string& one, const std::string& other) const override {
    return one == other || (one == "/dev/serial/by-id/usb-adapter" && other == "/dev/ttyUSB0");
  }
  [[nodiscard]] bool Exists(const std::string& path) const override { return path.starts_with("/dev/pts"); }
};

class Setup : public testing::Test {
 protected:
  void Open(const std::string& stored = {}, bool running = false) {
    if (!stored.empty()) file_.Files["Spectrino"] = "[Setup]\n" + stored;
    store_ = std::make_unique<SettingsStore>(file_, user_);
    SetupWorld world{.Store = *store_, .Ports = &ports_, .Running = running};
    world.ListSources = [this] { return SourceList(inputs_, kRadioSources); };
    world.ShowMessage = [this](const QString& text) { messages_.push_back(text.toStdString()); };
    world.AskOkCancel = [this](const QString& text) {
      messages_.push_back(text.toStdString());
      return answer_;
    };
    dialog_ = std::make_unique<frmSetupPan>(world);
    QObject::connect(dialog_.get(), &frmSetupPan::WayChosen,
                     [this](CatWay way) { bridge_.push_back(way == CatWay::Bridge); });
    dialog_->show();
  }
  template <typename Widget>
  Widget* Find(const char* name) {
    auto* widget = dialog_->findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  void Click(const char* name) { Find<QAbstractButton>(name)->click(); }
  void Choose(const char* name, const char* text) {
    auto* list = Find<QComboBox>(name);
    const int index = list->findText(text);
    ASSERT_GE(index, 0) << text;
    list->setCurrentIndex(index);
  }
  void Type(const char* name, const char* text) {
    auto* edit = Find<QLineEdit>(name);
    edit->selectAll();
    QTest::keyClicks(edit, text);
  }
  [[nodiscard]] QString Shown(const char* name) { return Find<QComboBox>(name)->currentText(); }
  /// Hidden neither itself nor with its frame; whether its page is in front does not matter.
  [[nodiscard]] bool Visible(const char* name) {
    const auto* widget = Find<QWidget>(name);
    return !widget->isHidden() && (!widget->parentWidget()->isHidden() ||
                                   QString(name).contains(QRegularExpression("^([Ff]ra|lbl)")));
  }
  [[nodiscard]] std::string Stored(const char* key) {
    return store_->GetSetting("Spectrino", "Setup", key, "(none)");
  }

  MemorySettingsFile file_;
  RecordingNotifier user_;
  TwoPorts ports_;
  std::unique_ptr<SettingsStore> store_;
  std::vector<SoundDevice> inputs_{{"Line in", "id-line"}, {"USB codec", "id-usb"}};
  std::vector<std::string> messages_;
  std::vector<bool> bridge_;
  bool answer_ = true;
  std::unique_ptr<frmSetupPan> dialog_;
};

TEST_F(Setup, ShowsTheFramesOfTheSourceSilently) {
  // Those of the source, beside device, CAT control, wheel, spectrum and colours.
  const std::string card = "fraBits fraApo FraRate fraIQ cboSDR chkPriority ";
  const std::string k4 = "fraK4 fraSpanK4 fraMiscK4 fraTRXM ";
  const std::string adapter = "LPPan (IF Adapter)";
  const std::string fixed = "SDR (Fixed LO)";
  const struct {
    const char *Stored, *Control;
    std::string Sdr, Frames;
  } layouts[] = {
      {"OptFreq=0\n", "Castelon", adapter, card + "fraModeOffset "},
      {"OptFreq=1\n", "Castelon", fixed, card + "fraCenterFrequencies "},
      {"OptFreq=2\n", "Castelon+K3", adapter, card + "fraGlobalOffset "},
      {"OptFreq=3\n", "LPBridge", adapter, card + "fraGlobalOffset "},
      {"OptFreq=4\n", "LPBridge", fixed, card + "fraCenterFrequencies "},
      {"OptFreq=5\n", "Ketrel", adapter, card + "fraGlobalOffset "},
      {"OptFreq=6\n", "Ketrel", fixed, card + "fraCenterFrequencies "},
      {"OptFreq=99\nBits=-4\nSRate=77\nAPO=x\nDesign=9\n", "Castelon", adapter, card + "fraModeOffset "},
      {"OptFreq=7\nK4=1\n", "ICOM", adapter, k4},
      {"OptFreq=7\nK4D=1\n", "ICOM", adapter, k4},
      {"OptFreq=7\nICOM=1\n", "ICOM", adapter, "fraICOM fraCIV cboPort chkAUTOREF "},
      {"OptFreq=8\nICOM=1\nICCTRL=1\n", "Castelon", adapter, "fraTRXM fraICOM chkAUTOREF "}};
  for (const auto& layout : layouts) {
    SCOPED_TRACE(layout.Stored);
    Open(layout.Stored);
    EXPECT_EQ(Shown("cboControl").toStdString(), layout.Control);
    EXPECT_EQ(Shown("cboSDR").toStdString(), layout.Sdr);
    std::string shown;
    for (const char* name :
         {"fraBits", "fraApo", "FraRate", "fraIQ", "cboSDR", "chkPriority", "fraK4", "fraSpanK4", "fraMiscK4",
          "fraModeOffset", "fraGlobalOffset", "fraCenterFrequencies", "fraTRXM", "fraICOM", "fraCIV",
          "cboPort", "chkAUTOREF"}) {
      if (Visible(name)) shown += std::string(name) + " ";
    }
    EXPECT_EQ(shown, layout.Frames);
    Click("cmdCancel");
    EXPECT_THAT(messages_, IsEmpty());
  }
}

TEST_F(Setup, UnchangedChangesNothingInTheFile) {
  const std::string stored =
      "Offset1=abc\nK4CATPORT=1x\nFlipFreq=50,5\nBits=77\nccolor3=99999999999\nStep0=-5\nSMCorr=1e9\n";
  Open(stored);
  EXPECT_EQ(Find<QLineEdit>("txtOffset1")->text(), "abc");
  Click("cmdOK");
  EXPECT_THAT(messages_, IsEmpty());
  EXPECT_THAT(bridge_, ElementsAre(false));
  EXPECT_THAT(file_.Files["Spectrino"], HasSubstr(stored)) << "what was out of range stays as it was written";
}

TEST_F(Setup, SavesAsTypedWithinTheLimits) {
  Open("Device=1\n");
  EXPECT_EQ(Shown("DevicesBox"), "USB codec");
  struct Case {
    const char* Control;
    const char* Typed;
    const char* Key;
    const char* Stored;
  };
  const Case cases[] = {{"txtOffset0", "25", "Offset0", "20"},
                        {"txtOffset1", "-99999999999", "Offset1", "-20"},
                        {"txtOffset2", "1,5", "Offset2", "1,5"},
                        {"txtOffset3", "abc", "Offset3", "abc"},
                        {"txtOffset4", "-.5", "Offset4", "-.5"},
                        {"txtSpan0", "5", "AutoSpan0", "6"},
                        {"txtSpan1", "369", "AutoSpan1", "368"},
                        {"txtSpan2", "25.4", "AutoSpan2", "25.4"},
                        {"txtQSplit0", "99.5", "QSplit0", "98.9"},
                        {"txtQSplit1", "2", "QSplit1", "99.9"},
                        {"txtStep0", "1e9", "Step0", "1e9"},
                        {"txtGlobalOffset", "--3", "Global", "--3"},
                        {"txtK40", "radio.local:1", "K4TCP", "radio.local:1"},
                        {"txtK41", "92000000", "K4CATPORT", "92000000"},
                        {"txtICAddr", "94", "ICADDR", "94"},
                        {"txtHostEndpoint", "shack:4532", "HostEndpoint", "shack:4532"},
                        {"txtCatServerPort", "4600", "CatServerPort", "4600"},
                        {"txtCatServerAddress", "192.168.1.2", "CatServerAddress", "192.168.1.2"}};
  for (const Case& c : cases) Type(c.Control, c.Typed);
  EXPECT_THAT(Find<QLabel>("lblCatServer")->text().toStdString(), testing::HasSubstr("there is no password"));
  Click("chkCatServer");
  Click("chkWFFollow");
  Click("chkWFLive");
  Choose("cboInset", "above the plot");
  Choose("cboWFSpeed", "12");
  Choose("cboWFJoin", "Average");
  EXPECT_EQ(Find<QLabel>("lblNumSamples")->text(), "5.4Hz (13b)") << "the width of a bin";
  Choose("cboSampleRate", "192000");
  Choose("cboBits", "65536");
  EXPECT_EQ(Find<QLabel>("lblNumSamples")->text(), "2.9Hz (16b)");
  Click("optbits0");
  Click("optDesign1");
  Click("cmdOK");
  for (const Case& c : cases) EXPECT_EQ(Stored(c.Key), c.Stored) << c.Typed;
  EXPECT_EQ(Stored("CatServer") + Stored("WFFollow") + Stored("WFLive") + Stored("InsetPlace") +
                Stored("SRate") + Stored("Bits") + Stored("24b") + Stored("Design"),
            "10036811");
  EXPECT_EQ(Stored("WFSpeed") + " " + Stored("WFJoin"), "12 1");
  EXPECT_EQ(Stored("DeviceId"), "id-usb");
  EXPECT_FALSE(dialog_->isVisible());
}

TEST_F(Setup, CancelWritesNothingAndPriorityAsksFirst) {
  Open();
  Type("txtOffset0", "3");
  Click("chkSubD");
  for (const bool answer : {false, true}) {
    answer_ = answer;
    Click("chkPriority");
    EXPECT_EQ(Find<QCheckBox>("chkPriority")->isChecked(), answer);
    EXPECT_THAT(messages_.back(), HasSubstr("priority over all other applications during the capture."));
  }
  Choose("DevicesBox", "K4");
  Click("cmdCancel");
  EXPECT_THAT(file_.Files, IsEmpty());
}

TEST_F(Setup, IncompatibleChoicesAreCorrectedWithAMessage) {
  Open();
  Choose("DevicesBox", "ICOM");
  EXPECT_EQ(Shown("cboControl"), "ICOM");
  EXPECT_EQ(Shown("cboSoft"), "3");
  Choose("cboControl", "LPBridge");
  EXPECT_THAT(messages_, ElementsAre("This option is not compatible"));
  EXPECT_EQ(Shown("cboControl"), "ICOM");
  Choose("DevicesBox", "Line in");
  EXPECT_EQ(messages_.back(), "CAT Control=ICOM not compatible");
  EXPECT_EQ(Shown("cboControl"), "Castelon");
  EXPECT_EQ(messages_.size(), 2U);
  EXPECT_TRUE(Find<QWidget>("chkBandMode")->isEnabled());

  Choose("DevicesBox", "ICOM");
  Choose("cboICOM", "Castelon (OLE)");
  EXPECT_FALSE(Find<QWidget>("cboControl")->isEnabled());
  EXPECT_THAT(Find<QLabel>("lblTRX")->text().toStdString(), HasSubstr("Launch Castelon first."));
  Click("cmdOK");
  EXPECT_EQ(Stored("OptFreq") + Stored("ICOM") + Stored("K4") + Stored("ICCTRL"), "8101");
  EXPECT_EQ(messages_.size(), 2U);
}

TEST_F(Setup, TheBridgeIsWantedByItsOwnControlAlone) {
  Open("OptFreq=3\n");
  Click("cmdCancel");
  Open("OptFreq=3\n");
  Choose("cboControl", "Ketrel");
  Choose("cboSDR", "SDR (Fixed LO)");
  Click("cmdOK");
  EXPECT_THAT(bridge_, ElementsAre(true, false));
  EXPECT_EQ(Stored("OptFreq"), "6");
}

TEST_F(Setup, K4AndK4DDifferInTheSecondReceiver) {
  Open("MP=1\n");
  Choose("DevicesBox", "K4D");
  EXPECT_TRUE(Find<QWidget>("chkMinipan")->isEnabled());
  EXPECT_TRUE(Find<QCheckBox>("chkMinipan")->isChecked());
  EXPECT_TRUE(Find<QCheckBox>("chkBandMode")->isChecked());
  EXPECT_FALSE(Find<QWidget>("chkBandMode")->isEnabled());
  EXPECT_EQ(Shown("cboSoft"), "5");
  Choose("DevicesBox", "K4");
  EXPECT_FALSE(Find<QCheckBox>("chkMinipan")->isChecked());
  Click("cmdOK");
  EXPECT_EQ(Stored("Device") + Stored("K4") + Stored("K4D") + Stored("OptFreq") + Stored("K4TCP"),
            "3107127.0.0.1");
}

TEST_F(Setup, EnablementFollowsTheCheckBoxes) {
  Open();
  for (const auto& [check, follows] :
       std::initializer_list<std::pair<const char*, const char*>>{{"chkFlip6", "txtFlipFreq0"},
                                                                  {"chkFill", "cmdColor6"},
                                                                  {"chkSubD", "cmdColor2"},
                                                                  {"chkMouse", "txtStep3"}}) {
    for (int round = 0; round < 2; ++round) {
      EXPECT_EQ(Find<QWidget>(follows)->isEnabled(), Find<QCheckBox>(check)->isChecked()) << check;
      Click(check);
    }
  }
  EXPECT_THAT(messages_, ElementsAre("Please restart Spectrino", "Please restart Spectrino"));
  Choose("cboSM", "Minipan");
  EXPECT_TRUE(Find<QWidget>("txtCorr")->isEnabled());
}

TEST_F(Setup, ColoursByDialogAndByDefaults) {
  Open();
  const auto answerDialog = [this](bool accept) {
    QTimer::singleShot(0, dialog_.get(), [this, accept] {
      auto* colours = dialog_->findChild<QColorDialog*>("dlgcolor");
      ASSERT_NE(colours, nullptr);
      colours->setCurrentColor(QColor(1, 2, 3));
      accept ? colours->accept() : colours->reject();
    });
  };
  Click("cmdDefault");
  answerDialog(false);
  Click("cmdColor3");
  answerDialog(true);
  Click("cmdColor5");
  const QImage preview = Find<QWidget>("picColor")->grab().toImage();
  EXPECT_EQ(preview.pixelColor(preview.width() * 3 / 10, 30), QColor(1, 2, 3)) << "the cursor's line";
  Click("cmdOK");
  EXPECT_EQ(Stored("ccolor3"), std::to_string(0x808080));
  EXPECT_EQ(Stored("ccolor4"), std::to_string(0x0000FF)) << "the own default, not the K4's";
  EXPECT_EQ(Stored("ccolor5"), std::to_string(0x030201));
}

TEST_F(Setup, DevicesComeAndGoWhileItIsOpen) {
  Open("DeviceId=id-gone\nNDevice=Old card\nDevice=0\n");
  EXPECT_EQ(Shown("DevicesBox"), "Old card (missing)");
  Click("cmdOK");
  EXPECT_EQ(Stored("NDevice"), "Old card") << "still the choice";
  inputs_ = {{"USB codec", "id-1"}, {"USB codec", "id-2"}};
  Open("K4=1\nOptFreq=7\n");
  Find<QComboBox>("DevicesBox")->setCurrentIndex(1);
  inputs_.insert(inputs_.begin(), {"New card", "id-new"});
  dialog_->InitDevices();
  EXPECT_EQ(Find<QComboBox>("DevicesBox")->currentIndex(), 2) << "the same of two twins";
  inputs_.clear();
  dialog_->InitDevices();
  EXPECT_EQ(Shown("DevicesBox"), "USB codec (missing)");
  Click("cmdOK");
  EXPECT_EQ(Stored("DeviceId") + Stored("K4") + Stored("OptFreq"), "id-200")
      << "what was chosen, though it has gone";
}

TEST_F(Setup, ASerialPortKeepsItsNumberAndStandsForADevice) {
  Open("ICOM=1\nOptFreq=7\nPort=3\n");
  EXPECT_EQ(Shown("cboPortDevice"), "/dev/ttyUSB2 (not plugged in)");
  Choose("cboPortDevice", "IC-7300 (03001) - ttyUSB1");
  Click("cmdOK");
  EXPECT_EQ(Stored("Port"), "3");
  EXPECT_EQ(store_->GetSetting("Spectrino", "Ports", "3", ""), "/dev/serial/by-id/usb-IC-7300");
  Open();
  EXPECT_EQ(Shown("cboPortDevice"), "IC-7300 (03001) - ttyUSB1");
  Choose("cboPort", "1");
  EXPECT_EQ(Shown("cboPortDevice"), "Adapter - ttyUSB0") << "the default path leads to it";
  Choose("cboPortDevice", "IC-7300 (03001) - ttyUSB1");
  Choose("cboPort", "2");
  emit Find<setup::FreshList>("cboPortDevice")->AboutToShow();
  Choose("cboPort", "1");
  EXPECT_EQ(Shown("cboPortDevice"), "IC-7300 (03001) - ttyUSB1") << "a pick is kept until OK";
  Click("cmdOK");
  EXPECT_EQ(store_->GetSetting("Spectrino", "Ports", "1", ""), "/dev/serial/by-id/usb-IC-7300");
  EXPECT_EQ(store_->GetSetting("Spectrino", "Ports", "2", "none"), "none");
}

TEST_F(Setup, ARunLocksWhatItCopiedAndSaysWhy) {
  Open("OptFreq=2\n", true);
  for (const char* name :
       {"DevicesBox", "cboControl", "cboSDR", "cboBits", "cboSampleRate", "chkZoom", "optbits0"}) {
    EXPECT_FALSE(Find<QWidget>(name)->isEnabled()) << name;
    EXPECT_THAT(Find<QWidget>(name)->toolTip().toStdString(), HasSubstr("Press Stop")) << name;
  }
  EXPECT_TRUE(Visible("lblLocked"));
  EXPECT_TRUE(Find<QWidget>("chkFill")->isEnabled());
}

// A list keeps Ctrl+Tab for itself, and the sound card's page is empty with a radio.
TEST_F(Setup, CtrlTabGoesFromPageToPageThatHasSomethingOnIt) {
  Open("K4D=1\nOptFreq=7\n");
  auto* pages = Find<QTabWidget>("Pages");
  dialog_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  Find<QComboBox>("DevicesBox")->setFocus();
  std::vector<int> seen;
  for (int i = 0; i < 3; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    seen.push_back(pages->currentIndex());
  }
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
  seen.push_back(pages->currentIndex());
  EXPECT_THAT(seen, ElementsAre(2, 3, 0, 3));
}

TEST_F(Setup, WorksByKeyboardAndFitsASmallScreen) {
  for (const char* stored : {"OptFreq=0\n", "K4D=1\nOptFreq=7\n", "ICOM=1\nOptFreq=7\n"}) {
    Open(stored);
    EXPECT_LE(dialog_->width(), 1024);
    EXPECT_LE(dialog_->height(), 560) << "600 less a title bar";
    for (QWidget* widget : dialog_->findChildren<QWidget*>()) {
      if (widget->focusPolicy() == Qt::NoFocus || widget->objectName().startsWith("qt_")) continue;
      const bool control = widget->inherits("QAbstractButton") || widget->inherits("QLineEdit") ||
                           widget->inherits("QComboBox");
      EXPECT_FALSE(control && widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
    }
    // One letter, one control of a page: a mnemonic that two share only moves the focus.
    auto* pages = Find<QTabWidget>("Pages");
    for (int page = 0; page < pages->count(); ++page) {
      QStringList texts;
      for (int tab = 0; tab < pages->count(); ++tab) texts << pages->tabText(tab);
      for (const char* name : {"cmdHelp", "cmdTRX", "cmdTelepost", "cmdOK", "cmdCancel"})
        texts << Find<QPushButton>(name)->text();
      for (const QWidget* widget : pages->widget(page)->findChildren<QWidget*>())
        if (!widget->isHidden() && !widget->parentWidget()->isHidden())
          texts << widget->property("text").toString();
      QSet<QString> used;
      for (const QString& text : texts) {
        const QString letter = text.section('&', 1, 1).left(1).toLower();
        EXPECT_FALSE(!letter.isEmpty() && used.contains(letter)) << text.toStdString();
        used.insert(letter);
      }
    }
    Click("cmdCancel");
  }
}

}  // namespace
}  // namespace spectrino
