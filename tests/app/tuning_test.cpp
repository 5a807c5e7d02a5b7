// The plot as the dial, from the mouse to the simulated radio and back.
#include <QAccessible>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QSlider>
#include <QToolButton>
#include <QWheelEvent>

#include "app/WindowBench.h"

namespace spectrino {
namespace {

class Dial : public Window {
 protected:
  void Begin(const char* demo) {
    Reload({"spectrino", demo});
    program_->Window().resize(1000, 600);
    Click("StartButton");
    ASSERT_TRUE(LinesCome(8));
    scope_ = Find<QWidget>("Scope");
    program_->Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&program_->Window()));
  }
  [[nodiscard]] PanDisplay& Display() { return program_->Display(); }
  /// The middle of the plot's height, at a frequency.
  [[nodiscard]] QPoint PlotAt(double mhz) {
    const PlotLayout& layout = Display().Layout();
    return {static_cast<int>(Display().Geometry().FrequencyToPixel(mhz)),
            layout.TopMargin + layout.PlotHeight / 2};
  }
  void Turn(QPoint at, int delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWheelEvent event(at, scope_->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton, modifiers,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(scope_, &event);
  }
  void Point(QPoint at, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
             Qt::MouseButtons buttons = Qt::NoButton) {
    QMouseEvent move(QEvent::MouseMove, at, scope_->mapToGlobal(at), Qt::NoButton, buttons, modifiers);
    QApplication::sendEvent(scope_, &move);
  }
  void DragBy(QPoint from, QPoint way, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mousePress(scope_, Qt::LeftButton, modifiers, from);
    for (int step = 1; step <= 10; ++step) {
      Point(from + way * step / 10, modifiers, Qt::LeftButton);
      QTest::qWait(8);
    }
    QTest::mouseRelease(scope_, Qt::LeftButton, modifiers, from + way);
  }
  [[nodiscard]] double Heard(const char* vfo) { return program_->Demo().K4()->Radio().HertzOf(vfo); }
  [[nodiscard]] bool HearsWithin(const char* vfo, double hertz, double tolerance = 0.5) {
    return QTest::qWaitFor([&] { return std::abs(Heard(vfo) - hertz) <= tolerance; }, 1000);
  }

  QWidget* scope_ = nullptr;
};

TEST_F(Dial, AK4IsTunedByClickWheelAndKeys) {
  ASSERT_NO_FATAL_FAILURE(Begin("--demo=k4d"));
  const double pixelHz = Display().Geometry().ShownSpanHz() / Display().Geometry().PlotWidth;
  QTest::mouseClick(scope_, Qt::LeftButton, {}, PlotAt(14.081));
  EXPECT_TRUE(HearsWithin("FA", 14.081e6, pixelHz));
  ASSERT_TRUE(LinesCome(3));
  QTest::mouseClick(scope_, Qt::RightButton, {}, PlotAt(14.089));
  EXPECT_TRUE(HearsWithin("FB", 14.089e6, pixelHz));
  Click("cmdUndo");
  EXPECT_TRUE(HearsWithin("FB", 14.080e6));

  // A row of the waterfall stands where it was taken.
  ASSERT_TRUE(LinesCome(20));
  const PlotLayout& layout = Display().Layout();
  const QPoint row(200, layout.WaterfallTop + 10);
  const double rowMHz = Display().Waterfall().FrequencyAt(200, 10);
  QTest::mouseClick(scope_, Qt::LeftButton, {}, row);
  EXPECT_TRUE(HearsWithin("FA", rowMHz * 1e6, pixelHz));

  QTest::qWait(500);
  const double from = Heard("FA");
  for (int notch = 0; notch < 3; ++notch) Turn(PlotAt(14.07), 120);
  const double goal = (std::round(from / 25) + 3) * 25;
  EXPECT_TRUE(HearsWithin("FA", goal, 25)) << Heard("FA") << " for " << goal;
  QTest::qWait(500);
  scope_->setFocus();
  QTest::keyClick(scope_, Qt::Key_Left, Qt::ShiftModifier);
  const double tenfold = std::round((goal - 250) / 250) * 250;
  EXPECT_TRUE(HearsWithin("FA", tenfold, 250));
  QTest::keyClick(scope_, 'b');
  QTest::keyClick(scope_, Qt::Key_Up);
  EXPECT_TRUE(HearsWithin("FB", 14.080025e6));
  Click("cmdUpDn0");
  EXPECT_TRUE(HearsWithin("FA", tenfold + 50000, 250));
}

TEST_F(Dial, DigitsOfBothVfosTurnByWheelAndClick) {
  ASSERT_NO_FATAL_FAILURE(Begin("--demo=k4d"));
  auto* a = Find<QLabel>("lblFreqA");
  auto* b = Find<QLabel>("lblFreqB");
  ASSERT_TRUE(QTest::qWaitFor([&] { return b->accessibleDescription() == "14.080.000"; }, 3000));
  // The middle of each character, from the light line under it; nothing may be lit under a dot alone.
  const auto digits = [](QLabel* label) {
    std::vector<int> middles;
    int begin = -1;
    QTest::mouseMove(label, QPoint(1, 1));
    for (int x = 0; x < label->width(); ++x) {
      QMouseEvent move(QEvent::MouseMove, QPointF(x, 5), label->mapToGlobal(QPointF(x, 5)), Qt::NoButton,
                       Qt::NoButton, {});
      QApplication::sendEvent(label, &move);
      const QImage image = label->grab().toImage();
      int first = -1, last = -1;
      for (int at = 0; at < image.width(); ++at) {
        if (image.pixel(at, image.height() - 1) != 0xFF7CC4EE) continue;
        if (first < 0) first = at;
        last = at;
      }
      if (first >= 0 && std::exchange(begin, first) != first) middles.push_back((first + last) / 2);
    }
    return middles;
  };
  const auto turn = [](QLabel* label, int x, int delta) {
    QWheelEvent event(QPointF(x, 8), label->mapToGlobal(QPointF(x, 8)), QPoint(), QPoint(0, delta),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(label, &event);
  };
  const std::vector<int> ofA = digits(a), ofB = digits(b);
  ASSERT_EQ(ofA.size(), 8U);
  ASSERT_EQ(ofB.size(), 8U);
  for (int notch = 0; notch < 3; ++notch) turn(a, ofA[4], 120);
  EXPECT_EQ(a->cursor().shape(), Qt::SizeVerCursor);
  EXPECT_TRUE(HearsWithin("FA", 14.077e6)) << Heard("FA");
  turn(b, ofB[0], -60);
  turn(b, ofB[0], -60);
  EXPECT_TRUE(HearsWithin("FB", 4.08e6)) << Heard("FB");
  turn(b, ofB[0], -120);
  EXPECT_TRUE(QTest::qWaitFor([&] { return b->accessibleDescription() == "4.080.000"; }, 1000));
  EXPECT_EQ(Heard("FB"), 4.08e6) << "never below zero";
  QTest::mouseClick(a, Qt::LeftButton, {}, {ofA[7], 3});
  EXPECT_TRUE(HearsWithin("FA", 14.077001e6)) << Heard("FA");
  QTest::qWait(QApplication::doubleClickInterval() + 50);
  QTest::mouseClick(a, Qt::LeftButton, {}, {ofA[3], a->height() - 3});
  EXPECT_TRUE(HearsWithin("FA", 14.067001e6)) << Heard("FA");
  QTest::qWait(QApplication::doubleClickInterval() + 50);
  // A double click takes its first click back and opens the entry.
  QTest::mouseClick(a, Qt::LeftButton, {}, {ofA[3], 3});
  QTest::mouseDClick(a, Qt::LeftButton, {}, {ofA[3], 3});
  EXPECT_TRUE(Find<QLineEdit>("txtFrequency")->isVisible());
  EXPECT_TRUE(HearsWithin("FA", 14.067001e6)) << Heard("FA");
}

TEST_F(Dial, AK4IsWorkedByBandModeMacroAndTypedFrequency) {
  ASSERT_NO_FATAL_FAILURE(Begin("--demo=k4"));
  const auto value = [this](const char* key) { return program_->Demo().K4()->Radio().Value(key); };
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return Find("cmdBand6")->isChecked() && Find("cmdMode1")->isChecked(); }, 2000));
  EXPECT_EQ(Find("cmdBand4")->text(), "40m");
  Click("cmdBand4");
  EXPECT_TRUE(QTest::qWaitFor([&] { return Heard("FA") > 6.9e6 && Heard("FA") < 7.4e6; }, 1000));
  Click("cmdMode3");
  EXPECT_TRUE(QTest::qWaitFor([&] { return value("MD") == "7"; }, 1000));
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return Find("cmdBand4")->isChecked() && Find("cmdMode3")->isChecked(); }, 2000));
  EXPECT_FALSE(Find("cmdMode9")->isVisible());

  QTest::keyClick(&program_->Window(), '1');
  auto* entry = Find<QLineEdit>("txtFrequency");
  QTest::keyClicks(entry, "4.0312");
  QTest::keyClick(entry, Qt::Key_Return);
  EXPECT_TRUE(HearsWithin("FA", 14.0312e6));
  QTest::keyClick(&program_->Window(), '9');
  QTest::keyClick(entry, Qt::Key_Escape);
  EXPECT_FALSE(entry->isVisible());
  EXPECT_FALSE(program_->Window().isFullScreen());

  // A macro is written in its editor and sent by its button.
  emit Find("cmdMacro2")->customContextMenuRequested({});
  auto* editor = program_->Window().findChild<QDialog*>("frmRemFunction");
  ASSERT_NE(editor, nullptr);
  editor->findChild<QLineEdit*>("txtCaption")->setText("40 m CW");
  editor->findChild<QLineEdit*>("txtMacro")->setText("FA00007030000;MD3");
  QTest::mouseClick(editor->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
  EXPECT_EQ(Find("cmdMacro2")->text(), "40 m CW");
  Click("cmdMacro2");
  EXPECT_TRUE(HearsWithin("FA", 7.03e6));
  EXPECT_TRUE(QTest::qWaitFor([&] { return value("MD") == "3"; }, 1000));

  // One that switches on and off: what the wheel has still to send must not undo it.
  emit Find("cmdMacro3")->customContextMenuRequested({});
  editor = program_->Window().findChild<QDialog*>("frmRemFunction");
  ASSERT_NE(editor, nullptr);
  editor->findChild<QLineEdit*>("txtMacro")->setText("FA00007010000");
  editor->findChild<QAbstractButton*>("chkOnOff")->setChecked(true);
  QTest::mouseClick(editor->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
  QTest::qWait(500);
  for (int notch = 0; notch < 3; ++notch) Turn(PlotAt(7.03), 120);
  Click("chkMacro3");
  QTest::qWait(300);
  EXPECT_TRUE(HearsWithin("FA", 7.01e6)) << Heard("FA");
}

TEST_F(Dial, AnIcomIsWorkedByBandAndModeButtons) {
  ASSERT_NO_FATAL_FAILURE(Begin("--demo=icom"));
  const auto state = [this]() -> const SimVfo& { return program_->Demo().Icom()->Radio().State().Active(); };
  const double left = static_cast<double>(state().Hz);
  Click("cmdBand4");
  EXPECT_TRUE(QTest::qWaitFor([&] { return state().Hz == 7150000; }, 1500));
  Click("cmdMode2");
  EXPECT_TRUE(QTest::qWaitFor([&] { return state().Mode == 3; }, 1500));
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return Find("cmdMode2")->isChecked() && Find("cmdBand4")->isChecked(); }, 2000));
  Click("cmdMode9");
  EXPECT_TRUE(QTest::qWaitFor([&] { return state().Mode == 7; }, 1500)) << "CW reversed";
  Click("cmdBand5");
  QTest::qWait(300);
  Click("cmdBand6");
  EXPECT_TRUE(QTest::qWaitFor([&] { return static_cast<double>(state().Hz) == left; }, 1500))
      << "back where one was";
}

