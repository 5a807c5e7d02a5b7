// A sound input that goes away while a run is on: what is told, when it is tried again, what is as before
// when it returns; and what is told of one that stays but sends nothing of use.
#include <gmock/gmock.h>

#include <thread>

#include "run/RunBench.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

struct LostInput : testing::Test {
  RunBench Bench;
  RunCycle& Cycle = Bench.Cycle;
  FakeSoundInput& Input = Bench.Input;

  void StartAndLose() {
    ASSERT_TRUE(Cycle.Start());
    Bench.Feed(6000);
    Bench.Step();
    Bench.Time.Advance(100ms);
    Input.Shared->FailWith = "The input was unplugged";
    Cycle.Step();
    Input.Shared->FailWith.clear();
    ASSERT_EQ(Input.Shared->OpenStreams, 0);
  }
};

/// Passes, without turning the clock, until what another thread is to bring about is so.
template <typename Condition>
void StepUntil(RunCycle& cycle, const Condition& holds) {
  for (int pass = 0; pass < 10'000 && !holds(); ++pass) {
    cycle.Step();
    std::this_thread::sleep_for(1ms);
  }
  ASSERT_TRUE(holds());
}

TEST_F(LostInput, EndsTheRunWithItsMessageWithoutReconnectInAMinimisedWindowToo) {
  for (const bool minimised : {false, true}) {
    RunBench bench;
    bench.Store.SaveSetting("Spectrino", "Setup", "Reconnect", "0");
    ASSERT_TRUE(bench.Cycle.Start());
    bench.State.WindowMinimized = minimised;
    int told = 0;
    bench.Cycle.RunningChanged = [&told] { ++told; };
    bench.Input.Shared->FailWith = "The input was unplugged";
    bench.Step();
    EXPECT_FALSE(bench.Cycle.Running());
    EXPECT_THAT(bench.User.Messages, ElementsAre("Spectrino|The input was unplugged."));
    EXPECT_EQ(bench.Input.Shared->OpenStreams, 0);
    EXPECT_EQ(told, 1);
  }
}

TEST_F(LostInput, IsTriedAfterGrowingPausesAndSaysSinceWhenAndWhy) {
  StartAndLose();
  LinkHealth expected{LinkState::Lost, Bench.Sink.Line.Arrived, "The input was unplugged"};
  Input.RefusedRates = {48000};
  int tries = 0;
  for (const auto pause : {1s, 2s, 4s, 8s, 15s, 15s}) {
    const LinkHealth health = Cycle.Health();
    EXPECT_EQ(health.State, expected.State);
    EXPECT_EQ(health.Since, expected.Since);
    EXPECT_EQ(health.Why, expected.Why);
    EXPECT_EQ(health.NextTry, Bench.Time.Now() + pause);
    expected.Why = "It is busy, " + std::to_string(++tries);
    Input.RefusalReason = expected.Why + ".";
    Bench.Time.Advance(pause - 1ms);
    Cycle.Step();
    EXPECT_EQ(Bench.User.Logged.size(), static_cast<std::size_t>(tries));
    Bench.Time.Advance(1ms);
    StepUntil(Cycle, [&] { return Bench.User.Logged.size() > static_cast<std::size_t>(tries); });
  }
  Input.List.clear();  // one that is missing says nothing new
  Bench.Time.Advance(15s);
  StepUntil(Cycle, [&, before = Input.Listings.load()] { return Input.Listings > before; });
  EXPECT_EQ(Cycle.Health().Why, expected.Why);
  EXPECT_EQ(Bench.User.Logged.front(), "The input was unplugged; it is waited for");
  EXPECT_TRUE(Cycle.Running());
  EXPECT_TRUE(Bench.User.Messages.empty());
}

