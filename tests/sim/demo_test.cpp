// The demo band: where signals are, that they keep still and in step, and that playing keeps time.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>

#include "fakes/FakeClock.h"
#include "sim/DemoBand.h"
#include "sim/DemoInput.h"
#include "sim/PacedStream.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

std::vector<std::int16_t> Render(double seconds, int rate, double centreMHz, std::size_t frames = 4096) {
  DemoBand band(7);
  std::vector<std::int16_t> block(2 * frames);
  band.Render(static_cast<std::uint64_t>(seconds * rate), rate, centreMHz, block);
  return block;
}

// Amplitude of a signal hz above the displayed centre: L = cos, R = -sin.
double AmplitudeAt(const std::vector<std::int16_t>& block, int rate, double hz) {
  std::complex<double> sum;
  for (std::size_t i = 0; i < block.size() / 2; ++i) {
    const std::complex<double> sample(block[2 * i], -block[2 * i + 1]);
    sum += sample * std::polar(1.0, -2 * std::numbers::pi * hz / rate * static_cast<double>(i));
  }
  return std::abs(sum) * 2 / static_cast<double>(block.size());
}

class DemoRates : public testing::TestWithParam<int> {};

TEST_P(DemoRates, TheCarrierStandsOnItsSideAndFollowsTheDial) {
  const int rate = GetParam();
  // The pattern puts a carrier at 9.3 kHz above every 200 kHz; look around the strongest moment of its
  // fading.
  const double strongest = (1.5 * std::numbers::pi - 9.3) / 0.21 + 2 * std::numbers::pi / 0.21;
  const auto above = Render(strongest, rate, 14.006);  // 3.3 kHz above this centre
  EXPECT_NEAR(AmplitudeAt(above, rate, 3300), 25, 5);
  EXPECT_LT(AmplitudeAt(above, rate, -3300), 8);
  const auto below = Render(strongest, rate, 14.0125);
  EXPECT_NEAR(AmplitudeAt(below, rate, -3200), 25, 5);
}

TEST_P(DemoRates, EveryWindowHasSignalsAboveTheNoise) {
  const int rate = GetParam();
  for (const double centreMHz : {0.0, 7.03, 14.074, 144.3}) {
    const auto early = Render(1, rate, centreMHz, 512);
    const auto late = Render(4, rate, centreMHz, 512);
    double strongest = 0;
    for (double hz = -0.45 * rate; hz < 0.45 * rate; hz += 25) {
      if (hz == 0) continue;
      strongest = std::max({strongest, AmplitudeAt(early, rate, hz), AmplitudeAt(late, rate, hz)});
    }
    EXPECT_GT(strongest, 3) << centreMHz;  // noise alone reaches 0.2
  }
}

INSTANTIATE_TEST_SUITE_P(All, DemoRates, testing::Values(11025, 48000, 192000));

TEST(DemoBand, BlocksJoinWithoutASeam) {
  const auto whole = Render(3, 48000, 14.1, 4096);
  const auto second = Render(3 + 2048.0 / 48000, 48000, 14.1, 2048);
  // Noise differs from block to block; the signals do not.
  for (const double hz : {-2600.0, 9300.0 - 100000, 1400.0}) {
    const std::vector<std::int16_t> tail(whole.begin() + 4096, whole.end());
    EXPECT_NEAR(AmplitudeAt(tail, 48000, hz), AmplitudeAt(second, 48000, hz), 0.5);
  }
  EXPECT_EQ(whole, Render(3, 48000, 14.1, 4096));
}

TEST(Morse, KeysAsItIsWritten) {
  const auto text = [](std::string_view message) {
    std::string marks;
    for (const bool down : MorseKeying(message)) marks += down ? '#' : '.';
    return marks;
  };
  EXPECT_EQ(text("CQ"), "###.#.###.#...###.###.#.###...");
  EXPECT_EQ(text("E E~"), "#.......#...");
}

TEST(DemoInput, DeliversInRealTimeAndSkipsWhatAPauseMissed) {
  FakeClock clock;
  DemoInput input(
      clock, [] { return 0.0; }, 7);
  std::string reason;
  const auto stream = input.Open(input.Devices()[0], 48000, 2048, reason);
  std::vector<std::int16_t> block(4096);
  int blocks = 0;
  for (int ms = 0; ms < 1000; ++ms) {
    clock.Advance(1ms);
    while (stream->TakeBlock(block) == BlockState::Done) ++blocks;
  }
  EXPECT_EQ(blocks, 23);  // 48000 / 2048 = 23.4
  clock.Advance(1h);
  for (blocks = 0; stream->TakeBlock(block) == BlockState::Done;) ++blocks;
  EXPECT_LE(blocks, 2);
}

}  // namespace
}  // namespace spectrino