TEST_F(Dial, AMiniPanIsTunedAndItsPassbandDragged) {
  ASSERT_NO_FATAL_FAILURE(Begin("--demo=k4"));
  // The first place of a part, from the left in the lowest row that has it.
  const auto find = [&](MiniPanPart part) {
    QPoint place(-1, -1);
    for (int y = 20; y < scope_->height(); y += 3) {
      for (int x = scope_->width() - 4; x > 4; --x) {
        if (Display().At(QPointF(x, y)).MiniPan().Part == part) place = {x, y};
      }
    }
    return place;
  };
  ASSERT_TRUE(QTest::qWaitFor([&] { return find(MiniPanPart::Passband).x() >= 0; }, 5000));
  const QPoint inside = find(MiniPanPart::Passband) + QPoint(4, 0);
  K4Radio& radio = program_->Demo().K4()->Radio();
  const double dial = Heard("FA");
  const int shift = radio.Number("IS");
  const int width = radio.Number("BW");
  Turn(inside, 120);
  EXPECT_TRUE(QTest::qWaitFor([&] { return radio.Number("IS") == shift + 1; }, 1000));
  QTest::mouseClick(scope_, Qt::RightButton, {}, inside);
  EXPECT_TRUE(QTest::qWaitFor([&] { return radio.Number("BW") == width + 5; }, 1000));

  const auto drag = [&](QPoint from, int pixels) {
    const double hertz = Display().At(from).MiniPan().HzPerPixel * pixels;
    DragBy(from, {pixels, 0});
    return hertz;
  };
  QTest::qWait(500);
  const double shiftedHz = drag(inside, 20);
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return std::abs(radio.Number("IS") - (shift + 1 + shiftedHz / 10)) <= 1; }, 1000))
      << radio.Number("IS") << " from " << shift << " by " << shiftedHz;
  QTest::qWait(500);
  const double narrowedHz = 2 * drag(find(MiniPanPart::LowEdge) + QPoint(2, 0), 10);
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return std::abs(radio.Number("BW") - (width + 5 - narrowedHz / 10)) <= 1; }, 1000))
      << radio.Number("BW") << " from " << width << " by " << narrowedHz;
  EXPECT_EQ(Heard("FA"), dial) << "filters only";

  const QPoint beside = find(MiniPanPart::Beside) + QPoint(5, 0);
  const MiniPanHit hit = Display().At(beside).MiniPan();
  EXPECT_LT(std::abs(hit.FreqMHz * 1e6 - dial), 10000);
  QTest::mouseClick(scope_, Qt::RightButton, {}, beside);
  EXPECT_TRUE(HearsWithin("FA", hit.FreqMHz * 1e6, 1)) << "the mini-pan's frequency, its own receiver";
}

