// The window on a real rigctld with Hamlib's dummy radio: it follows, it tunes, it survives the server's end.
#include <QDir>
#include <QLabel>
#include <QProcess>
#include <QTcpServer>

#include "app/WindowBench.h"

namespace spectrino {
namespace {

class Host : public Window {
 protected:
  Host() {
    QTcpServer free;
    free.listen(QHostAddress::LocalHost);
    port_ = QString::number(free.serverPort());
    free.close();
    QDir(folder_.path()).mkpath("spectrino");
    QFile settings(folder_.filePath("spectrino/Spectrino.ini"));
    settings.open(QIODevice::WriteOnly);
    settings.write(("[Setup]\nOptFreq=0\nHostEndpoint=127.0.0.1:" + port_ + "\n").toLocal8Bit());
    settings.close();
    Reload();
  }
  ~Host() override { EndServer(); }

  void StartServer() {
    server_.start("rigctld", {"-m", "1", "-T", "127.0.0.1", "-t", port_});
    ASSERT_TRUE(QTest::qWaitFor([this] { return Ask({"f"}) != ""; }, 10000));
  }
  void EndServer() {
    server_.kill();
    server_.waitForFinished(5000);
  }
  /// What another client of the server reads; it sets as well.
  QString Ask(const QStringList& commands) {
    QProcess client;
    client.start("rigctl", QStringList{"-m", "2", "-r", "127.0.0.1:" + port_} + commands);
    client.waitForFinished(5000);
    return client.exitCode() == 0 ? QString::fromLocal8Bit(client.readAllStandardOutput()).trimmed() : "";
  }
  [[nodiscard]] bool Shows(const char* label, const QString& text) {
    auto* shown = Find<QLabel>(label);
    return QTest::qWaitFor([&] { return (shown->accessibleDescription() + shown->text()).contains(text); },
                           8000);
  }

  QString port_;
  QProcess server_;
};

TEST_F(Host, TheWindowFollowsAndTunesARadioBehindRigctld) {
  ASSERT_NO_FATAL_FAILURE(StartServer());
  Click("StartButton");
  ASSERT_TRUE(LinesCome(3));
  Ask({"F", "14074000", "M", "USB", "2400"});
  EXPECT_TRUE(Shows("lblFreqA", "14.074.000"));
  EXPECT_TRUE(Shows("lblMode", "USB"));

  auto* scope = Find<QWidget>("Scope");
  const PlotLayout& layout = program_->Display().Layout();
  ASSERT_TRUE(LinesCome(3));
  const QPoint at(static_cast<int>(program_->Display().Geometry().FrequencyToPixel(14.081)),
                  layout.TopMargin + layout.PlotHeight / 2);
  const double clickedHz = program_->Display().Geometry().FrequencyAt(at.x()) * 1e6;
  QTest::mouseClick(scope, Qt::LeftButton, {}, at);
  EXPECT_TRUE(QTest::qWaitFor([&] { return std::abs(Ask({"f"}).toDouble() - clickedHz) < 1; }, 5000))
      << Ask({"f"}).toStdString() << " for " << clickedHz;
  // Its filter's upper edge, dragged: the radio has the new width, and the shade is where it says.
  const auto edge = [&] {
    const double mhz = Ask({"f"}).toDouble() / 1e6 + Ask({"m"}).section('\n', 1).toDouble() / 1e6;
    return QPoint(qRound(program_->Display().Geometry().FrequencyToPixel(mhz)), at.y());
  };
  ASSERT_TRUE(QTest::qWaitFor([&] {
    QMouseEvent move(QEvent::MouseMove, edge(), scope->mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(scope, &move);
    return scope->cursor().shape() == Qt::SizeHorCursor;
  }));
  const QPoint from = edge();
  const double widerHz = 20 * program_->Display().Geometry().ShownSpanHz() / layout.PlotWidth;
  QTest::mousePress(scope, Qt::LeftButton, {}, from);
  QMouseEvent move(QEvent::MouseMove, from + QPoint(20, 0), scope->mapToGlobal(from), Qt::NoButton,
                   Qt::LeftButton, {});
  QApplication::sendEvent(scope, &move);
  QTest::mouseRelease(scope, Qt::LeftButton, {}, from + QPoint(20, 0));
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return std::abs(Ask({"m"}).section('\n', 1).toDouble() - 2400 - widerHz) <= 10; }, 5000))
      << Ask({"m"}).toStdString() << " for " << widerHz << " more";
  Click("cmdBand3");
  EXPECT_TRUE(QTest::qWaitFor([&] { return Ask({"f"}) == "7150000"; }, 5000));

  EndServer();
  EXPECT_TRUE(Shows("lblStatus", "is gone"));
  ASSERT_NO_FATAL_FAILURE(StartServer());
  Ask({"F", "21025000"});
  EXPECT_TRUE(Shows("lblFreqA", "21.025.000"));
  EXPECT_TRUE(Find<QLabel>("lblStatus")->text().isEmpty());
}

}  // namespace
}  // namespace spectrino
