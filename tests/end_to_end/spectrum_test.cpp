// From a real sound server to levels: the tone's bin, its level, and which side of the centre it stands on.
#include <cmath>
#include <numbers>

#include "capture/AudioSource.h"
#include "end_to_end/sound_bench.h"

namespace spectrino {
namespace {

constexpr int kFftBits = 13;
constexpr int kPoints = 1 << kFftBits;
constexpr double kAmplitude = 3000;

// A tone above the displayed centre, in the middle of a bin: L = cos, R = -sin.
Samples MakeTone(int bin, double seconds, int rateHz) {
  Samples tone(static_cast<std::size_t>(seconds * rateHz) * 2);
  for (std::size_t i = 0; i < tone.size() / 2; ++i) {
    const double phase = 2 * std::numbers::pi * bin / kPoints * static_cast<double>(i % kPoints);
    tone[2 * i] = static_cast<std::int16_t>(std::lround(kAmplitude * std::cos(phase)));
    tone[2 * i + 1] = static_cast<std::int16_t>(std::lround(-kAmplitude * std::sin(phase)));
  }
  return tone;
}

struct ToneCase {
  int rateHz;
  int channelSign;
};

class ServerToSpectrum : public testing::TestWithParam<ToneCase> {};

TEST_P(ServerToSpectrum, AToneHasItsBinItsLevelAndItsSide) {
  const auto [rateHz, channelSign] = GetParam();
  constexpr int kBin = 1000;
  SoundBench bench;
  bench.Start(rateHz);
  if (HasFatalFailure()) return;
  const SystemClock clock;
  StageTimes times;
  AudioSource source(clock, times);
  CaptureSettings settings;
  settings.SampleRate = rateHz;
  settings.FftBits = kFftBits;
  settings.ChannelSign = channelSign;
  ASSERT_TRUE(source.OpenCapture(bench.Input, bench.Receiver(), settings, bench.Reason)) << bench.Reason;
  ASSERT_TRUE(bench.Server.Play(MakeTone(kBin, 2.5, rateHz), rateHz));

  // The window is one period of a quarter of the points, so a tone reaches amplitude * N / 4.
  const double expectedDb = 20 * std::log10(kAmplitude * kPoints / 4) - 150 - 6 * (kFftBits - 12);
  LineRequest request;
  request.RadioFreqMHz = 14.1;
  SpectrumLine line;
  int whole = 0;
  for (const Stopwatch watch; whole < 5 && watch.Elapsed() < 8s;) {
    const PollResult result = source.Poll(request, line);
    ASSERT_NE(result, PollResult::Failed) << source.Failure();
    if (result == PollResult::Pending) std::this_thread::sleep_for(1ms);
    if (result != PollResult::Line) continue;
    const auto peak = std::ranges::max_element(line.Levels);
    // Blocks of silence and the one in which the tone begins come first.
    if (std::abs(*peak - expectedDb) > 0.1) {
      ASSERT_EQ(whole, 0) << "the tone broke off at " << *peak << " dB";
      continue;
    }
    EXPECT_EQ(peak - line.Levels.begin(), kPoints / 2 + channelSign * kBin);
    ++whole;
  }
  EXPECT_EQ(whole, 5) << "no steady tone at " << expectedDb << " dB";
  EXPECT_NEAR(line.RightMHz - line.LeftMHz, rateHz / 1e6, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Rates, ServerToSpectrum,
                         testing::Values(ToneCase{48000, +1}, ToneCase{192000, +1}, ToneCase{48000, -1}));

}  // namespace
}  // namespace spectrino
