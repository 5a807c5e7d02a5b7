// A walk of clicks, wheel notches and retunes over a running K4: what stands on the screen is what a full
// repaint would draw. SPECTRINO_WALK_SECONDS makes it as long as wanted.
#include <QImage>
#include <QScreen>
#include <QWheelEvent>
#include <algorithm>
#include <random>

#include "app/WindowBench.h"

namespace spectrino {
namespace {

constexpr int kUsualSeconds = 4;
constexpr int kLooks = 12;

class Walk : public Window {
 protected:
  /// Pixels of the plot that are not what a repaint draws.
  QImage Wrong() {
    QWidget* scope = Find<QWidget>("Scope");
    const QPoint at = scope->mapTo(&program_->Window(), QPoint());
    const QImage shown =
        program_->Window()
            .screen()
            ->grabWindow(program_->Window().winId(), at.x(), at.y(), scope->width(), scope->height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    const QImage meant = scope->grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(shown.size(), meant.size());
    QImage wrong(meant.size(), QImage::Format_RGB32);
    for (int y = 0; y < meant.height(); ++y)
      for (int x = 0; x < meant.width(); ++x)
        wrong.setPixel(x, y, shown.pixel(x, y) == meant.pixel(x, y) ? 0 : 1);
    return wrong;
  }
  /// What is wrong in look after look; a line that came between two of them is gone by the next.
  int Ghosts() {
    QImage always;
    int left = 0;
    for (int look = 0; look < kLooks; ++look) {
      QTest::qWait(40);
      const QImage wrong = Wrong();
      if (look == 0) always = wrong;
      left = 0;
      for (int y = 0; y < always.height(); ++y)
        for (int x = 0; x < always.width(); ++x) {
          always.setPixel(x, y, always.pixel(x, y) & wrong.pixel(x, y) & 1);
          left += static_cast<int>(always.pixel(x, y) & 1);
        }
      if (left == 0) return 0;
    }
    return left;
  }
  void Act(int what, QPoint at) {
    auto* scope = Find<QWidget>("Scope");
    const auto turn = [&](int notches, Qt::KeyboardModifiers keys) {
      QWheelEvent wheel(at, scope->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, keys,
                        Qt::NoScrollPhase, false);
      QApplication::sendEvent(scope, &wheel);
    };
    switch (what) {
      case 0:
        QTest::mouseClick(scope, Qt::LeftButton, {}, at);
        break;
      case 1:
        QTest::mouseClick(scope, Qt::RightButton, {}, at);
        break;
      case 2:
        turn(1, {});
        break;
      case 3:
        turn(-3, {});
        break;
      case 4:
        turn(1, Qt::ControlModifier);
        break;
      case 5:
        turn(-1, Qt::ControlModifier);
        break;
      case 6: {
        const auto hertz = static_cast<int>(14.02e6 + 100.0 * at.x());
        EXPECT_EQ(
            program_->Demo().K4()->Radio().Answer("FA" + std::to_string(100000000000 + hertz).substr(1), 0),
            "");
        break;
      }
      default:
        QTest::mouseMove(scope, at);
    }
  }
};

TEST_F(Walk, LeavesNothingBehindOnThePlot) {
  Reload({"spectrino", "--demo=k4"});
  Click("StartButton");
  ASSERT_TRUE(LinesCome(5));
  bool given = false;
  const int wanted = qEnvironmentVariableIntValue("SPECTRINO_WALK_SECONDS", &given);
  std::mt19937 random(7);
  int steps = 0, ghosts = 0;
  for (QElapsedTimer time; ghosts == 0; ++steps) {
    if (!time.isValid()) time.start();
    if (time.elapsed() > 1000 * (given ? wanted : kUsualSeconds)) break;
    const QSize size = Find<QWidget>("Scope")->size();
    Act(static_cast<int>(random() % 8), {static_cast<int>(random() % static_cast<unsigned>(size.width())),
                                         static_cast<int>(random() % static_cast<unsigned>(size.height()))});
    ghosts = Ghosts();
  }
  EXPECT_EQ(ghosts, 0) << "after " << steps << " steps";
  RecordProperty("steps", steps);
}

}  // namespace
}  // namespace spectrino
