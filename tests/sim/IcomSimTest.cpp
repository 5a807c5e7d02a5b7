// The simulated Icom on its bus: what it answers, what its scope sends, how fast, and how it fails.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>
#include <string>

#include "sim/icom/IcomRadio.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

SimBytes Hex(const std::string& text) {
  std::istringstream words(text);
  SimBytes bytes;
  for (std::string word; words >> word;)
    bytes.push_back(static_cast<std::uint8_t>(std::stoi(word, nullptr, 16)));
  return bytes;
}

/// A radio with a hand-cranked clock, and the controller E0 at the other end.
struct Bench {
  explicit Bench(const IcomSimSetup& setup = {}) : Radio(setup, SimTime{}) {}

  void Say(const std::string& command) {
    SimBytes frame{0xFE, 0xFE, Radio.Model().Address, 0xE0};
    const SimBytes body = Hex(command);
    frame.insert(frame.end(), body.begin(), body.end());
    frame.push_back(0xFD);
    Radio.Receive(frame, Now);
  }
  SimBytes Run(std::chrono::milliseconds time) {
    SimBytes out;
    for (const SimTime end = Now + time; Now < end; Now += 1ms) {
      const SimBytes sent = Radio.Transmit(Now);
      out.insert(out.end(), sent.begin(), sent.end());
    }
    return out;
  }
  SimBytes Ask(const std::string& command) {
    Say(command);
    return Run(20ms);
  }
  IcomRadio Radio;
  SimTime Now{};
};

/// Frames of a stream, cut at FE FE ... FD by the plainest rule: no help from the simulator's own splitter.
std::vector<SimBytes> Frames(const SimBytes& stream) {
  std::vector<SimBytes> frames;
  auto from = stream.begin();
  for (auto end = stream.begin(); (end = std::find(from, stream.end(), 0xFD)) != stream.end();
       from = end + 1) {
    frames.emplace_back(from, end + 1);
  }
  return frames;
}

struct Row {
  IcomSimKind Model;
  std::vector<std::string> Before;
  std::string Command;
  std::string Reply;  ///< what follows the addresses
};

