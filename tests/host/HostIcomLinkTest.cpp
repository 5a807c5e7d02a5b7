// An Icom's scope through a rigctld: where its lines come from, when it answers, what is asked of it and
// when.
#include "host/HostIcomLink.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/HostBench.h"

namespace spectrino::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace std::chrono_literals;

const std::string kLine =
    R"({"spectra":[{"id":0,"type":"CENTER","minLevel":0,"maxLevel":160,"centerFreq":14074000,"span":500000,)"
    R"("lowFreq":13824000,"highFreq":14324000,"length":2,"data":"38A0"}]})";

struct ScriptedDatagrams final : DatagramSocket {
  std::string Open(std::uint16_t port) override {
    Port = port;
    return {};
  }
  void Close() override {}
  int Port = 0;
};

struct HostIcomLinkTest : HostBench, testing::Test {
  HostIcomLinkTest() {
    Settings.Source.Id.Kind = SourceKind::Icom;
    Settings.IcomControl = 1;
  }
  void Begin() {
    HostBench::Begin(CatControl::FixedLo, "USB", "dump_caps:\nModel name: IC-7300\nMfg name: Icom\n");
    Icom.Open();
    Icom.Tick();
  }
  void Wait(std::chrono::milliseconds time) {
    Pass(time);
    Icom.Tick();
  }
  /// The next read of the dial, answered.
  void Tell(const std::string& text) {
    Wait(1s);
    Socket.Receive(text);
    Icom.Tick();
  }

  ScriptedDatagrams Lines;
  HostIcomLink Icom{{Radio, Backend, Lines, Store, User, Time}};
};

TEST_F(HostIcomLinkTest, LinesComeFromThisMachineOnePortAbove) {
  const struct {
    const char *Endpoint, *Options, *Trouble;
    int Port;
  } cases[] = {
      {"127.0.0.1:4540", "--multicast-addr=127.0.0.1 --multicast-port=4541 -C async=1", "", 4541},
      {"localhost:4532", "--multicast-addr=127.0.0.1 --multicast-port=4533 -C async=1", "", 4533},
      {"[::1]:65534", "--multicast-addr=127.0.0.1 --multicast-port=65535 -C async=1", "", 65535},
      {"shack:4532", "", "", 4533},
      {"[fe80::1]:4532", "", "", 4533},
      {"shack:65535", "", "above 65535 there is none", 0},
  };
  for (const auto& at : cases) {
    Store.SaveSetting("Spectrino", "Setup", "HostEndpoint", at.Endpoint);
    Lines.Port = 0;
    Icom.Open();
    EXPECT_EQ(Icom.ScopeOptions(), at.Options) << at.Endpoint;
    EXPECT_THAT(Icom.Trouble(), HasSubstr(at.Trouble));
    EXPECT_EQ(Icom.Trouble().empty(), *at.Trouble == '\0');
    EXPECT_EQ(Lines.Port, at.Port);
    Icom.Close();
  }
}

TEST_F(HostIcomLinkTest, ARadioThatWasOffOrIsAnotherOneIsFoundAnew) {
  Begin();
  EXPECT_EQ(Icom.Findings(), 1);
  Tell("get_vfo_info: VFOA\nRPRT -5\n");
  EXPECT_EQ(Icom.Health().State, LinkState::Silent);
  EXPECT_EQ(Icom.Findings(), 1);
  Icom.SwitchScope(false);
  Socket.Receive("set_func: VFOA SPECTRUM 0\nRPRT -9\n");
  Icom.Tick();
  EXPECT_EQ(Icom.Findings(), 2) << "who refuses is there";
  Tell("get_vfo_info: VFOA\nRPRT -8\n");
  Tell(VfoInfo("VFOA", 14074000, "USB"));
  EXPECT_EQ(Icom.Health().State, LinkState::Live);
  EXPECT_EQ(Icom.Findings(), 3);
  Wait(2600ms);
  EXPECT_TRUE(Radio.Client().IsReady());
  EXPECT_EQ(Icom.Health().State, LinkState::Silent) << "neither an answer nor a line";
  Lines.Received(std::span(reinterpret_cast<const std::uint8_t*>(kLine.data()), kLine.size()));
  EXPECT_EQ(Icom.Health().State, LinkState::Live);
  Socket.Closed();
  Wait(1s);
  EXPECT_EQ(Icom.Health().State, LinkState::Connecting);
  Accept("dump_caps:\nModel name: IC-705\nMfg name: Icom\n");
  Icom.Tick();
  EXPECT_EQ(Icom.Findings(), 3) << "its own dial was not told";
  EXPECT_EQ(Icom.HostIcomFrequency(), 0);
  Tell(VfoInfo("VFOA", 7000000, "LSB"));
  EXPECT_EQ(Icom.Findings(), 4);
}

TEST_F(HostIcomLinkTest, ABusyLineCostsNoConnectionAndTheLastClickStillLeaves) {
  Begin();
  Socket.Sent.clear();
  Icom.Ask("1401");
  Backend.SetFrequency(Vfo::A, 21.2, Aim::Signal);
  EXPECT_TRUE(Icom.HostIcomFrequencyIsAsked());
  Backend.SelectMode({0, false});
  EXPECT_THAT(TakeSent(), ElementsAre("+\\set_freq VFOA 21200000\n"));
  Icom.Tick();
  EXPECT_THAT(TakeSent(), IsEmpty()) << "reads have time while a wheel may turn";
  Wait(4900ms);
  EXPECT_TRUE(Radio.Client().IsReady());
  EXPECT_DOUBLE_EQ(Icom.HostIcomFrequency(), 21.2);
  Socket.Receive("set_freq:\nRPRT 0\n");
  Socket.Sent.clear();
  Backend.SetFrequency(Vfo::A, 21.3, Aim::Signal);
  Icom.SwitchScope(true);
  Icom.Close();
  EXPECT_THAT(TakeSent(), ElementsAre("+\\set_freq VFOA 21300000\n+\\set_func VFOA SPECTRUM 0\n"));
}

}  // namespace
}  // namespace spectrino::test
