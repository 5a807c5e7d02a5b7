// The waterfall's past and its picture, with the hand on the real window.
#include <QFileDialog>
#include <QImage>
#include <QMenu>
#include <QRegularExpression>
#include <QWheelEvent>
#include <set>

#include "WindowBench.h"

namespace spectrino {
namespace {

struct Past : Window {
  void Begin() {
    Reload({"spectrino", "--demo=iq"});
    Click("optWaterfall1");
    program_->Window().StartButton_Click();
    scope_ = Find<QWidget>("Scope");
    program_->Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&program_->Window()));
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return Waterfall().RowCount() > 0 && Waterfall().RowCount() == Waterfall().Height(); },
        20000));
    ASSERT_TRUE(LinesCome(12));
    scope_->setFocus();
  }
  const WaterfallImage& Waterfall() { return program_->Display().Waterfall(); }
  [[nodiscard]] bool Live() { return program_->Display().Past().Live(); }
  [[nodiscard]] QPoint Column() {
    const PlotLayout& layout = program_->Display().Layout();
    return {layout.PlotWidth + layout.LabelMargin / 2, layout.WaterfallTop + layout.WaterfallHeight / 2};
  }
  void Turn(QPoint at, int delta) {
    QWheelEvent event(at, scope_->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(scope_, &event);
  }
  [[nodiscard]] QImage Shown() {
    const PlotLayout& layout = program_->Display().Layout();
    QImage image(layout.PlotWidth, layout.WaterfallHeight, QImage::Format_RGB32);
    QPainter painter(&image);
    Waterfall().Draw(painter, 0, 0);
    return image;
  }
  QWidget* scope_ = nullptr;
};

TEST_F(Past, IsReachedByWheelAndKeysAndLeftAgain) {
  ASSERT_NO_FATAL_FAILURE(Begin());
  QTest::mouseMove(scope_, Column());
  EXPECT_EQ(scope_->cursor().shape(), Qt::SizeVerCursor);
  Turn(Column(), -240);
  ASSERT_FALSE(Live());
  const QImage then = Shown();
  ASSERT_TRUE(LinesCome(5));
  EXPECT_EQ(Shown(), then) << "it stands while lines come";
  scope_->grab();
  const PlotLayout& layout = program_->Display().Layout();
  const QPoint label(layout.PlotWidth / 2, layout.WaterfallTop + layout.WaterfallHeight / 2);
  ASSERT_TRUE(program_->Display().Past().OnLabel(label));
  QTest::mouseMove(scope_, label);
  EXPECT_EQ(scope_->cursor().shape(), Qt::PointingHandCursor);
  QTest::mouseClick(scope_, Qt::LeftButton, Qt::NoModifier, label);
  EXPECT_TRUE(Live());
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Escape}) {
    QTest::keyClick(scope_, Qt::Key_PageDown);
    EXPECT_FALSE(Live());
    QTest::keyClick(scope_, key);
    EXPECT_TRUE(Live());
    EXPECT_FALSE(program_->Window().isFullScreen());
  }
  QTest::keyClick(scope_, Qt::Key_PageDown);
  QTest::keyClick(scope_, Qt::Key_PageUp);
  EXPECT_TRUE(Live());
}

TEST_F(Past, IsSavedAsAPictureOrSaysWhyNot) {
  ASSERT_NO_FATAL_FAILURE(Begin());
  QTest::mouseClick(scope_, Qt::RightButton, Qt::NoModifier, Column());
  auto* menu = scope_->findChild<QMenu*>("mnuPast");
  ASSERT_NE(menu, nullptr);
  menu->actions().front()->trigger();
  menu->close();
  auto* dialog = program_->Window().findChild<QFileDialog*>("dlgPicture");
  ASSERT_NE(dialog, nullptr);
  const QString proposed = QFileInfo(dialog->selectedFiles().value(0)).fileName();
  EXPECT_TRUE(proposed.contains(QRegularExpression("^waterfall-20\\d\\d-\\d\\d-\\d\\d-\\d{6}Z.*\\.png$")))
      << proposed.toStdString();
  const QString path = folder_.filePath("band.png");
  testing::internal::CaptureStderr();
  emit dialog->fileSelected(folder_.filePath("nowhere/band.png"));
  emit dialog->fileSelected(path);
  const auto* status = Find<StatusLine>("lblStatus");
  const bool saved = QTest::qWaitFor([&] { return status->text().contains(path); }, 10000);
  const std::string told = testing::internal::GetCapturedStderr();
  ASSERT_TRUE(saved) << status->text().toStdString();
  EXPECT_NE(told.find("nowhere/band.png: No such file"), std::string::npos) << told;
  EXPECT_NE(told.find("in another folder"), std::string::npos) << told;
  const QImage picture(path);
  const PlotLayout& layout = program_->Display().Layout();
  EXPECT_EQ(picture.width(), layout.Width);
  EXPECT_GT(picture.height(), layout.Height) << "a caption above it";
  std::set<QRgb> colours;
  for (int x = 0; x < layout.PlotWidth; ++x)
    colours.insert(picture.pixel(x, picture.height() - layout.WaterfallHeight / 2));
  EXPECT_GT(colours.size(), 15U) << "the waterfall";
  dialog->close();
}

}  // namespace
}  // namespace spectrino