TEST_F(Dial, AFilterIsDraggedInThePlotAndAClickThereStillTunes) {
  ASSERT_NO_FATAL_FAILURE(Begin("--demo=k4d"));
  K4Radio& radio = program_->Demo().K4()->Radio();
  const auto edge = [&](const char* vfo, const char* centre, const char* width) {
    return PlotAt((Heard(vfo) + 10 * radio.Number(centre) + 5 * radio.Number(width)) / 1e6);
  };
  ASSERT_TRUE(QTest::qWaitFor([&] {
    Point(edge("FA", "IS", "BW"));
    return scope_->cursor().shape() == Qt::SizeHorCursor;
  }));
  const double dial = Heard("FA");
  const int width = radio.Number("BW");
  const double pixelHz = Display().Geometry().ShownSpanHz() / Display().Layout().PlotWidth;
  DragBy(edge("FA", "IS", "BW"), {12, 0});
  const double wideHz = 10.0 * width + 2 * 12 * pixelHz;
  EXPECT_TRUE(QTest::qWaitFor([&] { return std::abs(10 * radio.Number("BW") - wideHz) <= 20; }, 1000))
      << radio.Number("BW") << " for " << wideHz;
  const int subShift = radio.Number("IS$");
  const QPoint inB = edge("FB", "IS$", "BW$") - QPoint(15, 0);
  Point(inB, Qt::ShiftModifier);
  EXPECT_EQ(scope_->cursor().shape(), Qt::OpenHandCursor);
  DragBy(inB, {10, 0}, Qt::ShiftModifier);
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return std::abs(10 * (radio.Number("IS$") - subShift) - 10 * pixelHz) <= 20; }, 1000));
  EXPECT_EQ(Heard("FA"), dial);

  Point(edge("FA", "IS", "BW") - QPoint(15, 0));
  EXPECT_EQ(scope_->cursor().shape(), Qt::CrossCursor) << "inside, without Shift";
  const int kept = radio.Number("BW");
  Turn(edge("FA", "IS", "BW"), 120);
  EXPECT_TRUE(HearsWithin("FA", dial + 25)) << "the wheel tunes there too";
  QTest::qWait(500);
  const QPoint at = edge("FA", "IS", "BW");
  QTest::mouseClick(scope_, Qt::LeftButton, {}, at);
  EXPECT_TRUE(HearsWithin("FA", dial + 25 + 10 * radio.Number("IS") + 5 * kept, pixelHz));
  EXPECT_EQ(radio.Number("BW"), kept);
}

