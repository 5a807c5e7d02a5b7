// Recordings: the well-formed beside the malformed, and the seam where they start over.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "fakes/FakeClock.h"
#include "sim/IqFileInput.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

void Append(std::string& text, std::uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i));
}

struct Recipe {
  int rate = 48000, channels = 2, bits = 16, tag = 1;
  std::uint32_t dataSize = 0;  // 0: the true one
  bool oddChunkBefore = false;
  int frames = 5;
};

std::string Wav(const Recipe& recipe) {
  std::string text = "RIFF....WAVE";
  if (recipe.oddChunkBefore) {
    text += "LIST";
    Append(text, 3, 4);
    text += std::string("abc\0", 4);
  }
  const bool extensible = recipe.tag == 0xFFFE;
  text += "fmt ";
  Append(text, extensible ? 40 : 16, 4);
  Append(text, static_cast<std::uint32_t>(recipe.tag), 2);
  Append(text, static_cast<std::uint32_t>(recipe.channels), 2);
  Append(text, static_cast<std::uint32_t>(recipe.rate), 4);
  Append(text, static_cast<std::uint32_t>(recipe.rate * 4), 4);
  Append(text, 4, 2);
  Append(text, static_cast<std::uint32_t>(recipe.bits), 2);
  if (extensible) {
    text += std::string(8, '\0');
    Append(text, 1, 2);
    text += std::string(14, '\0');
  }
  text += "data";
  Append(text, recipe.dataSize != 0 ? recipe.dataSize : static_cast<std::uint32_t>(recipe.frames * 4), 4);
  for (int i = 0; i < recipe.frames * 2; ++i) Append(text, static_cast<std::uint32_t>(100 + i), 2);
  return text;
}

class IqFiles : public testing::Test {
 protected:
  ~IqFiles() override { std::filesystem::remove(path_); }
  std::optional<IqFile> Load(const std::string& content) {
    std::ofstream(path_, std::ios::binary) << content;
    message_.clear();
    return LoadIqFile(path_, message_);
  }
  std::string path_ =
      (std::filesystem::temp_directory_path() / ("iq-" + std::to_string(getpid()) + ".wav")).string();
  std::string message_;
};

TEST_F(IqFiles, EveryUsualShapeIsRead) {
  for (const Recipe& recipe :
       {Recipe{}, Recipe{.rate = 192000, .tag = 0xFFFE}, Recipe{.oddChunkBefore = true},
        Recipe{.dataSize = 0xFFFFFFFF}, Recipe{.dataSize = 4000}}) {
    const auto file = Load(Wav(recipe));
    ASSERT_TRUE(file) << message_;
    EXPECT_EQ(file->RateHz, recipe.rate);
    EXPECT_EQ(file->Samples, (std::vector<std::int16_t>{100, 101, 102, 103, 104, 105, 106, 107, 108, 109}));
  }
}

TEST_F(IqFiles, WhatCannotBePlayedIsNamed) {
  const std::pair<std::string, const char*> cases[] = {{Wav({.channels = 1}), "mono"},
                                                       {Wav({.channels = 6}), "6 channels"},
                                                       {Wav({.bits = 24}), "24-bit"},
                                                       {Wav({.rate = 32000}), "32000 Hz"},
                                                       {Wav({.tag = 3}), "not plain PCM"},
                                                       {Wav({.frames = 0}), "before its first sample"},
                                                       {"", "not a WAV"},
                                                       {std::string(5000, 'x'), "not a WAV"}};
  for (const auto& [content, words] : cases) {
    EXPECT_FALSE(Load(content));
    EXPECT_NE(message_.find(words), std::string::npos) << message_;
    EXPECT_NE(message_.find(path_), std::string::npos);
    EXPECT_NE(message_.find("16-bit stereo"), std::string::npos);
  }
  EXPECT_FALSE(LoadIqFile(path_ + ".none", message_));
  EXPECT_NE(message_.find("No such file"), std::string::npos);
}

TEST_F(IqFiles, CutAnywhereItIsUsedToTheLastWholeFrameOrRefused) {
  const std::string whole = Wav({.oddChunkBefore = true});
  const std::size_t head = whole.size() - 20;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const auto file = Load(whole.substr(0, length));
    const std::size_t frames = length < head ? 0 : (length - head) / 4;
    EXPECT_EQ(file ? file->Samples.size() / 2 : 0, frames) << length;
  }
}

TEST(IqFileInput, PlaysOverAndOverAtItsOwnRateOnly) {
  FakeClock clock;
  IqFileInput input(clock, "/some/where/band.wav", {48000, {1, 2, 3, 4, 5, 6}});
  EXPECT_EQ(input.Devices()[0].Name, "band.wav");
  std::string reason;
  EXPECT_EQ(input.Open(input.Devices()[0], 44100, 4, reason), nullptr);
  EXPECT_NE(reason.find("48000"), std::string::npos);
  const auto stream = input.Open(input.Devices()[0], 48000, 4, reason);
  clock.Advance(1ms);
  std::vector<std::int16_t> block(8);
  ASSERT_EQ(stream->TakeBlock(block), BlockState::Done);
  EXPECT_EQ(block, (std::vector<std::int16_t>{1, 2, 3, 4, 5, 6, 1, 2}));
  ASSERT_EQ(stream->TakeBlock(block), BlockState::Done);
  EXPECT_EQ(block, (std::vector<std::int16_t>{3, 4, 5, 6, 1, 2, 3, 4}));
}

}  // namespace
}  // namespace spectrino
