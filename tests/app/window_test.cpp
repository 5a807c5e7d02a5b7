// The real window on the demo band, driven as a person would.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include "app/WindowBench.h"
#include "display/Colours.h"
#include "k4/ui/frmTCPConnect.h"

namespace spectrino {
namespace {

TEST_F(Window, StartRunsTheDemoAndStopEndsIt) {
  auto* devices = Find<QComboBox>("DevicesBox");
  EXPECT_EQ(devices->currentText(), "Demo signal (no hardware)");
  EXPECT_GE(devices->findText("K4D"), 0);
  Click("StartButton");
  ASSERT_TRUE(LinesCome(5));
  EXPECT_TRUE(Find("StopButton")->isVisible());
  EXPECT_FALSE(Find<QLabel>("lblSMeter")->text().isEmpty());
  EXPECT_FALSE(Find<QLabel>("lblStatus")->isVisible()) << qPrintable(Find<QLabel>("lblStatus")->text());
  Click("StopButton");
  const auto lines = Lines();
  QTest::qWait(150);
  EXPECT_EQ(Lines(), lines);
}

TEST_F(Window, ClosingWhileTheHostIsLookedForEndsCleanly) {
  // The demo signal has a dial of its own and waits for nobody.
  QFile file(folder_.filePath("spectrino/Spectrino.ini"));
  ASSERT_TRUE(QDir().mkpath(folder_.filePath("spectrino")) && file.open(QIODevice::WriteOnly));
  file.write("[Setup]\nNDevice=USB Codec\nDeviceId=pulse:usb\n");
  file.close();
  Reload();
  QTimer::singleShot(200, &program_->Window(), [this] { program_->Window().close(); });
  Click("StartButton");
  QTest::qWait(100);
  EXPECT_EQ(Lines(), 0U);
}

TEST_F(Window, WhatIsSetIsThereAgainNextTime) {
  Click("Command1");
  Click("Command2");
  Click("optDisp1");
  Click("optWaterfall2");
  Click("optZoom3");
  Click("chkBPH");
  Click("cmdIQ");
  Find<QSlider>("sldAmplitude")->setValue(120);
  Find<QSlider>("slddbm")->setValue(-7);
  program_->Window().resize(780, 500);
  Reload();
  EXPECT_EQ(Find<QLabel>("lblRef")->text(), "Ref -57 dB");
  EXPECT_EQ(Find<QLabel>("FraRange")->text(), "Range 120dB");
  for (const char* name : {"optDisp1", "optWaterfall2", "optZoom3", "chkBPH"}) {
    EXPECT_TRUE(Find(name)->isChecked()) << name;
  }
  EXPECT_EQ(Find<QSlider>("sldAmplitude")->value(), 120);
  EXPECT_EQ(Find<QLabel>("lbldbm")->text(), "-7 dB");
  EXPECT_EQ(program_->Window().size(), QSize(780, 500));
}

TEST_F(Window, AMissingInputIsShownAsMissingAndKept) {
  QFile file(folder_.filePath("spectrino/Spectrino.ini"));
  ASSERT_TRUE(QDir().mkpath(folder_.filePath("spectrino")) && file.open(QIODevice::WriteOnly));
  file.write("[Setup]\nDevice=3\nNDevice=USB Codec\nDeviceId=pulse:usb\nOptFreq=7\nSRate=6\n");
  file.close();
  Reload();
  EXPECT_EQ(Find<QComboBox>("DevicesBox")->currentText(), "USB Codec (missing)");
  Click("StartButton");
  EXPECT_TRUE(Find("StartButton")->isVisible());
  Reload();
  EXPECT_TRUE(SettingsText().contains("DeviceId=pulse:usb"));
  EXPECT_TRUE(SettingsText().contains("NDevice=USB Codec"));
}

TEST_F(Window, ADemoRunLeavesTheUsersSettingsAlone) {
  Reload({"spectrino", "--demo=iq"});
  Click("Command1");
  Click("StartButton");
  EXPECT_TRUE(LinesCome(2));
  Reload();
  EXPECT_TRUE(Find("chkAutoLevel")->isChecked()) << "the reference of the demo took over there";
}

TEST_F(Window, KeepsThePlotLargeAndEveryCaptionWhole) {
  frmPan& window = program_->Window();
  for (const auto& [size, leastPlotShare] : {std::pair(QSize(727, 345), 0.45),
                                             {QSize(1280, 720), 0.6},
                                             {QSize(1920, 1080), 0.75},
                                             {QSize(3840, 2160), 0.75}}) {
    window.resize(size);
    QTest::qWait(120);
    ASSERT_EQ(window.size(), size);
    const QWidget* scope = Find<QWidget>("Scope");
    EXPECT_GE(scope->height(), leastPlotShare * window.height());
    for (const QPushButton* button : window.findChildren<QPushButton*>()) {
      if (!button->isVisible()) continue;
      EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(button->text()))
          << qPrintable(button->objectName());
      const QRect place(button->mapTo(&window, QPoint()), button->size());
      EXPECT_TRUE(window.rect().contains(place)) << qPrintable(button->objectName());
      for (const QPushButton* other : window.findChildren<QPushButton*>()) {
        if (other == button || !other->isVisible() || other->parent() != button->parent()) continue;
        EXPECT_FALSE(other->geometry().intersects(button->geometry()))
            << qPrintable(button->objectName() + " over " + other->objectName());
      }
    }
  }
}

// With split on, the longest line there is.
TEST_F(Window, TheSmallestWindowShowsVfoAWhole) {
  Reload({"spectrino", "--demo=k4"});
  program_->Window().resize(727, 345);
  Click("StartButton");
  ASSERT_TRUE(LinesCome(5));
  Click("chkSplt");
  const auto* split = Find<QLabel>("lblSplit");
  ASSERT_TRUE(QTest::qWaitFor([&] { return split->isVisible(); }, 3000));
  QTest::qWait(50);
  const auto* header = Find<QWidget>("HeaderPanel");
  for (const QLabel* label : header->findChildren<QLabel*>()) {
    if (!label->isVisible() || label->text().isEmpty()) continue;
    EXPECT_GE(label->width(), label->sizeHint().width()) << qPrintable(label->objectName());
    EXPECT_LE(label->mapTo(header, label->rect().bottomRight()).x(), header->width())
        << qPrintable(label->objectName());
  }
  EXPECT_LE(Find("cmdFullScreen")->geometry().right(), header->width());
}

TEST_F(Window, EscapeClosesAnOpenListBeforeItLeavesFullScreen) {
  frmPan& window = program_->Window();
  Click("cmdFullScreen");
  auto* list = Find<QComboBox>("DevicesBox");
  list->showPopup();
  ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activePopupWidget() != nullptr; }, 2000));
  QTest::keyClick(list->view(), Qt::Key_Escape);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !list->view()->isVisible(); }, 2000));
  EXPECT_TRUE(window.isFullScreen());
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_FALSE(window.isFullScreen());
}

