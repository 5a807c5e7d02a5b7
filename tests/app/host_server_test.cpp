// The server that the program runs itself, with a real rigctld.
#include "app/HostServer.h"

#include <gmock/gmock.h>
#include <signal.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>

#include "fakes/Recorders.h"
#include "settings/RigList.h"

namespace spectrino {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

void Until(const char* what, const std::function<bool()>& isSo) {
  QElapsedTimer time;
  bool so = false;
  for (time.start(); !(so = isSo()) && time.elapsed() < 20'000;)
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
  EXPECT_TRUE(so) << what;
}

class HostServerTest : public ::testing::Test {
 protected:
  static int FreePort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
  }
  [[nodiscard]] bool Answers() const {
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port_));
    if (!socket.waitForConnected(200)) return false;
    socket.write("+f\n");
    return socket.waitForReadyRead(2000) && socket.readAll().contains("get_freq");
  }

  const int port_ = FreePort();
  RecordingNotifier user_;
  SystemClock clock_;
  HostServer server_{user_, clock_};
};

TEST_F(HostServerTest, ServesComesBackAndGoes) {
  server_.Serve(HostServerTask{.Model = 1, .Port = port_});
  Until("it answers", [&] { return Answers(); });
  ASSERT_EQ(kill(static_cast<pid_t>(server_.ProcessId()), SIGKILL), 0);
  Until("it is gone", [&] { return server_.Health().State == LinkState::Lost; });
  Until("it is back", [&] { return Answers(); });
  server_.Serve(std::nullopt);
  EXPECT_FALSE(Answers());
}

TEST_F(HostServerTest, TellsItsLastWordsOnce) {
  server_.Serve(HostServerTask{.Model = 999999, .Port = port_});
  Until("it ended", [&] { return server_.Health().State == LinkState::Lost; });
  Until("it is tried again", [&] { return server_.Health().State != LinkState::Lost; });
  Until("it ended again", [&] { return server_.Health().State == LinkState::Lost; });
  EXPECT_THAT(user_.Statuses, ElementsAre(HasSubstr("rigctld ended: Unknown rig num 999999")));
}

TEST_F(HostServerTest, LeavesAPortToWhoHasIt) {
  QTcpServer other;
  other.listen(QHostAddress::LocalHost, static_cast<quint16>(port_));
  server_.Serve(HostServerTask{.Model = 1, .Port = port_});
  EXPECT_THAT(server_.Health().Why, HasSubstr("another program"));
  EXPECT_THAT(user_.Statuses, IsEmpty());
  other.close();
  Until("it serves now", [&] { return Answers(); });
}

TEST(HostServerModels, AreWhatTheServerItselfLists) {
  std::string list;
  AskRigctlList([&](const std::string& text) { list = text; });
  Until("the list", [&] { return !list.empty(); });
  EXPECT_THAT(ReadRigList(list), Contains(RigModel{3073, "Icom IC-7300"}));
  EXPECT_THAT(ReadRigList(list), Contains(RigModel{1, "Hamlib Dummy"}));
  EXPECT_THAT(ReadRigList("no heading\n 1 a b\n"), IsEmpty());
  EXPECT_THAT(
      ReadRigList(" Rig #  Mfg  Model  Version\n 7\n x9    A    B\n -2    A    B\n     8  A    B C    1.0"),
      ElementsAre(RigModel{8, "A B C"}));
}

}  // namespace
}  // namespace spectrino
