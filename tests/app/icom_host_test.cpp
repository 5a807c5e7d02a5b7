// The window on an Icom behind a real rigctld: the radio's own scope lines, with another program beside it.
#include <QDir>
#include <QLabel>
#include <QProcess>
#include <QTcpServer>
#include <QUdpSocket>
#include <chrono>

#include "app/WindowBench.h"
#include "sim/icom/IcomSimCommand.h"
#include "sim/icom/IcomSimPort.h"

namespace spectrino {
namespace {

class IcomHost : public Window {
 protected:
  IcomHost() {
    std::string reason;
    EXPECT_TRUE(radio_.Open(reason)) << reason;
    simulate_.callOnTimeout([this] { radio_.Process(std::chrono::steady_clock::now()); });
    simulate_.start(2);
    FindPorts();
    QDir(folder_.path()).mkpath("spectrino");
    QFile settings(folder_.filePath("spectrino/Spectrino.ini"));
    settings.open(QIODevice::WriteOnly);
    settings.write("[Setup]\nOptFreq=8\nICOM=1\nICCTRL=1\nICADDR=70\nHostEndpoint=127.0.0.1:" +
                   QByteArray::number(port_) + "\n");
    settings.close();
    Reload();
  }
  ~IcomHost() override { EndServer(); }

  /// One for the server, the next for the lines that it publishes.
  void FindPorts() {
    for (int tries = 0; tries < 50; ++tries) {
      QTcpServer free;
      free.listen(QHostAddress::LocalHost);
      port_ = free.serverPort();
      QUdpSocket lines;
      if (port_ < 65535 && lines.bind(QHostAddress::LocalHost, static_cast<quint16>(port_ + 1))) return;
    }
    FAIL() << "no two free ports";
  }
  void StartServer() {
    server_.start("rigctld",
                  {"-m", "3073", "-r", QString::fromStdString(radio_.TerminalPath()), "-s", "115200", "-T",
                   "127.0.0.1", "-t", QString::number(port_), "--multicast-addr=127.0.0.1",
                   "--multicast-port=" + QString::number(port_ + 1), "-C", "async=1"});
    ASSERT_TRUE(QTest::qWaitFor([this] { return Ask({"f"}) != ""; }, 10000));
  }
  void EndServer() {
    server_.kill();
    server_.waitForFinished(5000);
  }
  /// What another client of the server reads; it sets as well. The radio lives on this thread meanwhile.
  QString Ask(const QStringList& commands) {
    QProcess client;
    client.start("rigctl", QStringList{"-m", "2", "-r", "127.0.0.1:" + QString::number(port_)} + commands);
    const bool ended = QTest::qWaitFor([&] { return client.state() == QProcess::NotRunning; }, 5000);
    if (!ended) client.kill();
    return ended && client.exitCode() == 0 ? QString::fromLocal8Bit(client.readAllStandardOutput()).trimmed()
                                           : "";
  }
  [[nodiscard]] bool Shows(const char* label, const QString& text) {
    auto* shown = Find<QLabel>(label);
    return QTest::qWaitFor([&] { return (shown->accessibleDescription() + shown->text()).contains(text); },
                           8000);
  }
  [[nodiscard]] std::int64_t RadioHz() { return radio_.Radio().State().Active().Hz; }
  /// Whether a switch of the radio is on.
  [[nodiscard]] bool IsOn(std::initializer_list<std::uint8_t> command) {
    const auto& settings = radio_.Radio().State().Settings;
    const auto at = settings.find(SimHead(command).Key());
    return at != settings.end() && at->second == SimBytes{1};
  }
  [[nodiscard]] bool ScopeDataOn() { return IsOn({0x27, 0x11}); }