TEST_F(Window, ADemoIcomIsShownWithItsFrequencyAndAReadingThatCanBe) {
  Reload({"spectrino", "--demo=icom"});
  Click("StartButton");
  ASSERT_TRUE(LinesCome(5));
  EXPECT_EQ(Find<QLabel>("lblFreqA")->accessibleDescription(), "14.074.000");
  EXPECT_EQ(Find<QLabel>("lblMode")->text(), "USB");
  EXPECT_EQ(program_->Display().Geometry().LastPoint, 475);
  // It has no VFO B to be typed.
  auto* header = Find<HeaderPanel>("HeaderPanel");
  header->Vfos().BeginEntry(1, "7");
  EXPECT_FALSE(Find<QLineEdit>("txtFrequency")->isVisible());
  QTest::mouseDClick(Find<QLabel>("lblFreqA"), Qt::LeftButton);
  EXPECT_TRUE(Find<QLineEdit>("txtFrequency")->isVisible());
  for (const char* name : {"Command1", "Command3", "cmdIQ"}) {
    EXPECT_FALSE(Find(name)->isEnabled()) << name;
    EXPECT_TRUE(Find(name)->toolTip().contains("sound inputs")) << name;
  }
  const QString reading = Find<QLabel>("lblSMeter")->text();
  EXPECT_FALSE(reading.isEmpty());
  EXPECT_LE(QString(reading).remove('+').toDouble(), 60) << qPrintable(reading);
}