TEST(IcomSim, AnswersAsItsModelDoes) {
  using enum IcomSimKind;
  const std::vector<Row> rows{
      {Ic7300, {}, "19 00", "19 00 94"},
      {Ic7610, {}, "19 00", "19 00 98"},
      {Ic7300, {"05 00 40 07 07 00"}, "03", "03 00 40 07 07 00"},
      {Ic7300, {}, "05 00 00 00 46 01", "FA"},  // 146 MHz: not received
      {Ic9700, {"05 00 00 00 46 01"}, "03", "03 00 00 00 46 01"},
      {Ic7300, {}, "05 00 0A 07 07 00", "FA"},  // not BCD
      {Ic7300, {}, "05 00 40 07 07", "FA"},     // too short
      {Ic7300, {"06 07 02"}, "04", "04 07 02"},
      {Ic7300, {}, "06 17", "FA"},  // DV
      {Ic705, {"06 17"}, "04", "04 17 01"},
      {Ic7300, {"06 01", "1A 06 01 02"}, "26 00", "26 00 01 01 02"},
      {Ic7300, {"25 01 00 00 10 07 00", "07 B0"}, "03", "03 00 00 10 07 00"},
      {Ic7300, {"07 01", "05 00 00 10 07 00", "07 00"}, "25 01", "25 01 00 00 10 07 00"},
      {Ic7300, {"0F 01", "25 01 00 00 10 07 00"}, "1C 03", "1C 03 00 00 10 07 00"},
      {Ic7300, {"05 00 00 10 07 00", "09", "05 00 00 12 07 00", "08"}, "03", "03 00 00 10 07 00"},
      {Ic7300, {"08", "05 00 00 10 07 00", "07"}, "03", "03 00 40 07 14 00"},  // the VFO kept its own
      {Ic7300, {"14 01 00 07"}, "14 01", "14 01 00 07"},
      {Ic7300, {}, "14 03 02 56", "FA"},
      {Ic7300, {"16 12 03"}, "16 12", "16 12 03"},
      {Ic7300, {}, "16 12 00", "FA"},
      {Ic7300, {"1A 07 01"}, "1A 07", "1A 07 01"},
      {Ic7300, {}, "16 65 01", "FA"},
      {Ic7610, {"16 65 01"}, "16 65", "16 65 01"},
      {Ic7610, {}, "11 12", "FB"},
      {Ic7300, {}, "11 12", "FA"},
      {Ic9700, {"11 10"}, "11", "11 10"},
      {Ic7300, {}, "0E A4", "FB"},
      {Ic7300, {}, "0E 13", "FB"},
      {Ic7300, {}, "0E 42", "FA"},
      {Ic7300, {"1A 05 00 71 01"}, "1A 05 00 71", "1A 05 00 71 01"},
      {Ic7300, {"27 14 00 01"}, "27 14 00", "27 14 00 01"},
      {Ic7300, {"27 15 00 00 25 00 00 00"}, "27 15 00", "27 15 00 00 25 00 00 00"},
      {Ic7300, {}, "27 15 00 00 26 00 00 00", "FA"},
      {Ic7300, {"27 19 00 10 50 01"}, "27 19 00", "27 19 00 10 50 01"},
      {Ic7300, {"27 19 00 00 00 01"}, "27 19 00", "27 19 00 00 00 00"},
      {Ic7300, {}, "27 1A 00 03", "FA"},
      {Ic7300, {}, "27 1E 06 01", "27 1E 06 01 00 00 00 14 00 00 00 35 14 00"},
      {Ic7300, {}, "27 14 01", "FA"},  // no sub receiver
      {Ic7300, {}, "77", "FA"},
      {Ic7300, {}, "00 00 00 10 07 00", ""},
      {Ic7300, {"18 00"}, "03", ""},
      {Ic7300, {"18 00", "18 01"}, "19 00", "19 00 94"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.Command + " on " + std::string(IcomSimModelOf(row.Model).Option));
    Bench bench({.Model = row.Model});
    for (const std::string& command : row.Before) (void)bench.Ask(command);
    SimBytes expected;
    if (!row.Reply.empty()) {
      expected = Hex("FE FE E0");
      expected.push_back(bench.Radio.Model().Address);
      for (const std::uint8_t byte : Hex(row.Reply)) expected.push_back(byte);
      expected.push_back(0xFD);
    }
    EXPECT_EQ(bench.Ask(row.Command), expected);
  }
}

TEST(IcomSim, FindsItsFramesHoweverTheyArrive) {
  // Noise, somebody else's frame, one that breaks off, an empty one, one to everybody; two that count.
  const SimBytes stream =
      Hex("00 FD FE FE FE 94 E0 03 FD FE FE 98 E0 03 FD FE FE 94 E0 05 00 FE FE 94 E0 FD FE FE 00 E0 03 FD "
          "12 FE 34 FE FE 94 E1 04 FD");
  const SimBytes expected = Hex("FE FE E0 94 03 00 40 07 14 00 FD FE FE E1 94 04 01 01 FD");
  for (std::size_t cut = 0; cut <= stream.size(); ++cut) {
    Bench bench;
    bench.Radio.Receive(SimByteView(stream).first(cut), bench.Now);
    bench.Radio.Receive(SimByteView(stream).subspan(cut), bench.Now);
    EXPECT_EQ(bench.Run(20ms), expected) << "cut at " << cut;
  }
}

TEST(IcomSim, EchoComesBeforeTheAnswer) {
  Bench bench({.Echo = true});
  EXPECT_EQ(bench.Ask("19 00"), Hex("FE FE 94 E0 19 00 FD FE FE E0 94 19 00 94 FD"));
}

struct Line {
  SimBytes Header;  ///< mode to out-of-range flag
  SimBytes Amplitudes;
  std::vector<std::size_t> Points;  ///< of each division
};