  QTimer simulate_;
  IcomSimPort radio_{IcomSimSetup{}, "", std::chrono::steady_clock::now()};
  int port_ = 0;
  QProcess server_;
};

TEST_F(IcomHost, ItsScopeAndCommandsShareTheRadioWithAnotherProgram) {
  ASSERT_NO_FATAL_FAILURE(StartServer());
  Click("StartButton");
  ASSERT_TRUE(LinesCome(5)) << Find<QLabel>("lblStatus")->text().toStdString() << IsOn({0x27, 0x10})
                            << ScopeDataOn();
  EXPECT_TRUE(Shows("lblFreqA", "14.074.000"));
  const FrameGeometry& geometry = program_->Display().Geometry();
  EXPECT_NEAR(geometry.FrequencyAt(geometry.PlotWidth / 2), 14.074, 0.001);

  Ask({"F", "14100000"});
  EXPECT_TRUE(Shows("lblFreqA", "14.100.000"));
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return std::abs(geometry.FrequencyAt(geometry.PlotWidth / 2) - 14.1) < 0.001; }, 5000))
      << "the lines do not follow";

  const PlotLayout& layout = program_->Display().Layout();
  const QPoint at(static_cast<int>(geometry.FrequencyToPixel(14.15)),
                  layout.TopMargin + layout.PlotHeight / 2);
  const double clickedHz = geometry.FrequencyAt(at.x()) * 1e6;
  QTest::mouseClick(Find<QWidget>("Scope"), Qt::LeftButton, {}, at);
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return std::abs(static_cast<double>(RadioHz()) - clickedHz) < 600; }, 5000))
      << RadioHz() << " for " << clickedHz;
  EXPECT_TRUE(QTest::qWaitFor([&] { return Ask({"f"}).toLongLong() == RadioHz(); }, 5000));

  Click("chkFunc0");
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        return IsOn({0x16, 0x02});
      },
      5000))
      << "the panel's command did not reach the radio";
  EXPECT_TRUE(LinesCome(5));
  EXPECT_TRUE(ScopeDataOn());
  Click("StopButton");
  EXPECT_TRUE(QTest::qWaitFor([&] { return !ScopeDataOn(); }, 5000));
  EXPECT_NE(Ask({"f"}), "");
}

TEST_F(IcomHost, ARadioThatIsSwitchedOffIsAskedAboutAndComesBackWithItsScope) {
  ASSERT_NO_FATAL_FAILURE(StartServer());
  Click("StartButton");
  ASSERT_TRUE(LinesCome(3));
  auto* status = Find<QLabel>("lblStatus");
  QString told;
  radio_.Radio().SwitchPower(false);
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        told += status->text() + '\n';
        return told.contains("silent for 6 s");
      },
      15000))
      << told.toStdString();
  EXPECT_TRUE(told.contains("is it switched on?", Qt::CaseInsensitive)) << told.toStdString();
  EXPECT_FALSE(told.contains("rigctld")) << told.toStdString();
  radio_.Radio().SwitchPower(true);
  EXPECT_TRUE(QTest::qWaitFor([&] { return ScopeDataOn(); }, 20000)) << "its scope stays off";
  EXPECT_TRUE(LinesCome(3));
  EXPECT_TRUE(QTest::qWaitFor([&] { return status->text().isEmpty(); }, 8000))
      << status->text().toStdString();
}

TEST_F(IcomHost, LinesThatStayAwayAreFetchedAndAServerThatEndsIsFollowed) {
  ASSERT_NO_FATAL_FAILURE(StartServer());
  Click("StartButton");
  ASSERT_TRUE(LinesCome(3));
  radio_.Radio().StopScopeData();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !ScopeDataOn(); }, 5000));
  EXPECT_TRUE(LinesCome(3)) << "its scope is not switched on again";

  EndServer();
  EXPECT_TRUE(Shows("lblStatus", "is gone"));
  ASSERT_NO_FATAL_FAILURE(StartServer());
  EXPECT_TRUE(LinesCome(3));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Find<QLabel>("lblStatus")->text().isEmpty(); }, 8000))
      << Find<QLabel>("lblStatus")->text().toStdString();
}

TEST_F(IcomHost, ItsLinesComeBackAfterTheWindowWasAwayAndAfterStop) {
  ASSERT_NO_FATAL_FAILURE(StartServer());
  frmPan& window = program_->Window();
  Click("StartButton");
  ASSERT_TRUE(LinesCome(3));
  window.showMinimized();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !ScopeDataOn(); }, 8000)) << "lines that nobody sees";
  Ask({"F", "14100000"});
  EXPECT_TRUE(Shows("lblFreqA", "14.100.000")) << "the dial is followed all the same";
  window.showNormal();
  EXPECT_TRUE(LinesCome(5)) << "minimised";
  for (const int width : {900, 1100, 800}) {
    window.resize(width, 600);
    QTest::qWait(30);
  }
  EXPECT_TRUE(LinesCome(5)) << "resized";
  for (int round = 0; round < 3; ++round) {
    Click("StopButton");
    Click("StartButton");
    ASSERT_TRUE(LinesCome(3)) << "start " << round << ": " << Find<QLabel>("lblStatus")->text().toStdString();
  }
  EXPECT_TRUE(QTest::qWaitFor([&] { return Find<QLabel>("lblStatus")->text().isEmpty(); }, 8000))
      << Find<QLabel>("lblStatus")->text().toStdString();
}

}  // namespace
}  // namespace spectrino
