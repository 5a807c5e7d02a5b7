// The demo signal and I/Q files as sound inputs: when blocks come, and which.
#include <gmock/gmock.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "fakes/FakeClock.h"
#include "sim/DemoBand.h"
#include "sim/DemoInput.h"
#include "sim/IqFileInput.h"
#include "sim/WavBytes.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;
using Samples = std::vector<std::int16_t>;

/// A recording at 48000 Hz whose left sample is the frame's number and whose right is its negative.
std::string Counting(int frames) {
  std::string body;
  for (int i = 0; i < frames; ++i)
    body += test::Number(static_cast<std::uint32_t>(i), 2) + test::Number(static_cast<std::uint32_t>(-i), 2);
  return test::Riff(test::Chunk("fmt ", test::Format(1, 2, 48000, 16)) + test::Chunk("data", body));
}

class IqFilePlayback : public testing::Test {
 protected:
  ~IqFilePlayback() override { std::filesystem::remove(path_); }

  void Start(int frames) {
    frames_ = frames;
    std::ofstream(path_, std::ios::binary) << Counting(frames);
    std::string reason;
    const auto file = LoadIqFile(path_, reason);
    ASSERT_TRUE(file) << reason;
    input_ = std::make_unique<IqFileInput>(clock_, path_, *file);
    stream_ = input_->Open(input_->Devices().at(0), 48000, 480, reason);
    ASSERT_NE(stream_, nullptr) << reason;
  }

  /// Asks until the disk has answered; Pending where no block is due by the clock.
  BlockState Take(Samples& block) {
    BlockState state = BlockState::Pending;
    for (int wait = 0; wait < kPatience && state == BlockState::Pending; ++wait) {
      state = stream_->TakeBlock(block);
      if (state == BlockState::Pending) std::this_thread::sleep_for(1ms);
    }
    return state;
  }
  bool IsDue() {
    Samples block(2 * 480);
    return stream_->TakeBlock(block) != BlockState::Pending;
  }
  /// The number of the first frame of the block that is due. The others must follow it.
  int TakeFirst(std::size_t frames = 480) {
    Samples block(2 * frames);
    if (Take(block) != BlockState::Done) return -1;
    for (std::size_t i = 0; i < frames; ++i) {
      const int expected = (block[0] + static_cast<int>(i)) % frames_;
      EXPECT_TRUE(block[2 * i] == expected && block[2 * i + 1] == -expected) << "frame " << i;
    }
    return block[0];
  }

  static constexpr int kPatience = 10'000;
  FakeClock clock_;
  const std::string path_ =
      std::filesystem::temp_directory_path() / ("spectrino-40m-" + std::to_string(getpid()) + ".wav");
  std::unique_ptr<IqFileInput> input_;
  std::unique_ptr<SoundStream> stream_;
  int frames_ = 0;
};

TEST_F(IqFilePlayback, BlocksComeInRealTimeWithoutGapOrOverlap) {
  Start(20000);
  EXPECT_FALSE(IsDue());
  clock_.Advance(9999us);
  EXPECT_FALSE(IsDue());
  clock_.Advance(1us);
  EXPECT_EQ(TakeFirst(), 0);
  EXPECT_FALSE(IsDue());
  clock_.Advance(10ms);
  EXPECT_EQ(TakeFirst(), 480);
  // A quarter of a second late is still caught up with.
  clock_.Advance(250ms);
  for (int block = 2; block < 27; ++block) EXPECT_EQ(TakeFirst(), 480 * block);
  EXPECT_FALSE(IsDue());
}

TEST_F(IqFilePlayback, OldBlocksAreDroppedAfterALongPause) {
  const struct {
    std::size_t BlockFrames;
    std::chrono::milliseconds Length;
    int FirstFrame;  ///< of the next block
  } pauses[] = {{480, 250ms, 0},      {480, 260ms, 12000},
                {480, 265ms, 12000},   // 26.5 blocks: the 26th is the newest
                {4800, 400ms, 0},      // four blocks are longer than 1/4 s
                {4800, 501ms, 19200},  // the fifth
                {480, 100h, 29520}};   // 30000 frames pass in 0.625 s
  for (const auto& pause : pauses) {
    Start(30000);
    clock_.Advance(pause.Length);
    EXPECT_EQ(TakeFirst(pause.BlockFrames), pause.FirstFrame);
  }
}