TEST_F(Dial, TheInsetGoesWhereItsGripIsDropped) {
  ASSERT_NO_FATAL_FAILURE(Begin("--demo=k4d"));
  const auto inset = [this] { return Display().Layout().Inset; };
  const auto grip = [this] {
    for (int y = 0; y < scope_->height(); y += 3)
      for (int x = scope_->width() - 1; x >= 0; x -= 3)
        if (Display().At(QPointF(x, y)).OnInsetGrip()) return QPoint(x, y);
    return QPoint(-1, -1);
  };
  ASSERT_TRUE(QTest::qWaitFor([&] { return grip().x() >= 0; }, 5000));
  EXPECT_EQ(inset(), InsetPlace::Beside) << "of a wide window by itself";
  const double dial = Heard("FA");
  const QPoint targets[] = {{300, 10}, {300, scope_->height() - 20}, {300, 150}, {scope_->width() - 5, 200}};
  const InsetPlace places[] = {InsetPlace::Above, InsetPlace::OverWaterfall, InsetPlace::OverPlot,
                               InsetPlace::Beside};
  for (std::size_t i = 0; i < std::size(places); ++i) {
    const QPoint from = grip();
    Point(from);
    EXPECT_EQ(scope_->cursor().shape(), Qt::SizeAllCursor);
    DragBy(from, targets[i] - from);
    EXPECT_EQ(inset(), places[i]);
    ASSERT_TRUE(LinesCome(2));
    EXPECT_EQ(Display().Geometry().PlotWidth, Display().Layout().PlotWidth) << "one mapping";
  }
  QTest::mouseClick(scope_, Qt::LeftButton, {}, grip());
  EXPECT_EQ(inset(), InsetPlace::Above) << "a click goes on";
  Click("cmdSetup");
  auto* setup = Find<QDialog>("frmSetupPan");
  EXPECT_EQ(setup->findChild<QComboBox*>("cboInset")->currentText(), "above the plot") << "it is kept";
  setup->reject();
  QTest::mouseClick(scope_, Qt::RightButton, {}, grip());
  EXPECT_EQ(inset(), InsetPlace::Beside);
  EXPECT_EQ(Heard("FA"), dial) << "nothing tuned";
}

