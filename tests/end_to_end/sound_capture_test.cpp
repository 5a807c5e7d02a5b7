// Samples from a real sound server: exact, in order, at the true rate, and recent after a pause.

#include <linux/capability.h>
#include <sys/resource.h>
#include <sys/syscall.h>

#include "end_to_end/sound_bench.h"

namespace spectrino {
namespace {

using Recording = std::tuple<SoundServerKind, int, int>;

class SoundExact : public testing::TestWithParam<Recording> {};

/// Plays noise and expects it from the stream, sample for sample.
void ExpectNoise(SoundBench& bench, SoundStream& stream, int rateHz, int blockFrames,
                 const std::string& sink) {
  const Samples noise = MakeNoise(2.5, rateHz);
  ASSERT_TRUE(bench.Server.Play(noise, rateHz, sink));
  Samples heard;
  Samples block(2 * static_cast<std::size_t>(blockFrames));
  for (const Stopwatch watch; heard.size() < noise.size() && watch.Elapsed() < 10s;) {
    ASSERT_EQ(TakeSoon(stream, block), BlockState::Done) << stream.Failure();
    const auto begin =
        heard.empty() ? std::ranges::find_if(block, [](std::int16_t s) { return s != 0; }) : block.begin();
    heard.insert(heard.end(), begin, block.end());
  }
  ASSERT_GE(heard.size(), noise.size()) << "the server did not play";
  const auto difference = std::ranges::mismatch(noise, heard).in1 - noise.begin();
  EXPECT_EQ(difference, static_cast<std::ptrdiff_t>(noise.size())) << "of sample " << difference << " on";
}

TEST_P(SoundExact, DeliversEverySampleUnchangedAndInOrder) {
  const auto [kind, rateHz, blockFrames] = GetParam();
  SoundBench bench(kind);
  bench.Start(rateHz);
  if (HasFatalFailure()) return;
  const auto stream = bench.OpenPatiently(bench.Receiver(), rateHz, blockFrames);
  ASSERT_TRUE(stream) << bench.Reason;
  EXPECT_EQ(stream->Warning(), "");
  ExpectNoise(bench, *stream, rateHz, blockFrames, "cable");
}

INSTANTIATE_TEST_SUITE_P(Servers, SoundExact,
                         testing::Values(Recording(SoundServerKind::PulseAudio, 48000, 4096),
                                         Recording(SoundServerKind::PulseAudio, 192000, 16384),
                                         Recording(SoundServerKind::PipeWire, 48000, 4096),
                                         Recording(SoundServerKind::PipeWire, 192000, 16384)));

// A card that is input and output in one, as virtual cards are, is not found in the usual way.
TEST(SoundPipeWire, OpensADuplexNodeAndNoOtherInItsPlace) {
  for (const int rateHz : {48000, 192000}) {
    SoundBench bench(SoundServerKind::PipeWire);
    bench.Start(rateHz);
    if (HasFatalFailure()) return;
    ASSERT_TRUE(bench.Server.LoadModule({"module-null-sink", "media.class=Audio/Duplex", "sink_name=card",
                                         "rate=" + std::to_string(rateHz), "channels=2",
                                         "channel_map=front-left,front-right"}));
    SoundDevice card;
    card.Name = "Card";
    card.StableId = "pulse:card";
    const auto stream = bench.OpenPatiently(card, rateHz, 4096);
    ASSERT_TRUE(stream) << bench.Reason;
    ExpectNoise(bench, *stream, rateHz, 4096, "card");
  }
}

TEST(SoundCapture, ReturnsTheNewestBlockAfterAPauseAndGoesOnFromThere) {
  constexpr int kRateHz = 48000;
  constexpr std::size_t kBlockFrames = 1024;
  SoundBench bench;
  bench.Start(kRateHz);
  if (HasFatalFailure()) return;
  const auto stream = bench.Input.Open(bench.Receiver(), kRateHz, kBlockFrames, bench.Reason);
  ASSERT_TRUE(stream) << bench.Reason;
  const Samples noise = MakeNoise(5, kRateHz);
  ASSERT_TRUE(bench.Server.Play(noise, kRateHz));

  // The frame of the noise that the next block begins with; nothing while silence is heard.
  Samples block(2 * kBlockFrames);
  const auto nextPosition = [&]() -> std::ptrdiff_t {
    if (TakeSoon(*stream, block) != BlockState::Done) return -1;
    const auto found = std::ranges::search(noise, block);
    return found.empty() ? -1 : (found.begin() - noise.begin()) / 2;
  };
  std::ptrdiff_t before = -1;
  for (const Stopwatch watch; before < 0 && watch.Elapsed() < 5s;) before = nextPosition();
  ASSERT_GE(before, 0);
  std::this_thread::sleep_for(1200ms);
  const std::ptrdiff_t after = nextPosition();
  EXPECT_GE(after - before, kRateHz) << "more than 0.2 s late";
  EXPECT_EQ(nextPosition(), after + static_cast<std::ptrdiff_t>(kBlockFrames));
}

TEST(SoundCapture, ListsInputsBeforeMonitorsAndTellsTwinsApart) {
  SoundBench bench;
  bench.Start(48000);
  if (HasFatalFailure()) return;
  for (const std::string name : {"twin1", "twin2"})
    ASSERT_TRUE(bench.Server.LoadModule({"module-remap-source", "master=cable.monitor", "source_name=" + name,
                                         "source_properties=device.description=Twin"}));
  std::vector<std::string> listed;
  for (const SoundDevice& device : bench.Input.Devices()) {
    EXPECT_TRUE(device.HasFormats);
    listed.push_back(device.StableId + " = " + device.Name);
  }
  EXPECT_EQ(listed, (std::vector<std::string>{"pulse:iq = Receiver", "pulse:twin1 = Twin (twin1)",
                                              "pulse:twin2 = Twin (twin2)",
                                              "pulse:cable.monitor = Monitor of Null Output"}));
}

TEST(SoundCapture, RefusesWhatWouldFakeASpectrum) {
  SoundBench bench;
  bench.Start(48000);
  if (HasFatalFailure()) return;
  ASSERT_TRUE(bench.Server.LoadModule(
      {"module-remap-source", "master=cable.monitor", "source_name=mono", "channels=1", "channel_map=mono"}));
  for (const auto& [stableId, rateHz, why] : std::initializer_list<std::tuple<const char*, int, const char*>>{
           {"pulse:iq", 96000, "runs at 48000 Hz, not at 96000 Hz"},
           {"pulse:iq", 44100, "runs at 48000 Hz, not at 44100 Hz"},
           {"pulse:iq", 500'000'000, "cannot record at 500000000 Hz"},
           {"pulse:mono", 48000, "has one channel"},
           {"pulse:unplugged", 48000, "is not there"},
           {"demo", 48000, "is no input of the sound server"}}) {
    SoundDevice device;
    device.StableId = stableId;
    EXPECT_FALSE(bench.Input.Open(device, rateHz, 2048, bench.Reason)) << why;
    EXPECT_NE(bench.Reason.find(why), std::string::npos) << bench.Reason;
  }
  EXPECT_TRUE(bench.Input.Open(bench.Receiver(), 48000, 2048, bench.Reason)) << bench.Reason;
}

// Takes the right to real-time scheduling from this thread and those it starts, to the end of the program.
void GiveUpRealTime() {
  rlimit limit{};
  getrlimit(RLIMIT_RTPRIO, &limit);
  limit.rlim_cur = 0;
  setrlimit(RLIMIT_RTPRIO, &limit);
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  __user_cap_data_struct rights[2]{};
  syscall(SYS_capget, &header, rights);
  rights[0].effective &= ~(1U << CAP_SYS_NICE);
  syscall(SYS_capset, &header, rights);
}

TEST(SoundCapture, CarriesOnWhereRealTimeIsRefusedAndSaysSoOnce) {
  SoundBench bench;
  bench.Start(48000);
  if (HasFatalFailure()) return;
  GiveUpRealTime();
  bench.Input.SetRealTimePriority(true);
  for (int run = 0; run < 2; ++run) {
    const auto stream = bench.Input.Open(bench.Receiver(), 48000, 2048, bench.Reason);
    ASSERT_TRUE(stream) << bench.Reason;
    Samples block(2 * 2048);
    EXPECT_EQ(TakeSoon(*stream, block), BlockState::Done);
  }
  ASSERT_EQ(bench.Notifier.Logged.size(), 1U);
  EXPECT_NE(bench.Notifier.Logged[0].find("Real-time scheduling of the capture was refused"),
            std::string::npos);
}

}  // namespace
}  // namespace spectrino