/// Complete lines alone: divisions 1 to the last one without a gap.
std::vector<Line> ScopeLines(const SimBytes& stream, const Bench& bench) {
  std::vector<Line> lines;
  Line line;
  int next = 1;
  for (const SimBytes& frame : Frames(stream)) {
    if (frame.size() < 10 || frame[0] != 0xFE || frame[3] != bench.Radio.Model().Address || frame[4] != 0x27)
      continue;
    const int division = frame[7] / 16 * 10 + frame[7] % 16;
    const int count = frame[8] / 16 * 10 + frame[8] % 16;
    if (division == 1) line = {{frame.begin() + 9, frame.begin() + 21}, {}, {}};
    if (division != 1 && division != next) continue;
    const auto data = frame.begin() + (division == 1 ? 21 : 9);
    line.Points.push_back(static_cast<std::size_t>(frame.end() - 1 - data));
    line.Amplitudes.insert(line.Amplitudes.end(), data, frame.end() - 1);
    next = division + 1;
    if (division == count) lines.push_back(line);
  }
  std::erase_if(lines, [&](const Line& l) {
    return l.Amplitudes.size() != static_cast<std::size_t>(bench.Radio.Model().ScopePoints);
  });
  return lines;
}

/// The scale told independently: 2 steps a dB, 160 at the top, -133 dBm at the bottom.
SimBytes LevelsOf(const Bench& bench, double lowHz, double highHz, double refDb) {
  std::vector<double> dBm(static_cast<std::size_t>(bench.Radio.Model().ScopePoints));
  bench.Radio.Band().Render(lowHz, highHz, 0, dBm);
  SimBytes levels;
  for (const double power : dBm) {
    const double level = std::clamp(2 * (power + 133 + refDb), 0.0, 160.0);
    levels.push_back(
        static_cast<std::uint8_t>(std::lround(level / 160 * bench.Radio.Model().ScopeFullScale)));
  }
  return levels;
}

TEST(IcomSim, ScopeLinesShowTheBand) {
  for (const IcomSimModel& model : IcomSimModels()) {
    for (const int divisions : {0, 1, 11, 15}) {
      SCOPED_TRACE(std::string(model.Option) + " in " + std::to_string(divisions));
      Bench bench({.Model = model.Kind, .Divisions = divisions});
      bench.Say("27 15 00 00 00 05 00 00");  // 50 kHz either side
      bench.Say("27 19 00 05 50 00");
      bench.Say("27 10 01");
      bench.Say("27 11 01");
      const auto lines = ScopeLines(bench.Run(150ms), bench);
      ASSERT_FALSE(lines.empty());
      SimBytes header{0x00};
      PutBcdLow(header, static_cast<std::uint64_t>(model.StartHz));
      PutBcdLow(header, 50'000);
      header.push_back(0x00);
      EXPECT_EQ(lines[0].Header, header);
      const auto centre = static_cast<double>(model.StartHz);
      EXPECT_EQ(lines[0].Amplitudes, LevelsOf(bench, centre - 50e3, centre + 50e3, 5.5));
      const auto wanted = static_cast<std::size_t>(divisions == 0 ? model.ScopeDivisions : divisions);
      EXPECT_EQ(lines[0].Points.size(), wanted);
      EXPECT_EQ(lines[0].Points[0] == 0, wanted != 1);  // the header stands alone but in a single division
    }
  }
  Bench bench;
  for (const char* command : {"27 10 01", "27 11 01"}) bench.Say(command);
  EXPECT_THAT(ScopeLines(bench.Run(150ms), bench).at(0).Points,
              ElementsAre(0, 50, 50, 50, 50, 50, 50, 50, 50, 50, 25));
}

TEST(IcomSim, FixedScopeTellsItsEdgesAndWhetherTheRadioIsInside) {
  for (const bool outside : {false, true}) {
    Bench bench;
    bench.Say(outside ? "05 00 00 50 14 00" : "05 00 00 25 14 00");
    bench.Say("27 1E 06 02 00 00 20 14 00 00 00 30 14 00");
    for (const char* command : {"27 16 00 02", "27 14 00 01", "27 10 01", "27 11 01"}) bench.Say(command);
    const auto lines = ScopeLines(bench.Run(150ms), bench);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines[0].Header,
              Hex(std::string("01 00 00 20 14 00 00 00 30 14 00 ") + (outside ? "01" : "00")));
    EXPECT_EQ(lines[0].Amplitudes, LevelsOf(bench, 14.2e6, 14.3e6, 0));
  }
}