TEST_F(Dial, AnIcomIsTunedByClick) {
  ASSERT_NO_FATAL_FAILURE(Begin("--demo=icom"));
  const auto heard = [this] {
    return static_cast<double>(program_->Demo().Icom()->Radio().State().Active().Hz);
  };
  const double pixelHz = Display().Geometry().ShownSpanHz() / Display().Geometry().PlotWidth;
  QTest::mouseClick(scope_, Qt::LeftButton, {}, PlotAt(14.15));
  EXPECT_TRUE(QTest::qWaitFor([&] { return std::abs(heard() - 14.15e6) <= pixelHz; }, 1000));
  const PlotPointer pointer = Display().At(PlotAt(14.15));
  EXPECT_GE(pointer.Level(), 0) << "the scope tells heights";
  EXPECT_EQ(pointer.Text().find("dBm"), std::string::npos) << pointer.Text();

  // Its filter has widths in steps of 100 Hz: the radio has the nearest one.
  const auto width = [this] { return program_->Demo().Icom()->Radio().Settings().Value({0x1A, 0x03}); };
  ASSERT_EQ(width(), 28) << "2400 Hz";
  const auto edge = [&] { return PlotAt((heard() + 2400) / 1e6); };
  ASSERT_TRUE(LinesCome(3)) << "the scope is centred on the dial again";
  for (int step = 0; step < 4; ++step) QTest::keyClick(&program_->Window(), '+');
  ASSERT_TRUE(LinesCome(2));
  ASSERT_TRUE(QTest::qWaitFor(
      [&] {
        Point(edge());
        return scope_->cursor().shape() == Qt::SizeHorCursor;
      },
      8000))
      << edge().x() << " of " << Display().Layout().PlotWidth << ", "
      << Display().At(edge()).Filter().HzPerPixel;
  const double hertz = 20 * Display().Geometry().ShownSpanHz() / Display().Layout().PlotWidth;
  DragBy(edge(), {20, 0});
  const int wanted = 28 + qRound(hertz / 100);
  EXPECT_TRUE(QTest::qWaitFor([&] { return std::abs(width() - wanted) <= 1 && width() > 28; }, 2000))
      << width() << " for " << wanted;
}

