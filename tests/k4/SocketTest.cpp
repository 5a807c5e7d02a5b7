// The session over real sockets on the loopback address, and what a socket's handlers may do to it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>

#include "k4/K4Link.h"
#include "k4/PanFrames.h"
#include "k4/PanStream.h"
#include "k4/SessionBench.h"
#include "platform/qt/QtByteSocket.h"
#include "platform/qt/QtEventPump.h"

namespace spectrino {
namespace {

using test::Log;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using namespace std::chrono_literals;

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
  void Send(const test::Bytes& bytes) { Send({reinterpret_cast<const char*>(bytes.data()), bytes.size()}); }
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

  void Listen() {
    Socket->Connected = [this] { Note("connected"); };
    Socket->Closed = [this] { Note("closed"); };
    Socket->Error = [this](std::string_view) { Note("error"); };
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
  Radio.StopListening();
  Socket->Connect("127.0.0.1", Radio.Number());
  ASSERT_TRUE(Until([&] { return Events.size() == 6; }));
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

/// A session on real sockets, with the rest of its surroundings scripted.
struct RealSession : ::testing::Test {
  test::SessionBench Bench;
  Port Cat, Pan;
  QtByteSocket WSCat, WSPan;
  QtEventPump Pump;
  SystemClock Time;
  std::string Replies;
  K4Session Session{{Bench.State, WSCat, WSPan, Bench.Store, Bench.View, Bench.Retry, Bench.User, Pump, Time,
                     [this](std::string& buffer) {
                       for (std::size_t end; (end = buffer.find(';')) != std::string::npos;) {
                         Replies += "[" + buffer.substr(0, end) + "]";
                         buffer.erase(0, end + 1);
                       }
                     },
                     [](int) {}}};
  K4Link Link{Bench.State, Session, Bench.User, Time};
  RadioState Radio;
  SpectrumLine Line;

  void SetUp() override {
    Bench.Setting("K4TCP", "127.0.0.1");
    Bench.Setting("K4CATPORT", std::to_string(Cat.Number()));
    Bench.Setting("K4PANPORT", std::to_string(Pan.Number()));
    Bench.Setting("TCPTimeOut", "250");
    Bench.State.PanScaleDb = 70;
    Bench.State.PanSpanMHz = 0.1;
  }
};

TEST_F(RealSession, RepliesAndFramesInPiecesOfAnySizeBecomeStateAndLines) {
  ASSERT_TRUE(Link.Open(Radio));
  const std::string replies = "ID017;FA00014074000;MD2;";
  const test::Bytes frame = test::PanFrame();
  for (const std::size_t piece : {1U, 7U, 4161U, 4163U}) {
    SCOPED_TRACE(piece);
    Replies.clear();
    for (std::size_t at = 0; at < replies.size(); at += piece) {
      Cat.Send(std::string_view(replies).substr(at, piece));
      Pass(1);
    }
    test::Bytes stream;
    for (int i = 0; i < 3; ++i) stream = test::operator+(stream, frame);
    const std::uint64_t serial = Bench.State.K4PanChannels[kPanMain].Serial;
    // In pieces of a byte only the heads: each piece may be a packet.
    for (std::size_t at = 0, size = 0; at < stream.size(); at += size) {
      size = std::min(piece > 1 || at % kPanFrameBytes < 64 ? piece : 1366, stream.size() - at);
      Pan.Send({stream.begin() + static_cast<std::ptrdiff_t>(at),
                stream.begin() + static_cast<std::ptrdiff_t>(at + size)});
      QCoreApplication::processEvents();
    }
    EXPECT_TRUE(Until([&] { return Replies == "[ID017][FA00014074000][MD2]"; })) << Replies;
    EXPECT_TRUE(Until([&] { return Bench.State.K4PanChannels[kPanMain].Serial > serial; }));
    Pass(20);
    ASSERT_EQ(Link.Poll({}, Line), PollResult::Line);
    EXPECT_EQ(Line.PointCount, 2048);
    EXPECT_THAT(std::span(Line.Levels).subspan(1), ::testing::Each(-120));
  }
  EXPECT_EQ(Cat.Received.substr(0, 15), "ID;ME0005;AI5;K");
  EXPECT_EQ(Pan.Received, "PING\r\nA1\r\nB0\r\nY1\r\nZ0\r\n");
  Session.Stop();
  EXPECT_TRUE(Until([&] { return Cat.PeerGone() && Pan.PeerGone(); }));
}

TEST_F(RealSession, OneOpenPortIsEnoughButNotNone) {
  Pan.StopListening();
  EXPECT_TRUE(Link.Open(Radio));
  EXPECT_THAT(Bench.User.Statuses, ElementsAre(HasSubstr("Connected to"), HasSubstr("panadapter port")));
  Cat.StopListening();
  EXPECT_FALSE(Link.Open(Radio));
  EXPECT_THAT(Bench.Retry.Shown, ::testing::SizeIs(1));
  EXPECT_THAT(Bench.User.Messages,
              ElementsAre(HasSubstr("Spectrino|TCP ERROR - HOST = 127.0.0.1 PORTPAN = ")));
}

TEST_F(RealSession, ARadioThatHangsUpInsideAFrameIsTold) {
  ASSERT_TRUE(Link.Open(Radio));
  const test::Bytes frame = test::PanFrame();
  Pan.Send({frame.begin(), frame.begin() + 3000});
  Pan.Close();
  ASSERT_TRUE(Until([&] { return !Bench.State.K4Connected; }));
  EXPECT_THAT(Bench.User.Statuses.back(), HasSubstr("lost"));
  EXPECT_EQ(Link.Poll({}, Line), PollResult::Pending);
}

}  // namespace
}  // namespace spectrino

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  QCoreApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
