// What the operator is told of a server that is not there, and of the mixer.

#include "end_to_end/sound_bench.h"

namespace spectrino {
namespace {

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
