// What goes to a rigctld, in which order, and what becomes of answers that are late, torn, wrong or missing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/HostBench.h"

namespace spectrino {
namespace {

using test::HostBench;
using test::VfoInfo;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

TEST(RigctldReader, AnswersAreTheSameHoweverTheyAreCutAndWhateverStandsBetween) {
  const std::string text =
      "Welcome\r\nget_freq: VFOA\r\nFrequency: 14074000\r\nRPRT 0\r\n"
      "RPRT -1\nChkVFO: 1\nRPRT x\n"
      "send_cmd: \\0xFE\nReply: RPRT 0\nget_level: VFOA ATT\n12\nRPRT -11\n\xFF\xFE\n";
  const auto read = [](const std::string& whole, std::size_t cut) {
    std::vector<std::string> answers;
    RigctldReader reader([&](const RigctldReply& reply) {
      std::string line = reply.Command + '|' + std::to_string(reply.Code);
      for (const std::string& value : reply.Lines) line += '|' + value;
      answers.push_back(line);
    });
    const auto bytes = reinterpret_cast<const std::uint8_t*>(whole.data());
    EXPECT_TRUE(reader.Feed({bytes, cut}));
    EXPECT_TRUE(reader.Feed({bytes + cut, whole.size() - cut}));
    return answers;
  };
  const auto expected = ElementsAre("get_freq|0|Frequency: 14074000", "|-1", "chk_vfo|0|ChkVFO: 1",
                                    "send_cmd|0", "get_level|-11|12");
  for (std::size_t cut = 0; cut <= text.size(); ++cut) EXPECT_THAT(read(text, cut), expected) << cut;
  RigctldReader endless([](const RigctldReply&) {});
  const std::vector<std::uint8_t> flood(RigctldReader::kMostBytes + 1, 'x');
  EXPECT_FALSE(endless.Feed(flood));
  EXPECT_TRUE(endless.Feed(std::span(flood).first(10))) << "begins anew";
}

TEST(RigctldClient, EndpointsAreHostAndPortAndNothingElse) {
  constexpr const char* cases[][3] = {
      {"", "", "127.0.0.1:4532"},         {"", "C:\\Program Files\\Castelon", "127.0.0.1:4532"},
      {"", "shack:4540", "shack:4540"},   {"radio.local:1", "shack:4540", "radio.local:1"},
      {"[::1]:4532", "", "::1:4532"},     {"radio:65536", "", "127.0.0.1:4532"},
      {"radio:45x", "", "127.0.0.1:4532"}};
  for (const auto& [own, installed, expected] : cases) {
    HostBench bench;
    bench.Store.SaveSetting("Spectrino", "Setup", "HostEndpoint", own);
    bench.Store.SaveSetting("Bexmora", "Setup", "AppPath", installed);
    EXPECT_EQ(HostEndpoint(bench.Store).Text(), expected) << own << " / " << installed;
  }
}

TEST(RigctldClient, AClickOvertakesReadsAndTheNewestFrequencyTheUnsentOnes) {
  HostBench bench;
  bench.Begin(CatControl::HostIf);
  bench.Pass(1s);
  EXPECT_THAT(bench.TakeSent(), ElementsAre("+\\get_vfo_info VFOA\n"));
  for (const double mhz : {14.1, 14.2, 14.3}) bench.Backend.SetFrequency(Vfo::A, mhz, Aim::Dial);
  bench.Backend.SetFrequency(Vfo::B, 7.05, Aim::Dial);
  EXPECT_THAT(bench.TakeSent(), ElementsAre("+\\set_freq VFOA 14100000\n")) << "beside the read, and alone";
  // The answer to the earlier read is not the new frequency's; nor is a stray success anybody's.
  bench.Socket.Receive("RPRT 0\n" + VfoInfo("VFOA", 14074000, "USB"));
  EXPECT_DOUBLE_EQ(bench.Radio.HostGetFrequency(Vfo::A), 14.3);
  bench.Socket.Receive("set_freq: VFOA 14100000\nRPRT 0\n");
  EXPECT_THAT(bench.TakeSent(), ElementsAre("+\\set_freq VFOA 14300000\n"));
  bench.Socket.Receive("set_freq: VFOA 14300000\nRPRT 0\n");
  EXPECT_THAT(bench.TakeSent(), ElementsAre("+\\set_freq VFOB 7050000\n"));
  bench.Socket.Receive("set_freq: VFOB 7050000\nRPRT -9\n");
  EXPECT_DOUBLE_EQ(bench.Radio.HostGetFrequency(Vfo::B), 14.08) << "refused: taken back at once";
  bench.Pass(0s);
  EXPECT_THAT(bench.TakeSent(), ElementsAre("+\\get_vfo_info VFOA\n"));
  bench.Socket.Receive(VfoInfo("VFOA", 14250000, "USB"));
  EXPECT_DOUBLE_EQ(bench.Radio.HostGetFrequency(Vfo::A), 14.25) << "the radio has the last word";
  bench.Backend.SetFrequency(Vfo::A, 21.0, Aim::Dial);
  bench.Pass(2001ms);
  EXPECT_DOUBLE_EQ(bench.Radio.HostGetFrequency(Vfo::A), 14.25) << "never answered";
}

TEST(HostPoll, ASlowRadioIsLeftInPeaceAsLongAsItsAnswerTook) {
  for (const auto& [took, pause] : {std::pair(0ms, 20ms), {300ms, 300ms}, {1800ms, 1000ms}}) {
    HostBench bench;
    bench.Begin(CatControl::FixedLo);
    bench.Pass(1s);
    bench.Time.Advance(took);
    bench.Socket.Receive(VfoInfo("VFOA", 14074000, "USB"));
    bench.Socket.Sent.clear();
    bench.Pass(pause - 1ms);
    EXPECT_THAT(bench.TakeSent(), IsEmpty()) << took.count();
    bench.Pass(1ms);
    EXPECT_THAT(bench.TakeSent(), ElementsAre("+\\get_vfo_info VFOA\n")) << took.count();
  }
}

TEST(RigctldClient, ALateAnswerCostsTheConnectionAndIsNobodys) {
  HostBench bench;
  bench.Begin(CatControl::HostIf);
  bench.Pass(1s);
  bench.Pass(2s);
  EXPECT_EQ(bench.Socket.Attempts, 1) << "still in time";
  bench.Pass(1ms);
  EXPECT_EQ(bench.Radio.Client().Health().State, LinkState::Silent);
  EXPECT_THAT(HealthText(bench.Radio.Client().Health(), "Radio", bench.Time.Now()),
              HasSubstr("the radio does not answer Castelon. Is it switched on? Trying"));
  bench.Socket.Receive(VfoInfo("VFOA", 1000000, "USB"));
  EXPECT_DOUBLE_EQ(bench.Radio.HostGetFrequency(Vfo::A), 14.074);
  // 1, 2, 4, 8, then every 15 s; a server that only accepts does not shorten it.
  std::vector<int> pauses;
  for (int seconds = 1; pauses.size() < 6; ++seconds) {
    const int before = bench.Socket.Attempts;
    bench.Pass(1s);
    if (bench.Socket.Attempts == before) continue;
    pauses.push_back(std::exchange(seconds, 0));
    bench.Socket.Error("refused");
    EXPECT_EQ(bench.Radio.Client().Health().State, LinkState::Lost);
  }
  EXPECT_THAT(pauses, ElementsAre(1, 2, 4, 8, 15, 15));
  EXPECT_EQ(bench.Time.Now() - bench.Radio.Client().Health().Since, 48s + 1ms) << "the silence is one";
  bench.Pass(15s);
  bench.Accept();
  bench.Socket.Sent.clear();
  bench.Answer(VfoInfo("VFOA", 7000000, "LSB"));
  bench.Pass(0s);
  EXPECT_EQ(bench.Radio.Client().Health().State, LinkState::Live);
  EXPECT_DOUBLE_EQ(bench.Radio.HostGetFrequency(Vfo::A), 7.0);
  for (int answers = 0; answers < 6; ++answers) {
    bench.Answer(VfoInfo("VFOA", 7000000, "LSB"));
    bench.Answer(VfoInfo("VFOB", 7000000, "LSB"));
  }
  EXPECT_EQ(bench.Radio.Client().Health().State, LinkState::Live);
  bench.Socket.Closed();
  const int before = bench.Socket.Attempts;
  bench.Pass(1s);
  EXPECT_EQ(bench.Socket.Attempts, before + 1) << "one that answers for a while is looked for at once";
}

TEST(RigctldClient, ARadioThatIsOffIsToldFromAServerThatIsGone) {
  const std::pair<std::string, LinkState> cases[] = {{"get_vfo_info: VFOA\nRPRT -5\n", LinkState::Silent},
                                                     {"RPRT -6\n", LinkState::Silent},
                                                     {"get_vfo_info: VFOA\nRPRT -11\n", LinkState::Live},
                                                     {std::string(70000, 'x'), LinkState::Lost}};
  for (const auto& [answer, state] : cases) {
    HostBench bench;
    bench.Begin(CatControl::FixedLo);
    bench.Answer(answer);
    EXPECT_EQ(bench.Radio.Client().Health().State, state) << answer.substr(0, 40);
    EXPECT_DOUBLE_EQ(bench.Radio.HostGetFrequency(Vfo::A), 14.074);
    bench.Socket.Closed();
    EXPECT_EQ(bench.Radio.Client().Health().State, LinkState::Lost);
    bench.Pass(1s);
    bench.Socket.Connected();
    bench.Pass(1900ms);
    bench.Socket.Error("reset");
    EXPECT_EQ(bench.Radio.Client().Health().State, LinkState::Silent) << "it waited for the radio";
  }
}

TEST(RigctldClient, TheSearchEndsWithAnAnswerARefusalOrItsTime) {
  enum { Refused, Nothing, Accepted };
  for (const auto happens : {Refused, Nothing, Accepted}) {
    HostBench bench;
    bench.Pump.Meanwhile = [&] {
      if (bench.Pump.Waited > 10ms) return;
      if (happens == Refused) bench.Socket.Error("refused");
      if (happens == Accepted) bench.Socket.Connected();
    };
    EXPECT_EQ(bench.Backend.Open(), happens == Accepted);
    EXPECT_LE(bench.Pump.Waited.count(), happens == Refused ? 10 : 1010);
    bench.Backend.SetFrequency(Vfo::A, 14.1, Aim::Dial);
    EXPECT_EQ(bench.Radio.HostGetFrequency(Vfo::A), happens == Accepted ? 14.1 : 0);
  }
}

}  // namespace
}  // namespace spectrino
