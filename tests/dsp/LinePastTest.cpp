// The waterfall's past, by what an operator reads from it: level, frequency, time, and how much memory it
// takes.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <random>
#include <vector>

#include "dsp/LineJoin.h"
#include "dsp/LinePast.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;
using Utc = std::chrono::system_clock::time_point;

const Utc kBegin = std::chrono::sys_days(std::chrono::year(2026) / 11 / 23) + 12h;

PastLine LineAt(Utc taken, double leftMHz = 14.0, double rightMHz = 14.1) {
  return {.FirstMHz = leftMHz, .LastMHz = rightMHz, .TakenUtc = taken};
}

float LevelAt(const KeptLine& line, double mhz) {
  const double step = (line.Line.LastMHz - line.Line.FirstMHz) / static_cast<double>(line.Bytes.size() - 1);
  const auto column = static_cast<std::size_t>(std::lround((mhz - line.Line.FirstMHz) / step));
  return line.Codes.LevelOf(line.Bytes[column]);
}

TEST(LinePastTest, ALevelComesBackWithinHalfADecibel) {
  std::mt19937 random(3);
  // A quiet band, one with a strong station, and heights of a radio's own scope.
  for (const auto& [low, high, within] :
       {std::tuple(-140.0F, -60.0F, 0.26F), std::tuple(-160.0F, 10.0F, 0.51F),
        std::tuple(0.0F, 160.0F, 0.0F)}) {
    LinePast past;
    std::uniform_real_distribution<float> level(low, high);
    std::vector<float> line(475);
    for (float& value : line) value = within == 0 ? std::round(level(random)) : level(random);
    line[7] = kUndrawnLevel;
    line[8] = kEmptyLevel;
    line[9] = std::nanf("");
    line[474] = high;
    past.Add(line, LineAt(kBegin));
    const KeptLine kept = *past.At(0);
    for (std::size_t i = 10; i < line.size(); ++i)
      ASSERT_NEAR(kept.Codes.LevelOf(kept.Bytes[i]), line[i], within) << i;
    EXPECT_EQ(kept.Codes.LevelOf(kept.Bytes[7]), kUndrawnLevel);
    EXPECT_LE(kept.Codes.LevelOf(kept.Bytes[8]), low);
    EXPECT_LE(kept.Codes.LevelOf(kept.Bytes[9]), low);
  }
}

struct Source {
  int Points;
  int LinesPerSecond;
};
class HalfHour : public testing::TestWithParam<Source> {};

/// A dial is turned now and then; a signal of a single line stays where and when it was, in 64 MiB.
TEST_P(HalfHour, KeepsAShortSignalItsTimeAndTheBudget) {
  const Source& source = GetParam();
  LinePast past;
  std::vector<float> line(static_cast<std::size_t>(source.Points), -130);
  const int seconds = 32 * 60;
  const int lines = seconds * source.LinesPerSecond;
  const double pointMHz = 0.1 / (source.Points - 1);
  struct Signal {
    double MHz;
    Utc Taken;
  };
  std::vector<Signal> signals;
  for (int i = 0; i < lines; ++i) {
    const Utc taken = kBegin + std::chrono::milliseconds(1000LL * i / source.LinesPerSecond);
    const double leftMHz = 14.0 + i / (source.LinesPerSecond * 600) * 0.003;
    const bool signal = i % (source.LinesPerSecond * 61) == source.LinesPerSecond * 30;
    const auto point = static_cast<std::size_t>(source.Points * (0.2 + 0.6 * i / lines));
    if (signal) {
      line[point] = -60.5F;
      signals.push_back({leftMHz + static_cast<double>(point) * pointMHz, taken});
    }
    past.Add(line, LineAt(taken, leftMHz, leftMHz + 0.1));
    line[point] = -130;
  }
  EXPECT_LE(past.Bytes(), LinePast::kMostBytes);
  const Utc now = past.At(0)->Line.TakenUtc;
  const Utc oldest = past.At(past.Count() - 1)->Line.TakenUtc;
  EXPECT_GE(now - oldest, 30min - 5s);
  EXPECT_LE(now - oldest, 31min);
  for (const Signal& signal : signals) {
    if (signal.Taken < oldest) continue;
    int found = 0;
    for (int age = 0; age < past.Count(); ++age) {
      const KeptLine kept = *past.At(age);
      if (LevelAt(kept, signal.MHz) < -100) continue;
      ++found;
      EXPECT_EQ(LevelAt(kept, signal.MHz), -60.5F);
      EXPECT_GE(kept.Line.TakenUtc, signal.Taken);
      EXPECT_LE(kept.Line.TakenUtc - signal.Taken, 1s) << (now - signal.Taken) / 1min << " min ago";
    }
    EXPECT_EQ(found, 1) << (now - signal.Taken) / 1min << " min ago";
  }
  // What was on the screen is found again by its number.
  for (int age = 0; age < past.Count(); age += 97) EXPECT_EQ(past.AgeOf(past.At(age)->Line.Number), age);
  EXPECT_FALSE(past.AgeOf(1)) << "gone";
  EXPECT_FALSE(past.AgeOf(static_cast<std::uint64_t>(lines) + 1)) << "never came";
}

INSTANTIATE_TEST_SUITE_P(Sources, HalfHour,
                         testing::Values(Source{65536, 5}, Source{8192, 50}, Source{475, 30},
                                         Source{256, 200}));

/// Whatever a radio sends, budget and order hold: another grid each line, jumps of band and clock.
TEST(LinePastTest, SurvivesLinesThatNeverFitTogether) {
  LinePast past;
  std::mt19937 random(5);
  std::vector<float> line(5000);
  for (int i = 0; i < 40000; ++i) {
    const auto below = [&random](unsigned count) { return random() % count; };
    const double left = 1.0 + below(40);
    past.Add(std::span<const float>(line).first(below(5000)),
             LineAt(kBegin + std::chrono::seconds(below(100000)), left, left + below(3) * 0.05));
  }
  EXPECT_LE(past.Bytes(), LinePast::kMostBytes);
  for (int age = 1; age < past.Count(); ++age)
    ASSERT_LT(past.At(age)->Line.Number, past.At(age - 1)->Line.Number);
}

TEST(LineJoinTest, LinesBecomeRowsByMaximumOrAverage) {
  for (const bool average : {false, true}) {
    LineJoin join;
    join.Set(3, average);
    std::vector<float> rows;
    for (const float level : {-100.0F, -90.0F, -110.0F, -50.0F}) {
      const std::vector<float> line{level, level == -90 ? kUndrawnLevel : level};
      const auto row = join.Add(line);
      if (join.Began()) rows.clear();
      rows.assign(row.begin(), row.end());
      if (level == -110) {
        EXPECT_EQ(rows, average ? std::vector<float>({-100, -103.333336F}) : std::vector<float>({-90, -100}));
      }
    }
    EXPECT_EQ(rows, std::vector<float>({-50, -50})) << "the fourth begins a row";
  }
}

}  // namespace
}  // namespace spectrino