TEST_F(Dial, ANewcomersDemoIsTunedByAllThatTunes) {
  ASSERT_NO_FATAL_FAILURE(Begin("--demo=iq"));
  EXPECT_TRUE(Find("optDisp1")->isChecked() && Find("optWaterfall3")->isChecked() &&
              Find("chkAutoLevel")->isChecked());
  EXPECT_EQ(Display().Waterfall().RowAt(0)->TopLevel - Display().Waterfall().RowAt(0)->BottomLevel, 45);
  const auto centreBecomes = [&](double mhz, double tolerance = 1e-4) {
    return QTest::qWaitFor(
        [&] {
          return std::abs(Display().Geometry().FrequencyAt(Display().Layout().PlotWidth / 2.0) - mhz) <
                 tolerance;
        },
        3000);
  };
  EXPECT_TRUE(centreBecomes(14.074));
  QTest::mouseClick(scope_, Qt::LeftButton, Qt::NoModifier, PlotAt(14.084));
  EXPECT_TRUE(centreBecomes(14.084));
  Turn(PlotAt(14.08), 120);
  EXPECT_TRUE(centreBecomes(14.084, 3e-4));
  Click("cmdUndo");
  EXPECT_TRUE(centreBecomes(14.074));
  QTest::mouseClick(Find<QToolButton>("cmdFoldDeck"), Qt::LeftButton);
  Click("cmdBand3");
  EXPECT_TRUE(centreBecomes(7.1));
  EXPECT_EQ(Find<QLabel>("lblMode")->text(), "LSB");
  Click("cmdBand5");
  EXPECT_TRUE(centreBecomes(14.074)) << "where it was";
}

TEST_F(Dial, WithCtrlTheWheelZoomsAtThePointerAndADragPans) {
  ASSERT_NO_FATAL_FAILURE(Begin("--demo=iq"));
  const int x = Display().Layout().PlotWidth / 4;
  const QPoint at(x, 60);
  const double under = Display().Geometry().FrequencyAt(x);
  Turn(at, 120, Qt::ControlModifier);
  Turn(at, 120, Qt::ControlModifier);
  ASSERT_TRUE(LinesCome(2));
  EXPECT_TRUE(Find("optZoom2")->isChecked());
  EXPECT_NEAR(Display().Geometry().FrequencyAt(x), under, Display().Geometry().ShownSpanHz() / 1e6 / 400);
  const double leftBefore = Display().Geometry().LeftMHz;
  const double shift = Display().Geometry().FrequencyAt(100) - leftBefore;
  QTest::mousePress(scope_, Qt::LeftButton, Qt::ControlModifier, at);
  for (int step = 1; step <= 100; ++step) {
    QMouseEvent move(QEvent::MouseMove, QPointF(at.x() + step, at.y()), scope_->mapToGlobal(at), Qt::NoButton,
                     Qt::LeftButton, Qt::ControlModifier);
    QApplication::sendEvent(scope_, &move);
  }
  QTest::mouseRelease(scope_, Qt::LeftButton, Qt::ControlModifier, at);
  EXPECT_NEAR(Display().Geometry().LeftMHz, leftBefore - shift, shift / 20);
  QTest::keyClick(&program_->Window(), 'z');
  EXPECT_TRUE(Find("optZoom0")->isChecked());
  QTest::keyClick(&program_->Window(), '+');
  EXPECT_TRUE(Find("optZoom1")->isChecked());
  QTest::keyClick(&program_->Window(), '-');
  QTest::keyClick(&program_->Window(), '-');
  EXPECT_TRUE(Find("optZoom0")->isChecked());
}