TEST_F(IqFilePlayback, IsListedByNameAndOpensAtItsOwnRateOnly) {
  Start(100);
  const SoundDevice device = input_->Devices().at(0);
  EXPECT_EQ(device.Name, std::filesystem::path(path_).filename());
  EXPECT_EQ(device.StableId, "file:" + path_);
  std::string reason;
  EXPECT_EQ(input_->Open(device, 96000, 480, reason), nullptr);
  EXPECT_EQ(reason, device.Name + " was recorded at 48000 Hz and cannot be played at 96000 Hz.");
}

// Longer than what is read ahead, so that chunks are used again and the end of the file lies within one.
TEST_F(IqFilePlayback, AFileOfManyChunksPlaysToItsEndAndAnew) {
  Start(30'000);
  constexpr int kBlockFrames = 16'384;
  for (int block = 0; block < 80; ++block) {
    clock_.Advance(std::chrono::nanoseconds(1'000'000'000LL * kBlockFrames / 48000 + 1));
    ASSERT_EQ(TakeFirst(kBlockFrames), block * kBlockFrames % 30'000) << block;
  }
}

TEST_F(IqFilePlayback, AFileThatIsCutWhileItPlaysIsToldAndPlaysOnWithWhatIsLeft) {
  Start(30'000);
  clock_.Advance(10ms);
  EXPECT_EQ(TakeFirst(), 0);
  std::filesystem::resize_file(path_, 44 + 4 * 1000);
  clock_.Advance(100h);  // far from what is in memory
  Samples block(2 * 480);
  EXPECT_EQ(Take(block), BlockState::Failed);
  EXPECT_THAT(stream_->Failure(), testing::HasSubstr("was cut short"));
  std::string reason;
  stream_ = input_->Open(input_->Devices().at(0), 48000, 480, reason);
  ASSERT_NE(stream_, nullptr) << reason;
  frames_ = 1000;
  clock_.Advance(10ms);
  EXPECT_EQ(TakeFirst(), 0);
  std::filesystem::resize_file(path_, 20);
  EXPECT_EQ(input_->Open(input_->Devices().at(0), 48000, 480, reason), nullptr);
  EXPECT_THAT(reason, testing::HasSubstr("no format chunk"));
}

TEST(DemoInputTest, DeliversTheBandOfTheMomentAtTheFrequencyOfTheMoment) {
  FakeClock clock;
  double radioMHz = 14.05;
  DemoInput input(
      clock, [&radioMHz] { return radioMHz; }, 3);
  const SoundDevice device = input.Devices().at(0);
  std::string reason;
  EXPECT_EQ(input.Open(device, 8000, 512, reason), nullptr);
  EXPECT_THAT(reason, testing::HasSubstr("8000 Hz"));
  const auto stream = input.Open(device, 192000, 512, reason);
  ASSERT_NE(stream, nullptr) << reason;
  DemoBand band(192000, 3);
  Samples got(1024), expected(1024);
  // The last wait lets 115201152 frames pass: 225002.25 blocks.
  for (const auto& [wait, mhz, frame] :
       std::initializer_list<std::tuple<std::chrono::milliseconds, double, std::uint64_t>>{
           {3ms, 14.05, 0}, {3ms, 7.1, 512}, {600s, 7.1, 225001ULL * 512}}) {
    radioMHz = mhz;
    EXPECT_EQ(stream->TakeBlock(got), BlockState::Pending);
    clock.Advance(wait);
    ASSERT_EQ(stream->TakeBlock(got), BlockState::Done);
    band.Render(frame, mhz, expected);
    EXPECT_EQ(got, expected);
  }
  EXPECT_EQ(stream->TakeBlock(got), BlockState::Pending);
}

}  // namespace
}  // namespace spectrino
