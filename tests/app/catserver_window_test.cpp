// The CAT server as an operator meets it: switched on in Setup, used by a program, seen in the window.
#include <QCheckBox>
#include <QLineEdit>
#include <QTcpServer>
#include <QTcpSocket>

#include "app/WindowBench.h"
#include "settings/ui/frmSetupPan.h"

namespace spectrino {
namespace {

constexpr int kMarginMs = 20000;

int FreePort() {
  QTcpServer probe;
  probe.listen(QHostAddress::LocalHost);
  return probe.serverPort();
}

class CatWindow : public Window {
 protected:
  void SwitchOn(int port) {
    program_->Window().cmdSetup_Click();
    auto* setup = program_->Window().findChild<frmSetupPan*>();
    setup->findChild<QCheckBox*>("chkCatServer")->setChecked(true);
    setup->findChild<QLineEdit*>("txtCatServerPort")->setText(QString::number(port));
    setup->findChild<QPushButton*>("cmdOK")->click();
  }
  [[nodiscard]] QString Ask(QTcpSocket& client, const QByteArray& request) {
    client.write(request);
    QByteArray answer;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
          answer += client.readAll();
          return answer.endsWith('\n');
        },
        kMarginMs))
        << request.toStdString();
    return answer.simplified();
  }
  [[nodiscard]] bool Says(const QString& text) {
    return QTest::qWaitFor([&] { return Find<QLabel>("lblStatus")->text() == text; }, kMarginMs);
  }
};

TEST_F(CatWindow, AProgramTunesBehindAMinimisedWindowAndTheOperatorIsTold) {
  Reload({"spectrino", "--demo=k4"});
  const int port = FreePort();
  SwitchOn(port);
  QTcpSocket client;
  client.connectToHost("127.0.0.1", static_cast<quint16>(port));
  ASSERT_TRUE(QTest::qWaitFor([&] { return client.state() == QTcpSocket::ConnectedState; }, kMarginMs));
  EXPECT_EQ(Ask(client, "f\n"), "RPRT -11") << "no run, no radio";
  Click("StartButton");
  ASSERT_TRUE(LinesCome(3));
  EXPECT_EQ(Ask(client, "F 14076000\n"), "RPRT 0");
  EXPECT_TRUE(Says("window_test set 14.076.000")) << Find<QLabel>("lblStatus")->text().toStdString();
  program_->Window().showMinimized();
  QTest::qWait(0);
  EXPECT_EQ(Ask(client, "F 14077000\n"), "RPRT 0");
  EXPECT_EQ(Ask(client, "f\n"), "14077000");
  EXPECT_EQ(Ask(client, "T 1\n"), "RPRT -9");
  EXPECT_TRUE(Says("window_test wants to transmit: Setup does not allow it"));
  Click("StopButton");
  EXPECT_EQ(Ask(client, "f\n"), "RPRT -11");
}

TEST_F(CatWindow, ATakenPortIsSaidUntilItIsFree) {
  QTcpServer other;
  ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
  const QString port = QString::number(other.serverPort());
  SwitchOn(other.serverPort());
  EXPECT_TRUE(Says("Other programs cannot use the radio: another program serves port " + port));
  other.close();
  EXPECT_TRUE(Says(""));
}

}  // namespace
}  // namespace spectrino
