// Programs that come, do something and go, well-behaved or not.
#include "catserver/CatServer.h"

#include <gtest/gtest.h>

#include <vector>

#include "catserver/CatBench.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

struct Peer {
  std::string Heard;
  std::size_t Unread = 0;
  bool Reads = true, There = true;
  ByteSocket* Socket = nullptr;
};

struct PeerSocket final : ByteSocket {
  explicit PeerSocket(Peer& peer) : At(peer) { At.Socket = this; }
  ~PeerSocket() override { At.There = false; }
  void Connect(const std::string&, std::uint16_t) override {}
  void Close() override {}
  void Send(std::string_view bytes) override {
    At.Heard += bytes;
    if (!At.Reads) At.Unread += bytes.size();
  }
  [[nodiscard]] std::size_t Unsent() const override { return At.Unread; }
  Peer& At;
};

struct FakeListener final : ServerSocket {
  std::string Listen(const std::string& address, std::uint16_t port) override {
    Asked.push_back(address + ":" + std::to_string(port));
    return Problem;
  }
  void Close() override {}
  std::vector<std::string> Asked;
  std::string Problem;
};

struct FakeTerminal final : PseudoTerminal {
  std::string Open() override {
    Is = true;
    return {};
  }
  void Close() override { Is = false; }
  [[nodiscard]] bool IsOpen() const override { return Is; }
  [[nodiscard]] std::string Path() const override { return "/dev/pts/0"; }
  void Write(std::string_view bytes) override { Heard += bytes; }
  bool Is = false;
  std::string Heard;
};

struct Serving : testing::Test {
  Serving() {
    Server.Told = [this](const std::string& text) { Told.push_back(text); };
    Server.Serve({.Socket = true, .Terminal = true});
  }
  Peer& Come() {
    Peer& peer = Peers.emplace_back();
    Listener.Accepted({.Socket = std::make_unique<PeerSocket>(peer),
                       .Address = "127.0.0.1",
                       .Port = static_cast<std::uint16_t>(40000 + Peers.size())});
    return peer;
  }
  static void Say(const Peer& peer, std::string_view text) { peer.Socket->DataArrival(BytesOf(text)); }

  CatBench Bench;
  FakeListener Listener;
  FakeTerminal Terminal;
  std::list<Peer> Peers;
  std::vector<std::string> Told;
  CatServer Server{{Listener, Terminal, Bench.State, Bench.Clock}};
};

TEST_F(Serving, SixteenAreServedAndOneThatGoesMakesRoom) {
  for (int i = 0; i < 100; ++i) Come();
  EXPECT_EQ(Server.Clients(), 16u);
  EXPECT_FALSE(Peers.back().There);
  Say(Peers.front(), "f\n");
  EXPECT_EQ(Peers.front().Heard, "14074000\n");
  Peers.front().Socket->Closed();
  EXPECT_FALSE(Peers.front().There);
  Say(Come(), "f\n");
  EXPECT_EQ(Peers.back().Heard, "14074000\n");
  Server.Serve({.Socket = true, .Port = 4600});
  EXPECT_EQ(Server.Clients(), 0u) << "another port: nobody stays behind at the old one";
  EXPECT_FALSE(Terminal.Is);
}

TEST_F(Serving, OneThatNeverReadsIsDroppedAndTheOthersGoOn) {
  Peer& deaf = Come();
  Peer& other = Come();
  deaf.Reads = false;
  std::string asks;
  for (int i = 0; i < 500; ++i) asks += "\\dump_state\n";
  Say(deaf, asks.substr(0, 8000));
  EXPECT_FALSE(deaf.There);
  EXPECT_LT(deaf.Unread, 66000u);
  Peer& endless = Come();
  for (int i = 0; endless.There && i < 1000; ++i) Say(endless, std::string(1000, 'x'));
  EXPECT_FALSE(endless.There);
  Say(other, "f\n");
  EXPECT_EQ(other.Heard, "14074000\n");
}

TEST_F(Serving, TheRadioReceivesAgainWhenItsProgramIsGone) {
  Say(Come(), "T 1\n");
  EXPECT_TRUE(Bench.Told.Transmitting);
  Peers.back().Socket->Error("gone");
  EXPECT_FALSE(Bench.Told.Transmitting);

  Terminal.DataArrival(BytesOf("TX;"));
  EXPECT_TRUE(Bench.Told.Transmitting);
  Terminal.Left();
  EXPECT_FALSE(Bench.Told.Transmitting);

  Bench.Obeys = false;
  Say(Come(), "T 1\n");
  Server.StopTransmitting();  // the run ends before the radio told
  EXPECT_FALSE(Bench.Asked.Transmitting);

  Bench.Obeys = true;
  Bench.Asked.Transmitting = true;  // by the operator
  Bench.Obey();
  Say(Come(), "f\n");
  Peers.back().Socket->Closed();
  EXPECT_TRUE(Bench.Told.Transmitting);
}

TEST_F(Serving, SaysWhoDidWhat) {
  std::function<void(const std::string&)> named;
  Server.AskName = [&](const CatPeer&, auto call) { named = std::move(call); };
  Come();
  Say(Peers.back(), "F 14076000\n");
  named("wsjtx");
  Say(Peers.back(), "f\nM CW 0\nS 1 VFOB\nT 1\nT 0\n");
  Bench.Ptt = false;
  Say(Peers.back(), "T 1\nF 0\n");
  Terminal.DataArrival(BytesOf("FB00007000000;"));
  EXPECT_EQ(Told,
            (std::vector<std::string>{"A program at port 40001 set 14.076.000", "WSJT-X set 14.076.000",
                                      "WSJT-X set CW", "WSJT-X set split on", "WSJT-X transmits",
                                      "WSJT-X receives", "WSJT-X wants to transmit: Setup does not allow it",
                                      "The terminal's program set VFO B to 7.000.000"}));
}

TEST_F(Serving, ATakenPortIsSaidAndTriedAgain) {
  Listener.Problem = "another program serves port 4600";
  Server.Serve({.Socket = true, .Port = 4600});
  EXPECT_EQ(Server.Trouble(), "Other programs cannot use the radio: another program serves port 4600");
  Listener.Asked.clear();
  for (int i = 0; i < 80; ++i) {
    Bench.Clock.Advance(100ms);
    Server.Tick();
  }
  EXPECT_EQ(Listener.Asked, std::vector<std::string>(3, "127.0.0.1:4600")) << "after 1, 2 and 4 s";
  Listener.Problem.clear();
  Bench.Clock.Advance(8s);
  Server.Tick();
  EXPECT_EQ(Server.Trouble(), "");
}

}  // namespace
}  // namespace spectrino
