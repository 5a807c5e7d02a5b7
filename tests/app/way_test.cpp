// The window where the lines come one way and the frequency another, and where the way is chosen: a simulated
// K4, the real bridge on a bus of its own, a real rigctld.
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>

#include "app/HostServer.h"
#include "app/WindowBench.h"
#include "display/ui/HeaderPanel.h"

namespace spectrino {
namespace {

class Ways : public Window {
 protected:
  static void SetUpTestSuite() {
    bus_ = new QProcess;
    bus_->start("dbus-daemon", {"--session", "--print-address=1", "--nofork"});
    while (!bus_->canReadLine() && bus_->waitForReadyRead(10'000)) {
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus_->readLine().trimmed());
  }
  static void TearDownTestSuite() {
    bus_->kill();
    bus_->waitForFinished();
    delete bus_;
  }
  Ways() {
    EXPECT_TRUE(k4_.Start());
    QTcpServer free;
    free.listen(QHostAddress::LocalHost);
    port_ = free.serverPort();
  }
  void StartBridge() {
    bridge_.start(BRIDGE_PROGRAM, QStringList());
    while (!bridge_.canReadLine() && bridge_.waitForReadyRead(10'000)) {
    }
    watch_.start("gdbus", {"monitor", "--session", "-d", "org.spectrino.Bridge"});
    ASSERT_TRUE(watch_.waitForReadyRead(10'000));
    QProcess::execute(
        "gdbus", {"call", "--session", "-d", "org.spectrino.Bridge", "-o", "/org/spectrino/Bridge", "-m",
                  "org.freedesktop.DBus.Properties.Set", "org.spectrino.Bridge1", "VfoAHz", "<'14076000'>"});
  }
  ~Ways() override {
    for (QProcess* process : {&watch_, &bridge_}) {
      process->kill();
      process->waitForFinished(5000);
    }
  }
  void Write(const char* file, const QByteArray& text) {
    QDir(folder_.path()).mkpath("spectrino");
    QFile ini(folder_.filePath(QString("spectrino/%1.ini").arg(file)));
    EXPECT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write(text);
  }
  /// The K4 as source of lines, and what else the set-up says.
  void Begin(int control, const QByteArray& more = {}) {
    Write("Spectrino", "[Setup]\nK4=1\nOptFreq=" + QByteArray::number(control) +
                           "\nK4TCP=127.0.0.1\nK4CATPORT=" + QByteArray::number(k4_.CatPort()) +
                           "\nK4PANPORT=" + QByteArray::number(k4_.PanPort()) + "\n" + more);
    Reload();
    program_->Window().resize(1000, 600);
  }
  [[nodiscard]] bool Shows(const char* label, const QString& text) {
    auto* shown = Find<QLabel>(label);
    return QTest::qWaitFor([&] { return (shown->accessibleDescription() + shown->text()).contains(text); },
                           8000);
  }
  void ChooseSource(const QString& name) {
    auto* list = Find<QComboBox>("DevicesBox");
    const int index = list->findText(name);
    ASSERT_GE(index, 0) << qPrintable(name);
    emit list->activated(index);
  }
  [[nodiscard]] bool AServerAnswers() const {
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port_));
    return socket.waitForConnected(200);
  }

  static inline QProcess* bus_ = nullptr;
  K4SimServer k4_{K4SimServer::Options{.Faults = {}}};
  QProcess bridge_;
  QProcess watch_;
  int port_ = 0;
};

TEST_F(Ways, AK4KeepsItsPictureWhileAnotherProgramHasTheDial) {
  StartBridge();
  Begin(7);
  Click("StartButton");
  ASSERT_TRUE(LinesCome(8));
  const double spanHz = program_->Display().Geometry().ShownSpanHz();
  for (const int control : {3, 4, 5, 6}) {
    SCOPED_TRACE(control);
    Write("LP-Bridge", "[PAN]\nMD=2\nFA=14076000\n");
    Write("Ketrel", "[PAN]\nMD=2\nFA=14.076\n");
    Begin(control);
    Click("StartButton");
    ASSERT_TRUE(LinesCome(8)) << qPrintable(Find<QLabel>("lblStatus")->text());
    EXPECT_TRUE(Shows("lblFreqA", "14.076.000"));
    EXPECT_TRUE(Find<QWidget>("K4Panel")->isVisible());
    const FrameGeometry& geometry = program_->Display().Geometry();
    EXPECT_EQ(geometry.ShownSpanHz(), spanHz);
    EXPECT_NEAR(geometry.FrequencyAt(geometry.PlotWidth / 2), 14.074, 0.06) << "where the K4 is";

    const double before = k4_.Radio().HertzOf("FA");
    const PlotLayout& layout = program_->Display().Layout();
    const QPoint at(static_cast<int>(geometry.FrequencyToPixel(14.081)),
                    layout.TopMargin + layout.PlotHeight / 2);
    QTest::mouseClick(Find<QWidget>("Scope"), Qt::LeftButton, {}, at);
    QByteArray heard;
    const auto told = [&] {
      if (control <= 4) return (heard += watch_.readAll()).contains("FA0001408");
      QFile section(folder_.filePath("spectrino/Ketrel.ini"));
      return section.open(QIODevice::ReadOnly) && (heard = section.readAll()).contains("RXFreq=14.08");
    };
    EXPECT_TRUE(QTest::qWaitFor(told, 5000)) << heard.toStdString();
    EXPECT_EQ(k4_.Radio().HertzOf("FA"), before);
  }
}

// As after the dialog's OK: the server that the settings ask for runs, and only as long.
TEST_F(Ways, ASourceFromTheWindowsListBringsItsServer) {
  const QByteArray host = "RigModel=1\nHostEndpoint=localhost:" + QByteArray::number(port_) + "\n";
  Begin(7, host);
  EXPECT_FALSE(AServerAnswers());
  ASSERT_NO_FATAL_FAILURE(ChooseSource("Demo signal (no hardware)"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return AServerAnswers(); }, 10000));
  ASSERT_NO_FATAL_FAILURE(ChooseSource("K4"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !AServerAnswers(); }, 10000));
}

TEST_F(Ways, TheLastWordsOfItsServerOutliveStart) {
  Begin(0, "RigModel=999999\nHostEndpoint=127.0.0.1:" + QByteArray::number(port_) + "\n");
  EXPECT_TRUE(Shows("lblStatus", "rigctld ended: Unknown rig num 999999"));
  Click("StartButton");
  ASSERT_TRUE(LinesCome(3));
  EXPECT_TRUE(Shows("lblStatus", "rigctld ended: Unknown rig num 999999"));
}

TEST_F(Ways, ACancelledSetupLeavesTheBridgeToTheNextStart) {
  StartBridge();
  Write("LP-Bridge", "[PAN]\nMD=2\nFT=1\n");
  Begin(3);
  Click("cmdSetup");
  auto* dialog = program_->Window().findChild<QDialog*>("frmSetupPan");
  ASSERT_NE(dialog, nullptr);
  auto* control = dialog->findChild<QComboBox*>("cboControl");
  control->setCurrentIndex(control->findText("Ketrel"));
  QTest::mouseClick(dialog->findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
  EXPECT_EQ(Find<QLabel>("lblFreqA")->accessibleDescription(), "---------");
  Click("StartButton");
  ASSERT_TRUE(LinesCome(3));
  EXPECT_TRUE(Shows("lblFreqA", "14.076.000"));
  bridge_.kill();
  EXPECT_TRUE(Shows("lblStatus", "the bridge was ended"));
  EXPECT_EQ(Find<QLabel>("lblFreqA")->accessibleDescription(), "---------");
}

}  // namespace
}  // namespace spectrino