TEST_F(Dial, TheAxesAreDraggedAndTurned) {
  const auto drag = [&](QPoint from, QPoint by) {
    QTest::mousePress(scope_, Qt::LeftButton, {}, from);
    for (int step = 1; step <= 10; ++step) {
      const QPointF to = from + QPointF(by) * step / 10;
      QMouseEvent move(QEvent::MouseMove, to, scope_->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
      QApplication::sendEvent(scope_, &move);
    }
    QTest::mouseRelease(scope_, Qt::LeftButton, {}, from + by);
  };
  // Stopped, with settings that stay.
  scope_ = Find<QWidget>("Scope");
  Turn({Display().Layout().PlotWidth + 6, 20}, 120);
  drag({Display().Layout().PlotWidth + 6, 20}, {0, -4000});
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return SettingsText().contains("Ref=-102\n") && SettingsText().contains("Divisor=100000\n"); },
      3000));
  for (const char* demo : {"--demo=iq", "--demo=k4"}) {
    SCOPED_TRACE(demo);
    ASSERT_NO_FATAL_FAILURE(Begin(demo));
    const bool card = QByteArray(demo) == "--demo=iq";
    const PlotLayout& layout = Display().Layout();
    const QPoint levels(layout.PlotWidth + 6, layout.PlotHeight / 2);
    const QPoint strip(layout.Width - 5, layout.PlotHeight / 2);
    const QPoint frequencies(layout.PlotWidth / 2, layout.WaterfallTop - 4);
    const std::string ownReference = card ? "" : program_->Demo().K4()->Radio().Value("#REF");
    const auto shape = [&](QPoint at) {
      QMouseEvent move(QEvent::MouseMove, at, scope_->mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
      QApplication::sendEvent(scope_, &move);
      return scope_->cursor().shape();
    };
    // The level that stood there, by its label.
    const auto yOf = [&](const std::string& text) {
      scope_->grab();
      for (const ScaleLabel& label : Display().Scale().LevelLabels)
        if (label.Text == text) return label.Top;
      return -1000;
    };
    auto* automatic = Find("chkAutoLevel");
    EXPECT_TRUE(automatic->isChecked());
    drag(levels, {0, 10});
    QTest::qWait(100);
    EXPECT_FALSE(automatic->isChecked()) << "a hand on the axis takes over";
    scope_->grab();
    ASSERT_GE(Display().Scale().LevelLabels.size(), 3U);
    const std::string middle = Display().Scale().LevelLabels[2].Text;
    const int labelled = yOf(middle);
    EXPECT_EQ(shape(levels), Qt::SizeVerCursor);
    EXPECT_EQ(shape(strip), Qt::PointingHandCursor);
    for (const auto& [from, by] : {std::pair{levels, 40}, {strip, -60}, {levels, 20}}) {
      const int before = yOf(middle);
      drag(from, {0, by});
      EXPECT_NEAR(yOf(middle), before + by, 4);
    }
    EXPECT_NEAR(yOf(middle), labelled, 6) << "there and back";
    EXPECT_TRUE(Find("optZoom0")->isChecked()) << "a drag in the strip is no click";
    const std::string highest = Display().Scale().LevelLabels.front().Text;
    Turn(levels, 120);
    scope_->grab();
    EXPECT_EQ(Display().Scale().LevelLabels.front().Text != highest, card);
    if (card) {
      drag(levels, {0, -4000});
      EXPECT_EQ(Find<QLabel>("lblRef")->text(), "Ref -102 dB");
    } else {
      EXPECT_EQ(program_->Demo().K4()->Radio().Value("#REF"), ownReference);
    }

    QTest::mouseDClick(scope_, Qt::LeftButton, {}, levels);
    EXPECT_TRUE(automatic->isChecked());

    const double leftMHz = Display().Geometry().LeftMHz;
    EXPECT_EQ(shape(frequencies), Qt::ArrowCursor) << "nothing moves at 1X";
    drag(frequencies, {-50, 0});
    EXPECT_EQ(Display().Geometry().LeftMHz, leftMHz);
    QTest::mouseClick(scope_, Qt::LeftButton, {}, strip);
    EXPECT_TRUE(Find("optZoom1")->isChecked());
    const double underMHz = Display().Geometry().FrequencyAt(frequencies.x());
    Turn(frequencies, 120);
    EXPECT_TRUE(Find("optZoom2")->isChecked());
    ASSERT_TRUE(LinesCome(2));
    const double tolerance = Display().Geometry().ShownSpanHz() / 1e6 / 200;
    EXPECT_NEAR(Display().Geometry().FrequencyAt(frequencies.x()), underMHz, tolerance);
    EXPECT_EQ(shape(frequencies), Qt::OpenHandCursor);
    drag(frequencies, {-100, 0});
    EXPECT_NEAR(Display().Geometry().FrequencyAt(frequencies.x() - 100), underMHz, tolerance);
  }
}