TEST_F(Window, TheBandPlanIsOnTheAxisAndOnesOwnFileWins) {
  PanDisplay* display = &program_->Display();
  ASSERT_TRUE(QTest::qWaitFor([&] { return display->Layout().StripHeight > 0; }, 3000)) << "by default";
  const auto nameAt = [&](double mhz) {
    ScaleState scale;
    scale.Geometry = {0, 100, 50, mhz - 0.01, mhz + 0.01, display->PlotWidth()};
    scale.FrequencyKnown = true;
    display->DrawScale(scale);
    return display->At({display->PlotWidth() / 2, 30}).Text();
  };
  EXPECT_NE(nameAt(14.02).find("20 m CW"), std::string::npos) << nameAt(14.02);
  QDir().mkpath(folder_.filePath("spectrino"));
  QFile own(folder_.filePath("spectrino/bandplan.json"));
  ASSERT_TRUE(own.open(QIODevice::WriteOnly));
  own.write(R"({"bands": [{"name": "mine", "low": 14000, "high": 14350, "segments": []}, 7]})");
  own.close();
  Reload();
  display = &program_->Display();
  EXPECT_NE(nameAt(14.02).find("mine"), std::string::npos) << nameAt(14.02);
  ASSERT_TRUE(own.open(QIODevice::WriteOnly));
  own.write("{");
  own.close();
  program_->Window().LoadSettings();
  EXPECT_NE(nameAt(14.02).find("20 m CW"), std::string::npos) << "a broken one is none";
}

TEST_F(Window, BandAndModeRowsFoldWhereNoRadioAnswersThem) {
  EXPECT_FALSE(Find("cmdBand5")->isVisible());
  QTest::mouseClick(Find<QToolButton>("cmdFoldDeck"), Qt::LeftButton);
  EXPECT_TRUE(Find("cmdBand5")->isVisible());
  EXPECT_TRUE(Find("cmdMacro8")->isVisible());
  Reload({"spectrino", "--demo=icom"});
  EXPECT_TRUE(Find("cmdBand5")->isVisible());
}

TEST_F(Window, ADemoK4IsShownWorkedAndFollowed) {
  Reload({"spectrino", "--demo=k4d"});
  K4Radio& radio = program_->Demo().K4()->Radio();
  Click("StartButton");
  ASSERT_TRUE(LinesCome(5));
  EXPECT_TRUE(Find<QWidget>("K4Panel")->isVisible());
  const auto caption = [this](const char* name) { return Find(name)->text(); };
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return caption("cmdAGCK4") == "AGC-F" && caption("cmdXFIL0") == "FIL2"; }, 3000));
  EXPECT_EQ(Find<QLabel>("lblMode")->text(), "USB");

  // The panel works the radio, and shows what the radio made of it.
  Click("cmdATT");
  EXPECT_TRUE(QTest::qWaitFor([&] { return caption("cmdATT") == "ATT3"; }, 3000));
  EXPECT_EQ(radio.Value("RA"), "03");
  Click("chkSplt");
  EXPECT_TRUE(QTest::qWaitFor([&] { return Find<QLabel>("lblSplit")->text() == "SPLIT +6.00k"; }, 3000));
  EXPECT_EQ(radio.Value("FT"), "1");
  Click("chkBSET");
  Click("cmdNB");
  EXPECT_TRUE(QTest::qWaitFor([&] { return radio.Value("NB$") == "1"; }, 3000));
  EXPECT_EQ(radio.Value("NB"), "0");
  Find<QSlider>("sldVol1")->setValue(255);
  EXPECT_TRUE(QTest::qWaitFor([&] { return radio.Value("AG") == "060"; }, 3000));

  // The front panel is followed: frequency, span, split.
  radio.TurnVfoA(-4000);
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return Find<QLabel>("lblFreqA")->accessibleDescription() == "14.070.000"; }, 3000));
  EXPECT_TRUE(radio.Answer("FT0", 0).empty());
  EXPECT_TRUE(QTest::qWaitFor([&] { return !Find<QAbstractButton>("chkSplt")->isChecked(); }, 3000));
  EXPECT_EQ(radio.Value("FT"), "0") << "what the radio told is not sent back";

  // The picture stands where the radio's line does.
  const PanDisplay& display = program_->Display();
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return std::abs(display.Geometry().FrequencyAt(display.PlotWidth() / 2) - 14.070) < 1e-6; },
      3000));
  Click("StopButton");
  EXPECT_FALSE(Find<QWidget>("StopButton")->isVisible());
}

