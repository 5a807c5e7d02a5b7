#include "dsp/Spectrum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <random>
#include <vector>

#include "dsp/Levels.h"
#include "dsp/kernels/Kernels.h"
#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

constexpr IqBalance kNoCorrection{};

// The plain transform that the kernels are measured against: every step as it is thought, none of it fast.
using Points = std::vector<std::complex<double>>;

/// Positive exponent; even and odd points apart, and put together.
Points Transform(const Points& points) {
  if (points.size() == 1) return points;
  const std::size_t half = points.size() / 2;
  Points even(half), odd(half), result(points.size());
  for (std::size_t i = 0; i < half; ++i) {
    even[i] = points[2 * i];
    odd[i] = points[2 * i + 1];
  }
  even = Transform(even);
  odd = Transform(odd);
  for (std::size_t i = 0; i < half; ++i) {
    const auto turned =
        std::polar(1.0, std::numbers::pi * static_cast<double>(i) / static_cast<double>(half)) * odd[i];
    result[i] = even[i] + turned;
    result[i + half] = even[i] - turned;
  }
  return result;
}

/// Magnitudes, lowest frequency first, of one block of N/4 stereo frames.
std::vector<double> ReferenceMagnitudes(std::span<const std::int16_t> samples, int bits, WindowType type,
                                        IqSign sign, const IqBalance& balance, bool smoothZeroHz) {
  const std::size_t points = std::size_t{1} << bits;
  const std::vector<double> window = BuildWindowTable(type, static_cast<int>(points));
  Points block(points);
  const double gain = 1 + balance.IqGainCorrection;
  for (std::size_t i = 0; i < points / 4; ++i) {
    const double left = samples[2 * i] * window[2 * i];
    const double right = (samples[2 * i + 1] * window[2 * i] + balance.IqPhaseCorrection * left) * gain;
    block[i] = sign == IqSign::Plus ? std::complex(left, right) : std::complex(right, left);
  }
  const Points spectrum = Transform(block);
  std::vector<double> magnitudes(points);
  double sum = 0;
  for (std::size_t i = 0; i < points; ++i) {
    magnitudes[i] = std::abs(spectrum[(i + points / 2) % points]);
    sum += magnitudes[i];
  }
  constexpr int kHalfWidth[] = {0, 10, 12, 13, 15, 15, 20, 40, 70};
  const auto half = static_cast<std::size_t>(kHalfWidth[bits - 8]);
  for (std::size_t i = points / 2 - half; smoothZeroHz && i <= points / 2 + half; ++i) {
    magnitudes[i] = sum / static_cast<double>(points);
  }
  return magnitudes;
}

std::vector<std::int16_t> Noise(int bits) {
  std::mt19937 random(static_cast<unsigned>(bits));
  std::vector<std::int16_t> samples(std::size_t{1} << (bits - 1));
  for (auto& sample : samples) sample = static_cast<std::int16_t>(random());
  return samples;
}

/// left = amplitude cos, right = amplitude sin of a tone at cycles per N points.
std::vector<std::int16_t> Tone(int bits, double cycles, double amplitude) {
  std::vector<std::int16_t> samples(std::size_t{1} << (bits - 1));
  for (std::size_t i = 0; i < samples.size() / 2; ++i) {
    const double angle = 2 * std::numbers::pi * cycles * static_cast<double>(i) / (1 << bits);
    samples[2 * i] = static_cast<std::int16_t>(std::lround(amplitude * std::cos(angle)));
    samples[2 * i + 1] = static_cast<std::int16_t>(std::lround(amplitude * std::sin(angle)));
  }
  return samples;
}

struct Machine {
  Machine(const Kernels& kernels, int bits, WindowType window) : spectrum(kernels), power(1U << bits) {
    spectrum.Prepare(bits, window);
  }
  const std::vector<double>& Run(const std::vector<std::int16_t>& samples, IqSign sign = IqSign::Plus,
                                 const IqBalance& balance = kNoCorrection, bool smooth = false) {
    spectrum.ComputeSpectrum(samples, sign, balance, smooth, power);
    return power;
  }
  Spectrum spectrum;
  std::vector<double> power;
};

class SpectrumByKernel : public ::testing::TestWithParam<const Kernels*> {};
INSTANTIATE_TEST_SUITE_P(Kernels, SpectrumByKernel,
                         ::testing::ValuesIn(UsableKernels().begin(), UsableKernels().end()),
                         [](const auto& test) { return std::string(test.param->Name); });