TEST_F(LostInput, ReturnsUnderAnotherIndexWithAllThatTheOperatorHadSet) {
  for (const bool minimised : {false, true}) {
    RunBench bench;
    FakeSoundInput& input = bench.Input;
    bench.State.Settings.HistoryDepth = 5;  // MAX holds what it saw
    bench.State.Settings.TypZoom = true;
    bench.State.Settings.SRate = 6;
    bench.State.Settings.Zoom = 3;  // of 192000: 48000 and twice
    ASSERT_TRUE(bench.Cycle.Start());
    bench.Feed(6000);
    bench.Step();
    bench.Cycle.Scale().PanBy(0.25);
    const FrameGeometry before = bench.Sink.Scale.Geometry;
    const int clears = bench.Sink.Clears;

    bench.State.WindowMinimized = minimised;
    input.Shared->FailWith = "The sound server stopped";
    bench.Step();
    input.Shared->FailWith.clear();
    input.List = {{"New", "new"}, {"Card, other socket", "card"}};
    bench.Time.Advance(1s);
    bench.Feed(-6000);
    StepUntil(bench.Cycle, [&] { return bench.Cycle.Health().State == LinkState::Live; });
    bench.State.WindowMinimized = false;
    if (minimised) bench.Feed(-6000);
    StepUntil(bench.Cycle, [&] { return bench.Sink.Frames == 2; });
    EXPECT_EQ(input.Opened, (std::vector<std::string>{"card@48000/256", "card@48000/256"}));
    EXPECT_EQ(bench.Sink.Geometry, before);
    EXPECT_EQ(bench.Sink.Clears, clears) << "the waterfall stays";
    EXPECT_EQ(bench.PeakIndex(), 384) << "no average of before and after";
    EXPECT_TRUE(bench.User.Messages.empty());
  }
}

TEST_F(LostInput, AHungServerHoldsNeitherTheWindowNorStop) {
  StartAndLose();
  const int listings = Input.Listings;
  {
    const std::lock_guard hung(Input.Hang);
    Bench.Time.Advance(1s);
    const auto begin = std::chrono::steady_clock::now();
    for (int pass = 0; pass < 10; ++pass) Bench.Step();
    Cycle.Stop();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
    EXPECT_FALSE(Cycle.Running());
    EXPECT_EQ(Cycle.Health().State, LinkState::Closed);
  }
  StepUntil(Cycle, [&] { return Input.Opens == 2 && Input.Shared->OpenStreams == 0; });
  EXPECT_EQ(Input.Listings, listings + 1);
  ASSERT_TRUE(Cycle.Start());
  Bench.Feed(6000);
  Bench.Step();
  EXPECT_EQ(Bench.Sink.Frames, 2);
}

TEST_F(LostInput, IsOpenedAtTheRateOfTheZoomOfThen) {
  Bench.State.Settings.TypZoom = true;
  StartAndLose();
  Cycle.SetZoom(3);
  EXPECT_TRUE(Cycle.Running());
  Bench.Time.Advance(1s);
  StepUntil(Cycle, [&] { return Input.Opens == 2; });
  EXPECT_THAT(Input.Opened, ElementsAre("card@48000/256", "card@22050/256"));
}

TEST_F(LostInput, SilenceIsToldWhileItLasts) {
  const struct {
    std::int16_t Left, Right;  ///< what the channels stand at; 1 is a signal
    const char* Told;
  } rows[] = {{0, 0, "\"Card\" delivers silence: is the right input chosen"},
              {-7, 300, "\"Card\" delivers silence"},
              {0, 1, "The left channel of \"Card\" is silent"},
              {1, 0, "The right channel of \"Card\" is silent"},
              {1, 1, ""}};
  ASSERT_TRUE(Cycle.Start());
  // 256 frames at 48000 Hz are 5 1/3 ms.
  const auto feed = [this](std::int16_t left, std::int16_t right, int blocks) {
    for (int n = 0; n < blocks; ++n) {
      std::vector<std::int16_t> block = RunBench::Tone(1024, 48000, 1000);
      for (std::size_t i = 0; i < block.size(); i += 2) {
        if (left != 1) block[i] = left;
        if (right != 1) block[i + 1] = right;
      }
      Input.Shared->Blocks.push_back(std::move(block));
      Cycle.Step();
      Bench.Time.Advance(5333us);
    }
  };
  for (const auto& row : rows) {
    feed(row.Left, row.Right, 370);
    EXPECT_EQ(Cycle.Warning(), "") << "not for a moment's silence";
    feed(row.Left, row.Right, 10);
    EXPECT_THAT(Cycle.Warning(), testing::StartsWith(row.Told));
    EXPECT_EQ(Cycle.Warning().empty(), row.Left == 1 && row.Right == 1);
    feed(1, 1, 1);
    EXPECT_EQ(Cycle.Warning(), "");
  }
  feed(0, 0, 400);
  EXPECT_THAT(Bench.Sink.DisplayLevel, testing::Each(kEmptyLevel)) << "not what was there before";
  Input.Shared->Warning = "Muted";
  EXPECT_EQ(Cycle.Warning(), "Muted") << "the cause before the effect";
}

}  // namespace
}  // namespace spectrino
