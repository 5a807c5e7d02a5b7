// Lines from frames, and frames from whatever pieces the network delivers.
#include "k4/PanStream.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "k4/PanAssembler.h"
#include "k4/PanFrames.h"
#include "state/RadioState.h"

namespace spectrino {
namespace {

using test::Bytes;
using test::FrameFields;
using test::PanFrame;
using test::operator+;

K4State ReadyState(int preset = 0) {
  K4State state;
  state.PanScaleDb = 70;
  state.PanRefLevelDb = -110;
  state.FxtOn = 1;
  state.K4SpanPreset = preset;
  state.PanSpanMHz = 0.05;
  return state;
}

FrameFields Levels(std::function<int(int)> level, char letter = 'A') {
  FrameFields fields;
  fields.Letter = letter;
  fields.Level = std::move(level);
  return fields;
}

/// Every whole dB names its sample: 10 tenths a sample from -1024 dB up.
int SampleNumber(int sample) {
  return 10 * (sample - 1025);
}

struct CropCase {
  const char* Name;
  char Letter;
  int Preset;
  double PanSpanMHz;
  int Mode, DataMode, Points, FirstSample;
  double SpanMHz;
};

class PanCrop : public ::testing::TestWithParam<CropCase> {};

TEST_P(PanCrop, ShowsTheMiddleOfTheFrame) {
  const CropCase& crop = GetParam();
  K4State state = ReadyState(crop.Preset);
  state.PanSpanMHz = crop.PanSpanMHz;
  (crop.Letter == 'Z' ? state.SubRadioMode : state.RadioMode) = crop.Mode;
  (crop.Letter == 'Z' ? state.DataModeSub : state.DataModeMain) = crop.DataMode;
  ParseK4PanFrames(PanFrame(Levels(SampleNumber, crop.Letter)), state);

  const K4PanChannel& channel = state.K4PanChannels[crop.Letter == 'A'   ? kPanMain
                                                    : crop.Letter == 'Y' ? kPanMiniMain
                                                                         : kPanMiniSub];
  EXPECT_EQ(channel.Serial, 1U);
  EXPECT_EQ(channel.Points, crop.Points);
  EXPECT_DOUBLE_EQ(channel.SpanMHz, crop.SpanMHz);
  EXPECT_DOUBLE_EQ(channel.CenterMHz, 14.074);
  EXPECT_DOUBLE_EQ(channel.LowEdgeMHz, 14.074 - crop.SpanMHz / 2);
  EXPECT_DOUBLE_EQ(channel.HighEdgeMHz, 14.074 + crop.SpanMHz / 2);
  EXPECT_FLOAT_EQ(channel.RefLevelDb, -135);
  ASSERT_EQ(channel.Levels.size(), 2049U);
  for (int point = 1; point <= 2048; ++point) {
    const int expected = point <= crop.Points ? crop.FirstSample + point - 1 - 1025 : 0;
    ASSERT_EQ(channel.Levels[static_cast<std::size_t>(point)], expected) << "point " << point;
  }
  if (crop.Letter == 'A') {
    EXPECT_EQ(channel.FixedTune, 1);
    EXPECT_FLOAT_EQ(state.K4PanRefLevel, -110);
    EXPECT_DOUBLE_EQ(state.K4PanGridHz[20], 2e6 * crop.SpanMHz);
  }
  EXPECT_EQ(state.K4PanDataSeen, crop.Letter == 'A');
  EXPECT_EQ(state.SpectrumPoints, crop.Letter == 'A' ? crop.Points : 0);
}

INSTANTIATE_TEST_SUITE_P(
    K4, PanCrop,
    ::testing::Values(
        CropCase{"WholeFrame", 'A', 0, 0.05, 0, 0, 2048, 1, 0.1},
        CropCase{"RadioSpan", 'A', 1, 0.05, 0, 0, 1024, 513, 0.05},
        CropCase{"TwoThirds", 'A', 2, 0.05, 0, 0, 683, 683, 0.05 / 1.5},
        CropCase{"OddRestHalfToEvenDown", 'A', 1, 1023 * 0.1 / 2048, 0, 0, 1023, 513, 1023 * 0.1 / 2048},
        CropCase{"OddRestHalfToEvenUp", 'A', 1, 1021 * 0.1 / 2048, 0, 0, 1021, 515, 1021 * 0.1 / 2048},
        CropCase{"WiderThanFrame", 'A', 1, 0.2, 0, 0, 2048, 1, 0.1},
        CropCase{"MiniCw", 'Y', 1, 0.05, mode::kCw, 0, 41, 1005, 0.002},
        CropCase{"MiniFskData", 'Y', 1, 0.05, mode::kDataReverse, 2, 41, 1005, 0.002},
        CropCase{"MiniSubCwNarrow", 'Z', 2, 0.05, mode::kCwReverse, 0, 27, 1011, 0.002 / 1.5},
        CropCase{"MiniSubUnknownMode", 'Z', 1, 0.05, 8, 0, 0, 1, 0}),
    [](const auto& crop) { return std::string(crop.param.Name); });

TEST(PanStream, LevelsAreFlooredAndAveragesRoundHalvesToEven) {
  struct Case {
    std::vector<int> Tenths;
    int Level;
  };
  for (const Case& levels : {Case{{-1200}, -120}, Case{{-1205}, -121}, Case{{-1}, -1}, Case{{9}, 0},
                             Case{{-32768}, -3277}, Case{{32767}, 3276}, Case{{-100, -110}, -10},
                             Case{{-110, -120}, -12}, Case{{30, 40}, 4}, Case{{-100, -100, -110}, -10},
                             Case{{-100, -110, -110}, -11}, Case{std::vector<int>(400, -32768), -3277}}) {
    K4State state = ReadyState();
    Bytes read;
    for (const int tenths : levels.Tenths) read = read + PanFrame(Levels([=](int) { return tenths; }));
    ParseK4PanFrames(read, state);
    const auto& line = state.K4PanChannels[kPanMain].Levels;
    EXPECT_THAT(std::vector<std::int16_t>(line.begin() + 1, line.end()), ::testing::Each(levels.Level))
        << levels.Tenths.front() << ", " << levels.Tenths.size() << " frames";
  }
}

FrameFields With(char letter, std::string span) {
  FrameFields fields;
  fields.Letter = letter;
  fields.Span = std::move(span);
  return fields;
}

/// What one read publishes: the serials of A, Y and Z.
std::vector<std::uint64_t> PublishedBy(const Bytes& read, K4State state = ReadyState()) {
  ParseK4PanFrames(read, state);
  EXPECT_FALSE(state.K4PanBusy);
  return {state.K4PanChannels[0].Serial, state.K4PanChannels[2].Serial, state.K4PanChannels[3].Serial};
}

TEST(PanStream, PublishesOneLinePerDisplayOrNothing) {
  const Bytes a = PanFrame();
  const Bytes y = PanFrame(With('Y', "010000"));
  const Bytes b = PanFrame(With('B', "000000"));
  const Bytes z = PanFrame(With('Z', "010000"));
  using Serials = std::vector<std::uint64_t>;
  const Bytes junk(100, 0xFF);
  EXPECT_EQ(PublishedBy(a), (Serials{1, 0, 0}));
  EXPECT_EQ(PublishedBy(b + a + y + z + a), (Serials{1, 1, 1}));
  EXPECT_EQ(PublishedBy(b), (Serials{0, 0, 0}));
  EXPECT_EQ(PublishedBy(junk + a), (Serials{1, 0, 0}));
  EXPECT_EQ(PublishedBy(Bytes(a.begin(), a.end() - 1)), (Serials{0, 0, 0}));
  EXPECT_EQ(PublishedBy(a + Bytes(4162, 0)), (Serials{1, 0, 0}));
  EXPECT_EQ(PublishedBy(a + junk + Bytes(y.begin(), y.end() - 100)), (Serials{1, 0, 0}));
  // One bad frame spoils its read.
  EXPECT_EQ(PublishedBy(y + a + PanFrame(With('Q', "100000"))), (Serials{0, 0, 0}));
  EXPECT_EQ(PublishedBy(y + a + PanFrame(With('A', "000000"))), (Serials{0, 0, 0}));
  EXPECT_EQ(PublishedBy(y + a + PanFrame(With('A', "-50000"))), (Serials{0, 0, 0}));
  EXPECT_EQ(PublishedBy(y + a + PanFrame(With('A', "050000"))), (Serials{0, 0, 0}));

  K4State noScale = ReadyState();
  noScale.PanScaleDb = 0;
  EXPECT_EQ(PublishedBy(a, noScale), (Serials{0, 0, 0}));
}

TEST(PanStream, ASpoiledReadLeavesTheLastLineWhole) {
  K4State state = ReadyState();
  ParseK4PanFrames(PanFrame(), state);
  FrameFields elsewhere = With('A', "050000");
  elsewhere.Centre = "00007074000";
  ParseK4PanFrames(PanFrame(elsewhere) + PanFrame(With('?', "100000")), state);
  EXPECT_DOUBLE_EQ(state.K4PanChannels[kPanMain].CenterMHz, 14.074);
  EXPECT_DOUBLE_EQ(state.K4PanChannels[kPanMain].SpanMHz, 0.1);
}

TEST(PanStream, NumbersThatCannotBeDrawNothing) {
  struct Field {
    std::string FrameFields::*Of;
    std::vector<std::string> Texts;
  };
  for (const Field& field :
       {Field{&FrameFields::Span, {"-00001", "      ", "+-5000", "......", "000000"}},
        Field{&FrameFields::Centre, {"-0014074000", "00000000000", "inf        ", "nan        "}},
        Field{&FrameFields::Reference, {"99999", "-9999", "+9999"}}}) {
    for (const std::string& text : field.Texts) {
      FrameFields fields;
      fields.*field.Of = text;
      K4State state = ReadyState(1);
      ParseK4PanFrames(PanFrame(fields), state);
      EXPECT_EQ(state.K4PanChannels[kPanMain].Serial, 0U) << text;
    }
  }
}

Bytes Assembled(const Bytes& stream, const std::vector<std::size_t>& cuts) {
  Bytes frames;
  K4PanAssembler assembler([&](std::span<const std::uint8_t> run) {
    EXPECT_EQ(run.size() % kPanFrameBytes, 0U);
    frames.insert(frames.end(), run.begin(), run.end());
  });
  std::size_t from = 0;
  for (const std::size_t cut : cuts) {
    assembler.Feed(std::span(stream).subspan(from, cut - from));
    from = cut;
  }
  assembler.Feed(std::span(stream).subspan(from));
  return frames;
}

/// A frame whose levels hold the sync bytes, even with what could be a head behind them.
Bytes Treacherous() {
  Bytes frame = PanFrame();
  const Bytes head = PanFrame();
  std::copy_n(head.begin(), 200, frame.begin() + 1000);
  std::copy_n(head.begin(), 5, frame.end() - 7);
  return frame;
}

TEST(PanAssembler, FramesAreTheSameHoweverTheStreamIsCut) {
  const Bytes junk = Bytes{0x00, 0xFF, 0xFE, 0x01, 0x00, 0x02, 0x00, 'X'} + Bytes(40, 0xFF);
  // Once in step, a letter that nobody knows does not end it.
  const Bytes first = Treacherous() + PanFrame(With('Q', "010000"));
  const Bytes second = PanFrame(With('Z', "010000")) + Treacherous();
  const Bytes stream = junk + first + junk + second + Bytes{0xFF, 0xFE};
  const Bytes expected = first + second;
  EXPECT_EQ(Assembled(stream, {}), expected);

  // Every cut in heads and junk; the levels between them more coarsely.
  for (std::size_t cut = 1; cut < stream.size(); ++cut) {
    if ((cut % kPanFrameBytes) < 160 || cut % 97 == 0) {
      ASSERT_EQ(Assembled(stream, {cut}), expected) << "cut at " << cut;
    }
  }
  std::vector<std::size_t> everywhere;
  for (std::size_t cut = 1; cut < stream.size(); ++cut) everywhere.push_back(cut);
  EXPECT_EQ(Assembled(stream, everywhere), expected);
}

TEST(PanAssembler, FindsTheStepAgainAfterALossInsideAFrame) {
  const Bytes frame = PanFrame();
  Bytes shortFrame = frame;
  shortFrame.erase(shortFrame.begin() + 2000, shortFrame.begin() + 2100);
  // The frame with the hole takes the head of its successor with it; the one after that is whole again.
  const Bytes frames = Assembled(shortFrame + frame + frame + frame, {});
  ASSERT_EQ(frames.size(), 3 * kPanFrameBytes);
  EXPECT_TRUE(std::equal(frame.begin(), frame.end(), frames.end() - kPanFrameBytes));
}

TEST(PanAssembler, ForgetsOnResetAndTakesAReadOfSeconds) {
  const Bytes frame = PanFrame();
  const Bytes read = Bytes(1'000'000, 0xFF) + frame + frame;
  Bytes frames;
  K4PanAssembler assembler(
      [&](std::span<const std::uint8_t> run) { frames.insert(frames.end(), run.begin(), run.end()); });
  assembler.Feed(std::span(frame).first(3000));
  assembler.Reset();
  assembler.Feed(read);
  EXPECT_EQ(frames, frame + frame);
}

}  // namespace
}  // namespace spectrino