TEST_P(SpectrumByKernel, AgreesWithThePlainTransform) {
  const IqBalance corrected{.IqGainCorrection = 0.031, .IqPhaseCorrection = -0.12};
  for (int bits = 8; bits <= 16; ++bits) {
    const auto samples = Noise(bits);
    for (int window = 0; window <= 5; ++window) {
      // Long transforms differ from one another by sign and correction only at the input: take them in turn.
      for (int variant = 0; variant < 4; ++variant) {
        if (bits > 12 && variant != window % 4) continue;
        const auto type = static_cast<WindowType>(window);
        const IqSign sign = variant % 2 == 0 ? IqSign::Plus : IqSign::Minus;
        const IqBalance balance = variant < 2 ? kNoCorrection : corrected;
        const bool smooth = variant == 3;
        SCOPED_TRACE(::testing::Message() << bits << " bits, window " << window << ", variant " << variant);
        Machine machine(*GetParam(), bits, type);
        machine.Run(samples, sign, balance, smooth);
        const auto expected = ReferenceMagnitudes(samples, bits, type, sign, balance, smooth);
        double error = 0;
        for (std::size_t i = 0; i < expected.size(); ++i) {
          error = std::max(error, std::abs(std::sqrt(machine.power[i]) - expected[i]));
        }
        ASSERT_LT(error, 1e-12 * *std::ranges::max_element(expected));
      }
    }
  }
}

TEST_P(SpectrumByKernel, LevelsAreTenLogarithmsOfPower) {
  std::vector<double> power = {0, 5e-324, 1, 0.5, 2, std::sqrt(0.5), std::sqrt(2.0), 1.41421, 1e-30, 3.1e19};
  std::mt19937 random(7);
  std::uniform_real_distribution<double> exponent(-300, 300);
  while (power.size() < 4099) power.push_back(std::pow(10.0, exponent(random)));
  std::vector<float> levels(power.size());
  GetParam()->Levels(power.data(), -12.5F, levels.data(), static_cast<int>(levels.size()));
  EXPECT_EQ(levels[0], kKeepLevel);
  EXPECT_EQ(levels[1], kKeepLevel);
  for (std::size_t i = 2; i < power.size(); ++i) {
    ASSERT_NEAR(levels[i], 10 * std::log10(power[i]) - 12.5, 0.001) << power[i];
  }
}

TEST(Spectrum, ALevelStaysWhereItIsWhateverTheSize) {
  for (int window = 0; window <= 5; ++window) {
    const auto type = static_cast<WindowType>(window);
    std::vector<float> peaks;
    for (int bits = 8; bits <= 16; ++bits) {
      Machine machine(BestKernels(), bits, type);
      std::vector<float> levels(std::size_t{1} << bits);
      PowerToLevels(machine.Run(Tone(bits, (1 << bits) / 8, 20000)), LevelOffsetDb(type, bits), levels);
      peaks.push_back(*std::ranges::max_element(levels));
    }
    // 6 dB are taken off for each doubling that adds 6.02 dB; the shortest window weighs its ends
    // differently.
    EXPECT_LT(*std::ranges::max_element(peaks) - *std::ranges::min_element(peaks), 0.25) << window;
    // 20 log10(20000 * 1024 points) of an unwindowed tone at N = 4096, less 150.
    if (type == WindowType::None) {
      EXPECT_NEAR(peaks[4], -3.77, 0.01);
    }
  }
}

TEST(Spectrum, CorrectionRemovesTheImageOfAnUnbalancedReceiver) {
  // The right channel is 10 % weak and takes 5 % of the left one in.
  auto samples = Tone(12, 300, 20000);
  for (std::size_t i = 0; i < samples.size(); i += 2) {
    samples[i + 1] = static_cast<std::int16_t>(std::lround(0.9 * samples[i + 1] + 0.05 * samples[i]));
  }
  Machine machine(BestKernels(), 12, WindowType::BlackmanHarris);
  const auto image = [&] { return 10 * std::log10(machine.power[2048 + 300] / machine.power[2048 - 300]); };
  machine.Run(samples);
  EXPECT_GT(image(), -30);
  machine.Run(samples, IqSign::Plus, {.IqGainCorrection = 1 / 0.9 - 1, .IqPhaseCorrection = -0.05});
  EXPECT_LT(image(), -80);
}

TEST(WindowTable, SpansTwoPeriodsOverTheFrame) {
  const auto flat = BuildWindowTable(WindowType::FlatTop, 4097);
  ASSERT_EQ(flat.size(), 4098U);
  EXPECT_NEAR(flat[0], 0.004, 1e-12);
  EXPECT_NEAR(flat[1024], 4.64, 1e-12);
  EXPECT_NEAR(flat[2048], 0.004, 1e-12);
  EXPECT_NEAR(flat[3072], 4.64, 1e-12);
  EXPECT_NEAR(BuildWindowTable(WindowType::Hamming, 4097)[1024], 1.0, 1e-12);
  EXPECT_NEAR(BuildWindowTable(WindowType::BlackmanNuttall, 4097)[2048], 0.0003895, 1e-9);
}

}  // namespace
}  // namespace spectrino
