// The ring between the two threads under a race, and the kernel's report of a card.

#include <atomic>

#include "adapters/sound/CardRate.h"
#include "adapters/sound/SampleRing.h"
#include "end_to_end/sound_bench.h"

namespace spectrino {
namespace {

constexpr std::size_t kStaleFrames = 2000;

// Frame n carries n in its two halves.
Samples Counted(std::uint32_t first, std::size_t frames) {
  Samples samples;
  for (std::uint32_t frame = first; frame < first + frames; ++frame) {
    samples.push_back(static_cast<std::int16_t>(frame & 0xFFFF));
    samples.push_back(static_cast<std::int16_t>(frame >> 16));
  }
  return samples;
}

std::uint32_t FirstFrame(const Samples& block) {
  return static_cast<std::uint16_t>(block[0]) |
         static_cast<std::uint32_t>(static_cast<std::uint16_t>(block[1])) << 16;
}

TEST(SampleRing, SkipsToTheNewestBlockOnlyBeyondTheStaleDistance) {
  SampleRing ring(kStaleFrames);
  Samples block(2 * 300);
  ring.Write(Counted(0, 299));
  EXPECT_FALSE(ring.TakeBlock(block));
  ring.Write(Counted(299, kStaleFrames - 299));
  ASSERT_TRUE(ring.TakeBlock(block));
  EXPECT_EQ(block, Counted(0, 300));  // as far behind as allowed: nothing is lost
  ring.Write(Counted(kStaleFrames, 301));
  ASSERT_TRUE(ring.TakeBlock(block));
  EXPECT_EQ(block, Counted(kStaleFrames + 1, 300));  // one frame further: the newest
  EXPECT_FALSE(ring.TakeBlock(block));

  ring.Write(Counted(0, 50'000));  // many times round at once
  ASSERT_TRUE(ring.TakeBlock(block));
  EXPECT_EQ(block, Counted(50'000 - 300, 300));
}

TEST(SampleRing, NeverMixesOldAndNewWhileTheWriterLapsTheReader) {
  SampleRing ring(kStaleFrames);
  std::atomic<bool> stop{false};
  std::thread writer([&] {
    for (std::uint32_t next = 0; !stop; next += 777) ring.Write(Counted(next, 777));
  });
  Samples block(2 * 1500);
  std::uint32_t expected = 0;
  int taken = 0;
  int skips = 0;
  for (const Stopwatch watch; watch.Elapsed() < 500ms;) {
    if (!ring.TakeBlock(block)) continue;
    const std::uint32_t first = FirstFrame(block);
    if (first < expected || block != Counted(first, 1500)) {
      ADD_FAILURE() << "block " << taken << " at " << first << " after " << expected;
      break;
    }
    skips += first != expected ? 1 : 0;
    expected = first + 1500;
    ++taken;
  }
  stop = true;
  writer.join();
  EXPECT_GT(taken, 10);
  EXPECT_GT(skips, 0) << "the writer was never ahead: the race was not tested";
}

TEST(CardRate, TakesWhatTheKernelSaysAndNothingElse) {
  const PrivateSoundServer folder;  // not started: its temporary folder alone
  const std::filesystem::path stream = folder.Path("card2/pcm1c/sub0");
  std::filesystem::create_directories(stream);
  const std::pair<const char*, std::optional<int>> reports[] = {
      {"access: MMAP_INTERLEAVED\nformat: S16_LE\nrate: 96000 (96000/1)\nperiod_size: 512\n", 96000},
      {"rate: 44100", 44100},
      {"closed\n", {}},
      {"rate: fast (1/1)\n", {}},
      {"rate: 48000x\n", {}},
      {"rate: -1 (0/1)\n", {}},
      {"rate: 99999999999\n", {}},
      {"", {}}};
  for (const auto& [text, rateHz] : reports) {
    std::ofstream(stream / "hw_params") << text;
    EXPECT_EQ(ReadCardRateHz(2, 1, folder.Path("")), rateHz) << text;
  }
  EXPECT_EQ(ReadCardRateHz(3, 1, folder.Path("")), std::nullopt);
}

}  // namespace
}  // namespace spectrino