TEST(IcomSim, StationsStayWhereTheyAreWhenTheRadioMoves) {
  const IcomSimBand band;
  std::vector<double> here(400);
  std::vector<double> there(400);
  int strong = 0;
  for (int second = 0; second < 20; ++second) {
    band.Render(14'000'000, 14'039'900, second, here);
    band.Render(14'010'000, 14'049'900, second, there);
    for (std::size_t i = 100; i < 400; ++i) {
      if (here[i] < -105) continue;  // noise is another one each time
      ++strong;
      EXPECT_NEAR(there[i - 100], here[i], 3) << 14e6 + 100.0 * static_cast<double>(i);
    }
  }
  EXPECT_GT(strong, 100);
}

TEST(IcomSim, TheLineCarriesWhatTheRateAllows) {
  struct Pace {
    double LinesPerSecond;
    const char* Speed;
    std::size_t Low, High;
  };
  // 600 bytes a line: 11520 bytes a second carry 19 lines.
  for (const Pace& pace :
       {Pace{15, "00", 29, 31}, Pace{15, "01", 14, 16}, Pace{15, "02", 5, 7}, Pace{100, "00", 36, 39}}) {
    Bench bench({.LinesPerSecond = pace.LinesPerSecond});
    bench.Say(std::string("27 1A 00 ") + pace.Speed);
    for (const char* command : {"27 10 01", "27 11 01"}) bench.Say(command);
    const SimBytes stream = bench.Run(2s);
    EXPECT_LE(stream.size(), 2U * 11'520);
    const std::size_t lines = ScopeLines(stream, bench).size();
    EXPECT_TRUE(lines >= pace.Low && lines <= pace.High) << lines;
  }
  // On a busy line an answer waits for the frame under way, not for the line of the scope.
  Bench bench({.LinesPerSecond = 100});
  for (const char* command : {"27 10 01", "27 11 01"}) bench.Say(command);
  (void)bench.Run(500ms);
  bench.Say("03");
  EXPECT_THAT(Frames(bench.Run(8ms)), ::testing::Contains(Hex("FE FE E0 94 03 00 40 07 14 00 FD")));
  // Switched off, only what had begun still arrives.
  bench.Say("27 11 00");
  (void)bench.Run(8ms);
  EXPECT_TRUE(bench.Run(200ms).empty());
}

TEST(IcomSim, FaultsHurtAndHeal) {
  struct Case {
    const char* Name;
    IcomSimFaults Faults;
    std::size_t MostLines;  ///< complete ones in a second
  };
  const std::vector<Case> cases{
      {"noise", {.NoiseEvery = 5}, 8},
      {"lost division", {.LostDivisionEvery = 11}, 0},
      {"wrong address", {.WrongAddressEvery = 6}, 1},
      {"half frames", {.HalfFrameEvery = 7}, 1},
      {"silence", {.Silent = true}, 0},
  };
  for (const Case& fault : cases) {
    SCOPED_TRACE(fault.Name);
    Bench bench;
    for (const char* command : {"27 10 01", "27 11 01"}) bench.Say(command);
    bench.Radio.SetFaults(fault.Faults);
    (void)bench.Run(200ms);
    const SimBytes hurt = bench.Run(1s);
    EXPECT_EQ(hurt.empty(), fault.Faults.Silent);
    EXPECT_LE(ScopeLines(hurt, bench).size(), fault.MostLines);
    bench.Radio.SetFaults({});
    (void)bench.Run(200ms);
    EXPECT_GE(ScopeLines(bench.Run(1s), bench).size(), 14U);
  }
}

TEST(IcomSim, TheOperatorsHandIsToldToEverybody) {
  Bench bench({.Operator = true});
  const auto frames = Frames(bench.Run(45s));
  std::map<int, SimBytes> last;  // by command
  for (const SimBytes& frame : frames) {
    ASSERT_EQ(SimBytes(frame.begin(), frame.begin() + 4), Hex("FE FE 00 94"));
    last[frame[4]] = frame;
  }
  // 150 steps of 20 Hz up, 74 down.
  EXPECT_EQ(last[0x00], Hex("FE FE 00 94 00 20 55 07 14 00 FD"));
  EXPECT_EQ(last[0x01], Hex("FE FE 00 94 01 03 01 FD"));
  EXPECT_EQ(frames.size(), 225U);
}

}  // namespace
}  // namespace spectrino
