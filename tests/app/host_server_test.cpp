// The server that the program runs itself, with a real rigctld.
#include "app/HostServer.h"

#include <gmock/gmock.h>
#include <signal.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include "app/ServerProbe.h"
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
  EXPECT_EQ(server_.Trouble(), "rigctld ended");
  Until("it is back", [&] { return Answers(); });
  Until("nothing is wrong", [&] { return server_.Trouble().empty(); });
  EXPECT_TRUE(server_.ServesAt("127.0.0.1", port_));
  server_.Serve(std::nullopt);
  Until("it went", [&] { return server_.ProcessId() == 0; });
  EXPECT_FALSE(Answers());
}

TEST_F(HostServerTest, ItsLastWordsStayUntilItServes) {
  server_.Serve(HostServerTask{.Model = 999999, .Port = port_});
  Until("it ended", [&] { return server_.Health().State == LinkState::Lost; });
  Until("it is tried again", [&] { return server_.Health().State != LinkState::Lost; });
  EXPECT_THAT(server_.Trouble(), HasSubstr("rigctld ended: Unknown rig num 999999"));
  Until("it ended again", [&] { return server_.Health().State == LinkState::Lost; });
  EXPECT_THAT(user_.Logged, ElementsAre(HasSubstr("Unknown rig num 999999"))) << "once";
  server_.Serve(HostServerTask{.Model = 1, .Port = port_});
  EXPECT_EQ(server_.Trouble(), "");
}

// The window asks it to go; nobody waits for that.
TEST_F(HostServerTest, OneThatDoesNotGoIsMadeToAndTheNextWaitsForIt) {
  QTemporaryDir folder;
  QFile script(folder.filePath("stubborn"));
  ASSERT_TRUE(script.open(QIODevice::WriteOnly));
  script.write("#!/bin/sh\ntrap '' TERM\necho ready > ${0%/*}/ready\nwhile :; do sleep 0.05; done\n");
  script.close();
  script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  HostServer stubborn(user_, clock_, script.fileName());
  stubborn.Serve(HostServerTask{.Model = 1, .Port = port_});
  Until("it runs", [&] { return QFile::exists(folder.filePath("ready")); });
  const auto first = static_cast<pid_t>(stubborn.ProcessId());
  QElapsedTimer time;
  time.start();
  stubborn.Serve(HostServerTask{.Model = 2, .Port = port_});
  EXPECT_LT(time.elapsed(), 200);
  EXPECT_EQ(stubborn.ProcessId(), first);
  Until("the next runs", [&] { return stubborn.ProcessId() != first && stubborn.ProcessId() != 0; });
  EXPECT_NE(kill(first, 0), 0);
}

TEST_F(HostServerTest, AProbeTellsWhoHasAPort) {
  QTcpServer silent;
  silent.listen(QHostAddress::LocalHost);
  server_.Serve(HostServerTask{.Model = 1, .Port = port_});
  Until("it answers", [&] { return Answers(); });
  QObject context;
  for (const auto& [port, holder] : {std::pair{FreePort(), PortHolder::Nobody},
                                     {port_, PortHolder::CatServer},
                                     {static_cast<int>(silent.serverPort()), PortHolder::Another}}) {
    std::optional<PortHolder> found;
    AskPort("localhost", port, &context, [&](PortHolder who) { found = who; });
    EXPECT_FALSE(found) << "never within the call";
    Until("an answer", [&] { return found.has_value(); });
    EXPECT_EQ(found, holder) << port;
  }
  for (const char* here : {"localhost", "LOCALHOST", "127.0.0.1", "127.9.8.7", "::1"})
    EXPECT_TRUE(IsThisMachine(here)) << here;
  for (const char* elsewhere : {"shack", "192.168.1.7", "::2", "127", ""})
    EXPECT_FALSE(IsThisMachine(elsewhere)) << elsewhere;
}

TEST_F(HostServerTest, LeavesAPortToWhoHasIt) {
  QTcpServer other;
  other.listen(QHostAddress::LocalHost, static_cast<quint16>(port_));
  server_.Serve(HostServerTask{.Model = 1, .Port = port_});
  EXPECT_THAT(server_.Health().Why, HasSubstr("another program"));
  EXPECT_EQ(server_.Trouble(), "");
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