// Shown and sent at once, two states under way would go round between program and radio without end.
TEST_F(Window, TwoQuickClicksOnAControlOfTheK4EndWithTheirAnswers) {
  Reload({"spectrino", "--demo=k4d"});
  K4Radio& radio = program_->Demo().K4()->Radio();
  Click("StartButton");
  ASSERT_TRUE(LinesCome(5));
  const auto told = radio.Changed;
  int changes = 0;
  radio.Changed = [&](const std::string& reply) {
    ++changes;
    told(reply);
  };
  for (const char* check : {"chkBSET", "chkSplt", "chkDIV", "chkIIR", "chkFXT"}) {
    Click(check);
    Click(check);
  }
  QTest::qWait(1000);
  EXPECT_EQ(changes, 10) << "as many as clicks";
  for (const char* check : {"chkBSET", "chkSplt", "chkDIV", "chkIIR", "chkFXT"})
    EXPECT_FALSE(Find(check)->isChecked()) << check;
  radio.Changed = told;
  EXPECT_TRUE(radio.Answer("BS1", 0).empty());
  EXPECT_TRUE(QTest::qWaitFor([&] { return Find("chkBSET")->isChecked(); }, 3000));
  Click("StopButton");
  Click("StartButton");
  ASSERT_TRUE(LinesCome(5));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Find("chkBSET")->isChecked(); }, 3000)) << "as the radio is";
  EXPECT_EQ(radio.Value("BS"), "1");
}

TEST_F(Window, TheSmallestWindowSaysWhatTheMiniPansNeed) {
  Reload({"spectrino", "--demo=k4d"});
  program_->Window().resize(727, 345);
  Click("StartButton");
  ASSERT_TRUE(LinesCome(5));
  const auto amber = [this] {
    const QImage picture = Find<QWidget>("Scope")->grab().toImage();
    int pixels = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) {
        const QColor is = picture.pixelColor(x, y);
        const QColor amberIs(status_colour::kAmber);
        pixels += std::abs(is.red() - amberIs.red()) + std::abs(is.green() - amberIs.green()) +
                      std::abs(is.blue() - amberIs.blue()) <
                  100;
      }
    return pixels;
  };
  ASSERT_TRUE(QTest::qWaitFor([&] { return amber() > 0; }, 3000)) << "the filter's name";
  const int before = amber();
  EXPECT_TRUE(program_->Demo().K4()->Radio().Answer("#HDPM1", 0).empty());
  EXPECT_TRUE(QTest::qWaitFor([&] { return amber() > before + 50; }, 3000)) << before << " then " << amber();
}

