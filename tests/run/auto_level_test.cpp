// The plot's levels when they follow the noise by themselves, and who takes them over.
#include <gtest/gtest.h>

#include <random>

#include "run/RunBench.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

/// A radio's lines of 400 points over 50 kHz: noise of 3 dB, and what is put into it.
struct LevelBench : RunBench {
  LevelBench() {
    State.Settings.AutoLevel = true;
    State.Settings.Source.Id.Kind = SourceKind::K4D;
    Radio.Next = SpectrumLine{Line, 400, 1, 14.05, 14.075, 14.1, -140, -40, 0, {}, {}};
    EXPECT_TRUE(Cycle.Start());
  }
  /// So long, ten lines a second; peak: of a signal that is keyed four times a second, or of none.
  LevelScale Show(std::chrono::milliseconds time, float noise, float peak = -300) {
    std::uniform_real_distribution<float> spread(-1.5F, 1.5F);
    SpectrumLine& line = Radio.Next;
    for (auto end = Time.Now() + time; Time.Now() < end; Time.Advance(95ms)) {
      const bool down = ++line.Serial / 2 % 2 == 0;
      line.Levels.assign(401, noise);
      for (float& level : line.Levels) level += spread(random_);
      for (std::size_t i = 200; i < 204 && down; ++i) line.Levels[i] = std::max(line.Levels[i], peak);
      line.Levels[0] = kKeepLevel;
      Radio.Ready = true;
      Step();
      if (seen_ != Sink.Scale.Levels) ++Changes;
      seen_ = Sink.Scale.Levels;
    }
    return Sink.Scale.Levels;
  }
  /// How often the scale changed since the last call.
  int TakeChanges() { return std::exchange(Changes, 0); }

  std::vector<float> Line;
  int Changes = 0;

 private:
  LevelScale seen_;
  std::mt19937 random_{5};
};

TEST(AutoLevel, StandsAtOnceAndDoesNotPump) {
  LevelBench bench;
  EXPECT_EQ(bench.Show(100ms, -128), (LevelScale{-135, -85, 50, 10})) << "the first line, 50 dB at least";
  bench.TakeChanges();
  EXPECT_EQ(bench.Show(10s, -128, -62), (LevelScale{-135, -55, 80, 10})) << "the strongest is below the top";
  EXPECT_LE(bench.TakeChanges(), 6) << "in steps of 5 dB";
  for (int over = 0; over < 10; ++over) {
    bench.Show(6s, -128, -62);
    bench.Show(4s, -127);
  }
  EXPECT_EQ(bench.TakeChanges(), 0) << "keyed signals come and go";
  EXPECT_EQ(bench.Show(60s, -128), (LevelScale{-135, -85, 50, 10})) << "gone for good";
  bench.TakeChanges();
  bench.State.Radio.Transmitting = true;
  bench.Show(20s, -70);
  bench.State.Radio.Transmitting = false;
  EXPECT_EQ(bench.TakeChanges(), 0) << "one's own transmitter";
  bench.Show(20s, -118);
  EXPECT_EQ(bench.TakeChanges(), 1) << "the noise rose by 10 dB: as far as it must";
  EXPECT_EQ(bench.Sink.Colours, (LevelRange{-122, -77}));
}

TEST(AutoLevel, ARetuneBeyondTheSpanStandsAtOnceAndOneWithinDoesNot) {
  LevelBench bench;
  bench.Show(5s, -128);
  SpectrumLine& line = bench.Radio.Next;
  for (double* edge : {&line.LeftMHz, &line.CentreMHz, &line.RightMHz}) *edge += 0.04;
  EXPECT_EQ(bench.Show(100ms, -100).BottomLevel, -135);
  for (double* edge : {&line.LeftMHz, &line.CentreMHz, &line.RightMHz}) *edge -= 7;
  EXPECT_EQ(bench.Show(100ms, -100), (LevelScale{-110, -60, 50, 10}));
}

TEST(AutoLevel, KeepsToTheHeightsOfAScope) {
  LevelBench bench;
  bench.Radio.Levels = {0, 160, 160, 20, false};
  EXPECT_EQ(bench.Show(100ms, 1), (LevelScale{0, 100, 100, 20, false})) << "hardly any noise";
  EXPECT_EQ(bench.Show(6s, 66, 150), (LevelScale{50, 160, 110, 20, false}));
  EXPECT_EQ(bench.Sink.Colours, (LevelRange{60, 150})) << "two heights to the decibel";
  EXPECT_EQ(bench.Show(3s, 150), (LevelScale{60, 160, 100, 20, false})) << "no height is above 160";
}

TEST(AutoLevel, IsTakenOverFromWhereItStands) {
  RunBench bench;
  bench.State.Settings.AutoLevel = true;
  bench.State.Radio.MainFreqMHz = 14.1;
  const auto levels = [&] { return bench.Sink.Scale.Levels; };
  ASSERT_TRUE(bench.Cycle.Start());
  bench.Feed(6000, 3);
  for (int i = 0; i < 3; ++i) bench.Step();
  const LevelScale shown = levels();
  const PanSettings& settings = bench.State.Settings;
  EXPECT_NE(shown, (LevelScale{-143, -3, 140, 20})) << "what reference and range make of it";
  EXPECT_EQ(settings.RefLevel, -60);
  EXPECT_EQ(settings.BandRef[5], -60) << "the band's own levels are the operator's";
  bench.Cycle.Scale().ReferenceUp();
  EXPECT_FALSE(settings.AutoLevel);
  EXPECT_EQ(levels().BottomLevel, shown.BottomLevel + 3);
  EXPECT_NEAR(levels().TopLevel - levels().BottomLevel, shown.TopLevel - shown.BottomLevel, 10);
  EXPECT_EQ(settings.BandRef[5], settings.RefLevel);

  // Switched off by hand it gives back what the operator had, and the picture is the plain one.
  const LevelScale byHand = levels();
  bench.Cycle.Scale().SetAutoLevel(true);
  bench.Feed(6000, 2);
  bench.Step();
  EXPECT_NE(levels(), byHand);
  bench.Cycle.Scale().SetAutoLevel(false);
  bench.Feed(6000);
  bench.Step();
  EXPECT_EQ(levels(), byHand);
  EXPECT_EQ(bench.Sink.Colours, (LevelRange{byHand.BottomLevel, byHand.TopLevel}));
}

}  // namespace
}  // namespace spectrino