TEST_F(Dial, LettersTypedInAListOrASliderAreNotForTheDial) {
  ASSERT_NO_FATAL_FAILURE(Begin("--demo=k4"));
  Find<QWidget>("sldVol1")->setFocus();
  QTest::keyClick(Find<QWidget>("sldVol1"), 'b');
  Turn(PlotAt(14.074), 120);
  EXPECT_TRUE(HearsWithin("FA", 14.074025e6)) << "the wheel still tunes A";
}

// A screen reader speaks the changed name of what has the focus.
TEST_F(Dial, SignalsAreFoundByKeyAndSpoken) {
  ASSERT_NO_FATAL_FAILURE(Begin("--demo=k4"));
  scope_->setFocus();
  QTest::keyClick(scope_, Qt::Key_Right, Qt::ControlModifier);
  const QString first = scope_->accessibleName();
  EXPECT_TRUE(first.endsWith("dBm")) << first.toStdString();
  QTest::keyClick(scope_, Qt::Key_Right, Qt::ControlModifier);
  const QString second = scope_->accessibleName();
  EXPECT_GT(second, first);
  QTest::keyClick(scope_, Qt::Key_Return);
  const double signalHz = second.section(' ', 0, 0).remove('.').toDouble();
  EXPECT_TRUE(HearsWithin("FA", signalHz - 1500, 1.5)) << "USB: into the middle of the filter";
}

TEST_F(Dial, EveryControlIsReachedByTabAndNamed) {
  for (const char* demo : {"--demo=iq", "--demo=k4d", "--demo=icom"}) {
    SCOPED_TRACE(demo);
    Reload({"spectrino", demo});
    program_->Window().resize(1200, 700);
    QTest::qWait(50);
    std::set<QWidget*> reached;
    QWidget* at = program_->Window().nextInFocusChain();
    for (int i = 0; i < 2000 && at != &program_->Window(); ++i, at = at->nextInFocusChain()) {
      if (at->isVisible() && (at->focusPolicy() & Qt::TabFocus) != 0) reached.insert(at);
    }
    int controls = 0;
    for (QWidget* widget : program_->Window().findChildren<QWidget*>()) {
      const bool control = qobject_cast<QAbstractButton*>(widget) != nullptr ||
                           qobject_cast<QSlider*>(widget) != nullptr ||
                           qobject_cast<QComboBox*>(widget) != nullptr || widget->objectName() == "Scope";
      if (!control || !widget->isVisible() || widget->objectName().startsWith("qt_")) continue;
      ++controls;
      EXPECT_TRUE(reached.contains(widget)) << widget->objectName().toStdString();
      QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
      EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty()) << widget->objectName().toStdString();
    }
    EXPECT_GT(controls, 25);
  }
}

}  // namespace
}  // namespace spectrino
