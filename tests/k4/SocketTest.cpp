// A socket on the loopback address, and what its handlers may do to it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/qt/QtByteSocket.h"
#include "adapters/qt/QtEventPump.h"
#include "k4/SessionBench.h"

namespace spectrino {
namespace {

using Log = std::vector<std::string>;
using ::testing::ElementsAre;

bool Until(const std::function<bool()>& reached, int limitMs = 3000) {
  QElapsedTimer timer;
  timer.start();
  while (!reached() && timer.elapsed() < limitMs) QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
  return reached();
}

void Pass(int ms) {
  Until([] { return false; }, ms);
}

/// One port of a radio: takes the newest connection, keeps what it is sent.
class Port {
 public:
  Port() {
    server_.listen(QHostAddress::LocalHost);
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
      peer_ = server_.nextPendingConnection();
      QObject::connect(peer_, &QTcpSocket::readyRead, peer_,
                       [this] { Received += peer_->readAll().toStdString(); });
      if (Accepted) Accepted();
    });
  }
  [[nodiscard]] std::uint16_t Number() const { return server_.serverPort(); }
  void Send(std::string_view bytes) {
    peer_->write(bytes.data(), static_cast<qint64>(bytes.size()));
    peer_->flush();
  }
  void Close() { peer_->close(); }
  void StopListening() { server_.close(); }
  [[nodiscard]] bool PeerGone() const { return peer_->state() == QTcpSocket::UnconnectedState; }

  std::function<void()> Accepted;
  std::string Received;

 private:
  QTcpServer server_;
  QTcpSocket* peer_ = nullptr;
};

struct SocketTest : ::testing::Test {
  Port Radio;
  std::unique_ptr<QtByteSocket> Socket = std::make_unique<QtByteSocket>();
  Log Events;
  std::string Reason;

  void Listen() {
    Socket->Connected = [this] { Note("connected"); };
    Socket->Closed = [this] { Note("closed"); };
    Socket->Error = [this](std::string_view text) {
      Reason = text;
      Note("error");
    };
    Socket->DataArrival = [this](std::span<const std::uint8_t> bytes) {
      Note("data " + std::string(bytes.begin(), bytes.end()));
    };
  }
  void Note(std::string event) {
    Events.push_back(std::move(event));
    if (InEvent) InEvent();
  }
  std::function<void()> InEvent;
};

TEST_F(SocketTest, TellsEachEventOnceInOrder) {
  Listen();
  Socket->Send("lost: not connected");
  Socket->Connect("127.0.0.1", Radio.Number());
  Socket->Send("lost: still connecting");
  ASSERT_TRUE(Until([&] { return !Events.empty(); }));
  Socket->Send("ID;");
  ASSERT_TRUE(Until([&] { return Radio.Received == "ID;"; }));
  Radio.Send("ID017;");
  ASSERT_TRUE(Until([&] { return Events.size() == 2; }));
  Radio.Send("last");
  Radio.Close();
  ASSERT_TRUE(Until([&] { return Events.size() == 4; }));
  Socket->Connect("127.0.0.1", Radio.Number());
  ASSERT_TRUE(Until([&] { return Events.size() == 5; }));
  Socket->Send("#DPM0;");
  Socket->Close();
  ASSERT_TRUE(Until([&] { return Radio.PeerGone(); }));
  EXPECT_EQ(Radio.Received, "ID;#DPM0;");
  const std::uint16_t number = Radio.Number();
  Radio.StopListening();
  Socket->Connect("127.0.0.1", number);
  ASSERT_TRUE(Until([&] { return Events.size() == 6; }));
  EXPECT_EQ(Reason, "127.0.0.1 refuses the connection: is it still on?") << "the port was right before";
  Socket->Connect("127.0.0.1", Radio.Number());
  Socket->Close();  // while connecting
  Pass(50);
  EXPECT_THAT(Events, ElementsAre("connected", "data ID017;", "data last", "closed", "connected", "error"));
}

TEST_F(SocketTest, AHandlerMayCloseConnectAnewOrDestroyTheSocket) {
  for (const std::string_view event : {"connected", "data x", "closed", "error"}) {
    for (const std::string_view act : {"close", "connect", "destroy"}) {
      SCOPED_TRACE(std::string(act) + " in " + std::string(event));
      Port radio;
      radio.Accepted = [&] {
        radio.Send("x");
        radio.Close();
      };
      Socket = std::make_unique<QtByteSocket>();
      Listen();
      Events.clear();
      std::size_t before = 0;  // events up to the act
      InEvent = [&] {
        if (before != 0 || Events.back() != event) return;
        before = Events.size();
        if (act == "close") Socket->Close();
        if (act == "connect") Socket->Connect("127.0.0.1", Radio.Number());
        if (act == "destroy") Socket.reset();
      };
      if (event == "error") radio.StopListening();
      Socket->Connect("127.0.0.1", radio.Number());
      ASSERT_TRUE(Until([&] { return before != 0; }));
      if (act == "connect") {
        ASSERT_TRUE(Until([&] { return Events.size() > before; }));
      }
      Pass(30);
      const Log after(Events.begin() + static_cast<std::ptrdiff_t>(before), Events.end());
      EXPECT_EQ(after, act == "connect" ? Log{"connected"} : Log{});
      InEvent = nullptr;
    }
  }
}

TEST_F(SocketTest, WhatArrivesWhileAHandlerTurnsTheEventLoopIsDelivered) {
  Listen();
  bool inside = false;
  InEvent = [&] {
    if (Events.back() != "data a" || inside) return;
    inside = true;
    Radio.Send("b");
    Pass(50);
    Events.push_back("handler done");
  };
  Socket->Connect("127.0.0.1", Radio.Number());
  ASSERT_TRUE(Until([&] { return !Events.empty(); }));
  Radio.Send("a");
  ASSERT_TRUE(Until([&] { return Events.back() == "data b"; }));
  EXPECT_THAT(Events, ElementsAre("connected", "data a", "handler done", "data b"));
}

TEST(K4Sockets, ASessionReachesARadioOnIpv6AndTellsWhyItReachesNone) {
  test::SessionBench bench;
  QtByteSocket cat;
  QtByteSocket pan;
  QtEventPump pump;
  SystemClock time;
  K4Session session({bench.State,
                     cat,
                     pan,
                     bench.Store,
                     bench.View,
                     bench.Retry,
                     bench.User,
                     pump,
                     time,
                     [](auto&) {},
                     {}});
  bench.Setting("TCPTimeOut", "400");
  const auto failure = [&](const char* address, std::uint16_t port) {
    bench.Setting("K4TCP", address);
    bench.Setting("K4CATPORT", std::to_string(port));
    bench.Setting("K4PANPORT", std::to_string(port));
    const std::string message = session.Start().Message;
    session.Stop();
    return message;
  };
  const std::string begin = "TCP ERROR - HOST = ";
  EXPECT_EQ(
      failure("127.0.0.1", 9),
      begin + "127.0.0.1 PORTPAN = 9 PORTCAT = 9: 127.0.0.1 refuses the connection: is the port right?");
  EXPECT_THAT(failure("no-such-radio.invalid", 9),
              ::testing::AnyOf(::testing::EndsWith(": the name no-such-radio.invalid is not known"),
                               ::testing::HasSubstr("no answer within")));

  QTcpServer radio;
  if (!radio.listen(QHostAddress::LocalHostIPv6)) GTEST_SKIP() << "no IPv6 on this machine";
  for (const char* address : {"::1", "[::1]:4532"})
    EXPECT_EQ(failure(address, radio.serverPort()), "") << address;
}

}  // namespace
}  // namespace spectrino