// Two servers are one radio here, so that one of its ports can go.
TEST_F(Window, OnePortOfAK4GoesAndTheOtherWorksOn) {
  for (const bool catGoes : {false, true}) {
    auto cat = std::make_unique<K4SimServer>(K4SimServer::Options{.IsK4D = true});
    auto pan = std::make_unique<K4SimServer>(K4SimServer::Options{.IsK4D = true});
    ASSERT_TRUE(cat->Start() && pan->Start());
    QDir(folder_.path()).mkpath("spectrino");
    QFile file(folder_.filePath("spectrino/Spectrino.ini"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QString("[Setup]\nK4=1\nOptFreq=7\nK4TCP=127.0.0.1\nK4CATPORT=%1\nK4PANPORT=%2\n")
                   .arg(cat->CatPort())
                   .arg(pan->PanPort())
                   .toUtf8());
    file.close();
    Reload();
    Click("StartButton");
    ASSERT_TRUE(LinesCome(5));
    (catGoes ? cat : pan).reset();
    QTest::qWait(300);
    if (catGoes) {
      EXPECT_TRUE(LinesCome(10)) << "the picture moves on";
    } else {
      auto* scope = Find<QWidget>("Scope");
      const PlotLayout& layout = program_->Display().Layout();
      const double pixel = program_->Display().Geometry().FrequencyToPixel(14.076);
      const QPoint below(static_cast<int>(pixel), layout.TopMargin + layout.PlotHeight - 8);  // of the inset
      QTest::mouseClick(scope, Qt::LeftButton, {}, below);
      EXPECT_TRUE(
          QTest::qWaitFor([&] { return std::abs(cat->Radio().HertzOf("FA") - 14.076e6) < 200; }, 3000))
          << cat->Radio().HertzOf("FA");
    }
    Click("StopButton");
    program_->Window().close();
  }
}

TEST_F(Window, ABoxKeepsItsFrameWhenItIsTicked) {
  Click("cmdSetup");
  auto* box = Find<QDialog>("frmSetupPan")->findChild<QAbstractButton*>("chkFlip6");
  ASSERT_NE(box, nullptr);
  Find<QTabWidget>("Pages")->setCurrentIndex(1);
  for (const bool ticked : {false, true}) {
    box->setChecked(ticked);
    const QImage picture = box->grab().toImage();
    int frame = 0, mark = 0;
    for (int x = 0; x < 16; ++x) {
      frame = std::max(frame, qGray(picture.pixel(x, picture.height() / 2 - 3)));
      mark = std::max(mark, x > 3 && x < 11 ? qGray(picture.pixel(x, picture.height() / 2 + 2)) : 0);
    }
    EXPECT_GT(frame, 120) << ticked;
    EXPECT_EQ(mark > 150, ticked);
  }
}

TEST_F(Window, QuickSplitGoesByTheOffsetThatSetupNamesForTheMode) {
  Reload({"spectrino", "--demo=k4"});
  Click("cmdSetup");
  for (QLineEdit* text : Find<QDialog>("frmSetupPan")->findChildren<QLineEdit*>())
    if (text->accessibleName().contains("Split"))
      text->setText(text->accessibleName().contains("SSB") ? "7" : "2");
  Click("cmdOK");
  Click("StartButton");
  ASSERT_TRUE(LinesCome(5));
  EXPECT_EQ(Find<QLabel>("lblMode")->text(), "USB");
  Click("cmdQuick");
  const K4Radio& radio = program_->Demo().K4()->Radio();
  EXPECT_TRUE(QTest::qWaitFor([&] { return radio.Value("FB") == "00014081000"; }, 3000)) << radio.Value("FB");
}

TEST_F(Window, AK4ThatIsNotThereIsToldAndNobodyIsAskedWhenNobodyIsThere) {
  QDir(folder_.path()).mkpath("spectrino");
  QFile file(folder_.filePath("spectrino/Spectrino.ini"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("[Setup]\nK4=1\nOptFreq=7\nK4TCP=127.0.0.1\nK4CATPORT=9\nK4PANPORT=9\nTCPTimeOut=250\n");
  file.close();
  Reload();
  testing::internal::CaptureStderr();
  Click("StartButton");
  EXPECT_NE(
      testing::internal::GetCapturedStderr().find("TCP ERROR - HOST = 127.0.0.1 PORTPAN = 9 PORTCAT = 9"),
      std::string::npos);
  EXPECT_TRUE(Find("StartButton")->isVisible());
  EXPECT_TRUE(program_->FailedToRun());
}

TEST_F(Window, TheConnectionDialogReturnsWhatWasTyped) {
  K4RetryWindow window([this] { return &program_->Window(); }, false);
  const auto answer = [this](const char* button) {
    QTimer::singleShot(50, &program_->Window(), [this, button] {
      auto* dialog = program_->Window().findChild<QDialog*>("frmTCPConnect");
      ASSERT_NE(dialog, nullptr);
      EXPECT_EQ(dialog->findChild<QLabel*>("lblConnect")->text(), "Unable to connect");
      dialog->findChild<QLineEdit*>("txtIP3")->setText("100");
      dialog->findChild<QPushButton*>(button)->click();
    });
  };
  answer("cmdOK");
  EXPECT_EQ(window.Ask("Unable to connect", {"k4", "1", "2", "3"}), (K4ConnectTexts{"k4", "1", "2", "100"}));
  answer("cmdCancel");
  EXPECT_EQ(window.Ask("Unable to connect", {}), std::nullopt);
}

}  // namespace
}  // namespace spectrino
