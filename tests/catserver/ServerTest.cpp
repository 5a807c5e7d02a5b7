// Programs that come, do something and go, well-behaved or not.
#include "catserver/CatServer.h"

#include <gtest/gtest.h>

#include <vector>

#include "catserver/CatBench.h"

namespace spectrino {
namespace {

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
  std::string Listen(const std::string&, std::uint16_t) override { return {}; }
  void Close() override {}
};

struct FakeTerminal final : PseudoTerminal {
  std::string Open() override {
    Is = true;
    return {};
  }
  void Close() override { Is = false; }
  [[nodiscard]] bool IsOpen() const override { return Is; }
  [[nodiscard]] std::string Path() const override { return "/dev/pts/0"; }
  void Write(std::string_view) override {}
  bool Is = false;
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

// Most end inside a call of their own socket.
TEST_F(Serving, WhoLeavesOrMisbehavesIsLetGoOfAndTheOthersGoOn) {
  Peer& other = Come();
  Peer& deaf = Come();
  deaf.Reads = false;
  for (int i = 0; deaf.There && i < 500; ++i) Say(deaf, "\\dump_state\n");
  EXPECT_LT(deaf.Unread, 66000u);
  Peer& endless = Come();
  for (int i = 0; endless.There && i < 1000; ++i) Say(endless, std::string(1000, 'x'));
  Say(Come(), "q\nf\n");
  Come().Socket->Closed();
  Say(Come(), "T 1\n");
  EXPECT_TRUE(Bench.Told.Transmitting);
  Peers.back().Socket->Error("gone");
  EXPECT_FALSE(Bench.Told.Transmitting);
  EXPECT_EQ(Server.Clients(), 1u);
  for (int i = 0; i < 100; ++i) Come();
  EXPECT_EQ(Server.Clients(), 16u);
  Say(other, "f\n");
  EXPECT_EQ(other.Heard, "14074000\n");
  Server.Serve({.Socket = true, .Port = 4600});
  EXPECT_EQ(Server.Clients(), 0u) << "another port: nobody stays behind at the old one";
  EXPECT_FALSE(Terminal.Is);
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

}  // namespace
}  // namespace spectrino
