// The window on a real rigctld with Hamlib's dummy radio: it follows, it tunes, it survives the server's end.
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>

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
    LoadWith(port_);
  }
  void LoadWith(const QString& port) {
    QDir(folder_.path()).mkpath("spectrino");
    QFile settings(folder_.filePath("spectrino/Spectrino.ini"));
    settings.open(QIODevice::WriteOnly);
    settings.write(("[Setup]\nOptFreq=0\nHostEndpoint=127.0.0.1:" + port + "\n").toLocal8Bit());
    settings.close();
    Reload();
  }
  ~Host() override { EndServer(); }

  void StartServer() {
    server_.start("rigctld", {"-m", "1", "-P", "RIG", "-T", "127.0.0.1", "-t", port_});
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

TEST_F(Host, WhoTransmitsBehindItIsShown) {
  ASSERT_NO_FATAL_FAILURE(StartServer());
  Click("optWaterfall2");
  Click("StartButton");
  ASSERT_TRUE(LinesCome(8));
  // The newest rows of the waterfall are dimmed while the radio transmits.
  const auto light = [this] {
    const QImage picture = Find<QWidget>("Scope")->grab().toImage();
    int sum = 0;
    for (int x = 0; x < picture.width(); ++x)
      sum += qGray(picture.pixel(x, program_->Display().Layout().WaterfallTop + 2));
    return sum;
  };
  const int received = light();
  Ask({"T", "1"});
  EXPECT_TRUE(QTest::qWaitFor([&] { return light() < 0.7 * received; }, 8000))
      << light() << " of " << received;
  Ask({"T", "0"});
  EXPECT_TRUE(QTest::qWaitFor([&] { return light() > 0.85 * received; }, 8000))
      << light() << " of " << received;
}

TEST_F(Host, AServerThatAnswersAfterTwoSecondsCostsNoFrame) {
  ASSERT_NO_FATAL_FAILURE(StartServer());
  // Lines in 3 s, and the longest time that the window was deaf in, ms.
  const auto run = [this] {
    Click("StartButton");
    EXPECT_TRUE(LinesCome(3));
    const std::uint64_t before = Lines();
    qint64 longest = 0;
    QElapsedTimer time, gap;
    gap.start();
    for (time.start(); time.elapsed() < 3000; longest = std::max(longest, gap.restart())) QTest::qWait(10);
    return std::pair(static_cast<double>(Lines() - before), longest);
  };
  const double usual = run().first;
  QTcpServer late;
  late.listen(QHostAddress::LocalHost);
  int asked = 0;
  QObject::connect(&late, &QTcpServer::newConnection, &late, [&] {
    QTcpSocket* client = late.nextPendingConnection();
    auto* server = new QTcpSocket(client);
    server->connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port_.toInt()));
    QObject::connect(client, &QTcpSocket::readyRead, server, [=, &asked] {
      server->write(client->readAll());
      ++asked;
    });
    QObject::connect(server, &QTcpSocket::readyRead, client, [=] {
      QTimer::singleShot(2000, client, [=, text = server->readAll()] { client->write(text); });
    });
  });
  LoadWith(QString::number(late.serverPort()));
  const auto [lines, longestMs] = run();
  EXPECT_GT(lines, 0.8 * usual);
  EXPECT_LT(longestMs, 400);
  EXPECT_GT(asked, 0);
  Click("StopButton");
}

}  // namespace
}  // namespace spectrino
