// Divisions of scope lines as radios send them, whole and damaged.
#include "civ/ScopeWave.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "civ/CivDoubles.h"
#include "civ/CivParser.h"

namespace spectrino::test {
namespace {

// Mode, centre or low edge, half span or high edge, out of range
const std::string kCentre = "00 0040071400 0050020000 00";  // 14.074 MHz +- 25 kHz
const std::string kFixed = "01 0000001400 0000351400 00";   // 14.000 to 14.350 MHz
const std::string kNarrow = "00 0040071400 0025000000 00";  // 14.074 MHz +- 2.5 kHz

struct Scope {
  explicit Scope(const std::string& id) { Reply("19 00 " + id); }
  void Reply(const std::string& body) {
    std::string frame;
    AppendHexText(frame, Bytes("FE FE E0 94" + body + "FD"));
    ParseCivFrame(frame, State, Panel);
  }
  CivState State;
  RecordingPanel Panel;
};

std::string Bcd(std::size_t number) {
  return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

/// A line as radios divide it for a serial line: the header alone, then 50 points a division. One point alone
/// has the level, the one at peak.
std::vector<std::string> Divide(const std::string& header, std::size_t count, std::uint8_t level,
                                std::size_t peak = 300) {
  const std::string of = Bcd(1 + (count + 49) / 50);
  std::vector<std::string> divisions{"27 00 00 01" + of + header};
  for (std::size_t first = 0; first < count; first += 50) {
    std::vector<std::uint8_t> points(std::min<std::size_t>(50, count - first));
    if (peak - 1 - first < points.size()) points[peak - 1 - first] = level;
    divisions.push_back("27 00 00" + Bcd(divisions.size() + 1) + of);
    AppendHexText(divisions.back(), points);
  }
  return divisions;
}

TEST(ScopeWave, EachModelsLineOnTheDisplaysScale) {
  struct Case {
    const char* id;
    std::string header;
    std::size_t points, peak;
    std::uint8_t level;
    std::int16_t shown;
    double low, high;
    const char* panel;
  };
  const Case cases[] = {
      {"94", kCentre, 475, 1, 160, 160, 14.049, 14.099, "centre; span 3; FIX: 25.0k; list; "},
      {"94", kNarrow, 475, 475, 77, 77, 14.0715, 14.0765, "centre; span 0; FIX: 2.5k; list; "},
      {"A4", kFixed, 475, 50, 1, 1, 14.0, 14.35, "fixed; FIX: 175.0k; label; "},
      {"98", kCentre, 689, 689, 200, 160, 14.049, 14.099, "centre; span 3; FIX: 25.0k; list; "},
      {"B2", kCentre, 689, 51, 100, 80, 14.049, 14.099, "centre; span 3; FIX: 25.0k; list; "},
  };
  for (const Case& line : cases) {
    SCOPED_TRACE(std::string(line.id) + " " + line.panel);
    Scope scope(line.id);
    for (const std::string& division : Divide(line.header, line.points, line.level, line.peak)) {
      EXPECT_EQ(scope.State.ScopeSerial, 0U);
      scope.Reply(division);
    }
    std::vector<std::int16_t> levels(line.points + 1);
    levels[line.peak] = line.shown;
    EXPECT_EQ(scope.State.ScopeSerial, 1U);
    EXPECT_EQ(scope.State.ScopeLevels, levels);
    EXPECT_DOUBLE_EQ(scope.State.ScopeLineLowMHz, line.low);
    EXPECT_DOUBLE_EQ(scope.State.ScopeLineHighMHz, line.high);
    EXPECT_NEAR(scope.State.ScopeGridHz[20], 2e6 * (line.high - line.low), 1e-3);
    EXPECT_EQ(scope.Panel.Told, line.panel);
  }
}

TEST(ScopeWave, ADamagedLineIsDroppedAndTheNextOneIsWhole) {
  const auto good = Divide(kCentre, 475, 10);
  const auto next = Divide(kFixed, 475, 20);
  std::vector<std::vector<std::string>> damaged;
  for (std::size_t i = 0; i < good.size(); ++i) {
    auto lost = good;
    lost.erase(lost.begin() + static_cast<std::ptrdiff_t>(i));
    damaged.push_back(lost);
    auto repeated = good;
    repeated.insert(repeated.begin() + static_cast<std::ptrdiff_t>(i), good[i]);
    // Division 1 twice is a line that began anew, and behind the last one the line is complete already.
    if (i != 0 && i + 1 != good.size()) damaged.push_back(repeated);
    auto swapped = good;
    std::swap(swapped[i], swapped[(i + 1) % good.size()]);
    damaged.push_back(swapped);
    auto cut = good;
    cut[i].resize(cut[i].size() - 2);
    damaged.push_back(cut);
    auto spliced = good;  // the end of one line and the head of the next lost: the length is right again
    if (i + 1 < good.size()) {
      spliced[i + 1] = "27 00 00 01 11" + kCentre.substr(0, 20);
      damaged.push_back(spliced);
    }
  }
  for (const auto& divisions : damaged) {
    Scope scope("94");
    for (const auto& division : divisions) scope.Reply(division);
    EXPECT_EQ(scope.State.ScopeSerial, 0U) << testing::PrintToString(divisions);
    for (const auto& division : next) scope.Reply(division);
    EXPECT_EQ(scope.State.ScopeSerial, 1U);
    EXPECT_EQ(scope.State.ScopeLevels[300], 20);
  }
}

TEST(ScopeWave, RepliesBetweenTheDivisionsDoNotMoveTheLine) {
  Scope scope("94");
  for (const auto& division : Divide(kCentre, 475, 10)) {
    scope.Reply(division);
    scope.Reply("27 15 00 00 00 05 00 00");  // half a span of another size
    scope.Reply("27 14 00 01");
    scope.Reply("27 1E 01 01 00 00 00 07 00 00 00 20 07 00");
  }
  ASSERT_EQ(scope.State.ScopeSerial, 1U);
  EXPECT_DOUBLE_EQ(scope.State.ScopeLineLowMHz, 14.049);
  EXPECT_DOUBLE_EQ(scope.State.ScopeLineHighMHz, 14.099);
  EXPECT_DOUBLE_EQ(scope.State.ScopeGridHz[10], 50'000);
}

}  // namespace
}  // namespace spectrino::test
