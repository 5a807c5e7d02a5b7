// What an operator would see of the demo band, measured with a plain DFT.
#include "sim/DemoBand.h"

#include <gmock/gmock.h>

#include <cmath>
#include <complex>

namespace spectrino {
namespace {

using Samples = std::vector<std::int16_t>;
using testing::AllOf;
using testing::Ge;
using testing::Le;

Samples Rendered(DemoBand& band, double fromS, int rateHz, std::size_t frames, double centreMHz) {
  Samples block(2 * frames);
  band.Render(static_cast<std::uint64_t>(fromS * rateHz), centreMHz, block);
  return block;
}

/// Level that the spectrum shows offsetHz right of the centre: positive exponent over (left, right), Hann
/// window, scaled to the level of a steady tone at 8192 points.
double LevelAt(const Samples& block, int rateHz, double offsetHz) {
  const std::size_t frames = block.size() / 2;
  const auto turn = std::polar(1.0, 2 * M_PI * offsetHz / rateHz);
  const auto windowTurn = std::polar(1.0, 2 * M_PI / static_cast<double>(frames));
  std::complex<double> phasor = 1;
  std::complex<double> windowPhasor = 1;
  std::complex<double> sum = 0;
  for (std::size_t n = 0; n < frames; ++n) {
    const std::complex<double> sample(block[2 * n], block[2 * n + 1]);
    sum += (1 - windowPhasor.real()) * sample * phasor;
    phasor *= turn;
    windowPhasor *= windowTurn;
  }
  return 20 * std::log10(std::abs(sum) / static_cast<double>(frames) * 2048 + 1e-9) - 156;
}

double StrongestIn(const Samples& block, int rateHz, double fromHz, double toHz, double stepHz) {
  double strongest = -500;
  for (double hz = fromHz; hz <= toHz; hz += stepHz) {
    strongest = std::max(strongest, LevelAt(block, rateHz, hz));
  }
  return strongest;
}

class DemoBandAtRate : public testing::TestWithParam<int> {};

// The band has a carrier at 4.6 kHz of every 200 kHz, with nothing at its mirror image.
TEST_P(DemoBandAtRate, CarrierStandsAtItsFrequencyOnTheRightSide) {
  const int rate = GetParam();
  DemoBand band(rate, 1);
  const auto frames = static_cast<std::size_t>(rate / 10);
  for (const double centreMHz : {0.0, 14.0, 14.2, 14.2036, 14.2070, 1296.2}) {
    const double offsetHz = std::remainder(4600 - centreMHz * 1e6, 200000.0);
    const Samples block = Rendered(band, 3, rate, frames, centreMHz);
    EXPECT_GT(LevelAt(block, rate, offsetHz), -100) << centreMHz;
    EXPECT_LT(LevelAt(block, rate, -offsetHz), -112) << centreMHz;
    EXPECT_LT(LevelAt(block, rate, offsetHz + 100), -112) << centreMHz;
  }
}

TEST_P(DemoBandAtRate, WeakBirdieStaysAtZeroHzWhileTheNoiseStaysBelowIt) {
  const int rate = GetParam();
  DemoBand band(rate, 1);
  for (const double centreMHz : {14.063, 7.0722}) {  // free frequencies
    const Samples block = Rendered(band, 1, rate, 8192, centreMHz);
    EXPECT_NEAR(LevelAt(block, rate, 0), -98, 2.5);
    double power = 0;
    for (int i = 0; i < 64; ++i) power += std::pow(10.0, LevelAt(block, rate, 200 + 9.0 * i) / 10);
    // 8192 frames instead of 2048 lower the noise by 6 dB, the window raises it by 1.8 dB.
    EXPECT_NEAR(10 * std::log10(power / 64) + 6 - 1.8, -122.5, 2);
  }
}

INSTANTIATE_TEST_SUITE_P(AllRates, DemoBandAtRate, testing::ValuesIn(kSoundRatesHz));

TEST(DemoBand, SomethingIsOnTheAirWhereverTheRadioIs) {
  constexpr int kRate = 22050;
  DemoBand band(kRate, 1);
  double strongestOfAll = -500;
  for (double centreMHz = 21.0; centreMHz < 21.2; centreMHz += 0.01) {
    double strongest = -500;
    for (double second = 0; second < 30; second += 3.7) {
      const Samples block = Rendered(band, second, kRate, 1024, centreMHz);
      // What the lowest rate shows around the centre, less the birdie.
      strongest = std::max(
          {strongest, StrongestIn(block, kRate, -5400, -600, 25), StrongestIn(block, kRate, 600, 5400, 25)});
    }
    EXPECT_GT(strongest, -98) << centreMHz;
    strongestOfAll = std::max(strongestOfAll, strongest);
  }
  EXPECT_LT(strongestOfAll, -35);
  EXPECT_GT(strongestOfAll, -60);
}

TEST(DemoBand, SameSeedIsTheSameBandHoweverItIsCut) {
  constexpr double kCentreMHz = 14.074;
  DemoBand whole(96000, 7);
  DemoBand pieces(96000, 7);
  DemoBand other(96000, 8);
  const Samples expected = Rendered(whole, 5, 96000, 9000, kCentreMHz);

  // Later frames first, in odd lengths, and with the same moment on another frequency in between.
  Samples got(expected.size());
  const std::uint64_t first = 5 * 96000;
  pieces.Render(first + 4001, kCentreMHz, std::span(got).subspan(2 * 4001));
  Samples elsewhere(200);
  pieces.Render(first, 3.5, elsewhere);
  for (std::size_t frame = 0; frame < 4001; frame += 127) {
    pieces.Render(first + frame, kCentreMHz,
                  std::span(got).subspan(2 * frame, 2 * std::min<std::size_t>(127, 4001 - frame)));
  }
  EXPECT_EQ(got, expected);
  EXPECT_NE(Rendered(other, 5, 96000, 9000, kCentreMHz), expected);
}

TEST(DemoBand, VoicesTalkInTheSidebandOfTheBandAndPause) {
  constexpr int kRate = 11025;
  for (const auto& [centreMHz, side] : {std::pair{14.151, 1}, {7.151, -1}}) {
    DemoBand band(kRate, 1);
    int loud = 0, silent = 0;
    for (double second = 0; second < 40; second += 0.25) {
      const Samples block = Rendered(band, second, kRate, 512, centreMHz);
      const auto voice = [&](int half) {
        return StrongestIn(block, kRate, std::min(300 * half, 2700 * half), std::max(300 * half, 2700 * half),
                           20);
      };
      EXPECT_LE(std::max({voice(-side), StrongestIn(block, kRate, 2900, 3500, 20),
                          StrongestIn(block, kRate, -3500, -2900, 20)}),
                -95)
          << second;
      loud += voice(side) > -85 ? 1 : 0;
      silent += voice(side) < -105 ? 1 : 0;
    }
    EXPECT_THAT(loud, AllOf(Ge(40), Le(140)));
    EXPECT_THAT(silent, AllOf(Ge(55), Le(110)));
  }
}

}  // namespace
}  // namespace spectrino
