// The noise of lines as radios and cards send them: with signals, roll-off, gaps and rubbish in them.
#include "dsp/NoiseFloor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <vector>

#include "state/SpectrumLine.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;
using Levels = std::vector<float>;

/// Points of a transform: their powers are spread as those of noise are. -120 dB in the mean.
Levels Noise(std::size_t count) {
  std::mt19937 random(3);
  std::exponential_distribution<float> power(1);
  Levels levels(count);
  for (float& level : levels) level = -120 + 10 * std::log10(power(random) + 1e-6F);
  return levels;
}

void Fill(Levels& levels, double from, double to, float level) {
  const auto at = [&](double share) {
    return levels.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(levels.size()));
  };
  std::fill(at(from), at(to), level);
}

TEST(NoiseFloor, OfALineIsBlindToWhatIsNoNoise) {
  const struct {
    const char* What;
    std::function<void(Levels&)> Put;
    float Noise;
    float Strongest = -50;
  } cases[] = {{"carriers",
                [](Levels& l) {
                  for (std::size_t i = 40; i < l.size(); i += 100) l[i] = -50;
                },
                0},
               {"voices over half of it", [](Levels& l) { Fill(l, 0.2, 0.7, -70); }, 1.3F, -70},
               {"an input filter's ends",
                [](Levels& l) {
                  Fill(l, 0, 0.09, -150);
                  Fill(l, 0.91, 1, -150);
                },
                -0.5F, -112},
               {"no value",
                [](Levels& l) {
                  Fill(l, 0.1, 0.4, kUndrawnLevel);
                  Fill(l, 0.4, 0.6, kKeepLevel);
                },
                0, -112},
               {"rubbish",
                [](Levels& l) {
                  Fill(l, 0.1, 0.3, std::numeric_limits<float>::quiet_NaN());
                  Fill(l, 0.3, 0.5, std::numeric_limits<float>::infinity());
                  Fill(l, 0.5, 0.6, -std::numeric_limits<float>::infinity());
                },
                0, -112}};
  const float plain = MeasureLine(Noise(8192), 8, 0, 8192)->Noise;
  EXPECT_NEAR(plain, -117, 1) << "of the strongest of eight";
  EXPECT_NEAR(MeasureLine(Noise(8192), 0.2, 0, 8192)->Noise, -125.4, 1) << "magnified";
  for (const auto& line : cases) {
    Levels levels = Noise(8192);
    line.Put(levels);
    const auto found = MeasureLine(levels, 8, 0, 8192);
    ASSERT_TRUE(found) << line.What;
    EXPECT_NEAR(found->Noise - plain, line.Noise, 0.7) << line.What;
    EXPECT_NEAR(found->Strongest, line.Strongest, 3) << line.What;
  }
  Levels heights(476, 0);
  Fill(heights, 0.3, 0.4, 90);
  EXPECT_EQ(MeasureLine(heights, 0.8, 0, 476)->Noise, 0);
  EXPECT_EQ(MeasureLine(heights, 0.8, 0, 100)->Strongest, 0) << "what is not in view";
  EXPECT_FALSE(MeasureLine(Levels(8192, kEmptyLevel), 8, 0, 8192));
  EXPECT_FALSE(MeasureLine(Levels(3, -100), 1, 0, 3));
  EXPECT_FALSE(MeasureLine({}, 8, -5, 70000));
}

TEST(NoiseFloor, OverTimeLetsSignalsComeAndGo) {
  NoiseFloor floor;
  NoiseFloor::Time now{};
  const auto after = [&](std::chrono::milliseconds time, float noise) {
    for (const auto end = now + time; now < end; now += 100ms) floor.Add(noise, now);
    return floor.Level();
  };
  EXPECT_EQ(after(100ms, -120), -120) << "at once";
  after(10s, -120);
  EXPECT_EQ(after(5s, -116), -120) << "a band full of voices";
  EXPECT_EQ(after(9s, -116), -116) << "a noisier evening";
  EXPECT_EQ(after(1500ms, -121), -116);
  EXPECT_EQ(after(900ms, -60), -116) << "a burst";
  EXPECT_EQ(after(1500ms, -80), -80) << "another reference";
  floor.Restart();
  EXPECT_FALSE(floor.Known());
}

}  // namespace
}  // namespace spectrino
