// What the operator is told when the input or the server goes away, how soon it is heard again, and what is
// told of a server that is not there and of the mixer.

#include <iostream>

#include "end_to_end/sound_bench.h"
#include "run/AudioKeeper.h"

namespace spectrino {
namespace {

struct Absence {
  std::string Name;
  void (*Leave)(PrivateSoundServer&);
  void (*Return)(PrivateSoundServer&);
  std::string Told;
  std::chrono::milliseconds Earliest, Latest;  ///< until it is told
  std::size_t InputsLeft;
};

class SoundHeals : public testing::TestWithParam<std::tuple<SoundServerKind, Absence>> {};

/// Passes until the link is so; how long it took, -1 s when it never was.
std::chrono::milliseconds PassesUntil(AudioKeeper& keeper, LinkState state) {
  SpectrumLine line;
  for (const Stopwatch watch; watch.Elapsed() < 20s;) {
    const Stopwatch pass;
    static_cast<void>(keeper.Poll({}, line));
    EXPECT_LT(pass.Elapsed(), 500ms) << "a pass waits for nothing";
    if (keeper.Health().State == state) return watch.Elapsed();
    std::this_thread::sleep_for(1ms);
  }
  return -1s;
}

TEST_P(SoundHeals, IsToldWithTheCauseAndComesBackByItself) {
  const auto& [kind, absence] = GetParam();
  SoundBench bench(kind);
  bench.Start(48000);
  if (HasFatalFailure()) return;
  const auto stream = bench.Input.Open(bench.Receiver(), 48000, 2048, bench.Reason);  // without a keeper
  ASSERT_TRUE(stream) << bench.Reason;
  const SystemClock clock;
  StageTimes times;
  AudioKeeper keeper(clock, times, bench.Notifier);
  ASSERT_TRUE(keeper.Open({bench.Receiver(), &bench.Input}, {.SampleRate = 48000}, true, bench.Reason))
      << bench.Reason;
  ASSERT_GE(PassesUntil(keeper, LinkState::Live), 0ms);

  absence.Leave(bench.Server);
  const auto told = PassesUntil(keeper, LinkState::Lost);
  EXPECT_GE(told, absence.Earliest);
  EXPECT_LE(told, absence.Latest);
  EXPECT_NE(keeper.Health().Why.find(absence.Told), std::string::npos) << keeper.Health().Why;
  EXPECT_TRUE(keeper.Health().NextTry);
  Samples block(2 * 2048);
  BlockState state = BlockState::Done;
  for (const Stopwatch watch; state != BlockState::Failed && watch.Elapsed() < 6s;)
    state = TakeSoon(*stream, block, 1s);
  EXPECT_NE(stream->Failure().find(absence.Told), std::string::npos) << stream->Failure();
  EXPECT_NE(stream->Failure().find("press Start"), std::string::npos) << stream->Failure();
  const Stopwatch listing;
  EXPECT_EQ(bench.Input.Devices().size(), absence.InputsLeft);
  EXPECT_LT(listing.Elapsed(), 2500ms);

  absence.Return(bench.Server);
  const auto back = PassesUntil(keeper, LinkState::Live);
  EXPECT_GE(back, 0ms) << keeper.Health().Why;
  std::cout << "told after " << told.count() << " ms, heard again " << back.count()
            << " ms after its return\n";
  const Stopwatch closing;
  keeper.Close();
  EXPECT_LT(closing.Elapsed(), 500ms);
}

INSTANTIATE_TEST_SUITE_P(
    All, SoundHeals,
    testing::Combine(
        testing::Values(SoundServerKind::PulseAudio, SoundServerKind::PipeWire),
        testing::Values(Absence{"replugged", [](PrivateSoundServer& server) { server.UnplugSource(); },
                                [](PrivateSoundServer& server) { server.PlugSource(); }, "was unplugged", 0ms,
                                1000ms, 1},
                        Absence{"restarted", [](PrivateSoundServer& server) { server.Kill(); },
                                [](PrivateSoundServer& server) { EXPECT_EQ(server.Start(48000), ""); },
                                "The sound server stopped", 0ms, 1000ms, 0},
                        Absence{"silent", [](PrivateSoundServer& server) { server.Stop(); },
                                [](PrivateSoundServer& server) { server.Continue(); },
                                "has sent nothing for 2 seconds", 1500ms, 3000ms, 0})),
    [](const auto& row) { return KindName(std::get<0>(row.param)) + std::get<1>(row.param).Name; });

TEST(SoundServerGone, ListsNothingAtOnceAndFindsARestartedServer) {
  SoundBench bench;
  const Stopwatch watch;
  EXPECT_TRUE(bench.Input.Devices().empty());
  EXPECT_FALSE(bench.Input.Open(bench.Receiver(), 48000, 2048, bench.Reason));
  EXPECT_EQ(bench.Reason, "No sound server answers.");
  EXPECT_LT(watch.Elapsed(), 1000ms);
  for (int run = 0; run < 2; ++run) {
    bench.Start(48000);
    if (HasFatalFailure()) return;
    EXPECT_EQ(bench.Input.Devices().size(), 2U);
    const auto stream = bench.Input.Open(bench.Receiver(), 48000, 2048, bench.Reason);
    ASSERT_TRUE(stream) << bench.Reason;
    bench.Server.Kill();
  }
}

TEST(SoundWarning, FollowsTheMixerWhileTheStreamRuns) {
  SoundBench bench;
  bench.Start(48000);
  if (HasFatalFailure()) return;
  ASSERT_TRUE(bench.Server.Pactl({"set-source-volume", "iq", "50%"}));
  const auto stream = bench.Input.Open(bench.Receiver(), 48000, 2048, bench.Reason);
  ASSERT_TRUE(stream) << bench.Reason;
  EXPECT_NE(stream->Warning().find("The volume of the sound input \"Receiver\" is 50 %"), std::string::npos)
      << stream->Warning();

  std::string recordings;
  ASSERT_TRUE(bench.Server.Pactl({"list", "short", "source-outputs"}, &recordings));
  std::string recording;  // ours comes last, behind the one that feeds the input from the cable
  for (std::istringstream lines(recordings); std::getline(lines, recordings);)
    recording = recordings.substr(0, recordings.find('\t'));
  struct Change {
    PrivateSoundServer::Arguments Command;
    std::string Expected;
  };
  for (const Change& change : std::vector<Change>{
           {{"set-source-volume", "iq", "100%", "80%"}, "is 100 % / 80 %."},
           {{"set-source-mute", "iq", "1"}, "Muted in the sound settings: the sound input \"Receiver\"."},
           {{"set-source-mute", "iq", "0"}, "is 100 % / 80 %."},
           {{"set-source-volume", "iq", "100%"}, ""},
           {{"set-source-output-volume", recording, "30%"},
            "The volume of the recording from \"Receiver\" is 30 %."},
           {{"set-source-output-volume", recording, "100%"}, ""}}) {
    ASSERT_TRUE(bench.Server.Pactl(change.Command)) << change.Command[0];
    const auto isShown = [&] {
      const std::string warning = stream->Warning();
      return change.Expected.empty() ? warning.empty() : warning.find(change.Expected) != std::string::npos;
    };
    for (const Stopwatch watch; !isShown() && watch.Elapsed() < 2s;) std::this_thread::sleep_for(5ms);
    EXPECT_TRUE(isShown()) << change.Expected << " | " << stream->Warning();
  }
}

}  // namespace
}  // namespace spectrino
