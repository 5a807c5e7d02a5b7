// I/Q files, good and bad, byte by byte.
#include "sim/IqFile.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "sim/ReadAhead.h"
#include "sim/WavBytes.h"

namespace spectrino {
namespace {

using test::Chunk, test::Format, test::Number, test::Riff;

const std::vector<std::int16_t> kSamples{1, -2, 300, -400, 32767, -32768, 0, 7};
const std::string kPcmGuidTail("\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 14);

std::string Extensible(std::uint32_t tag, const std::string& guidTail) {
  return Format(0xFFFE, 2, 48000, 16) + Number(22, 2) + Number(16, 2) + Number(3, 4) + Number(tag, 2) +
         guidTail;
}

std::string Body() {
  std::string body;
  for (const std::int16_t sample : kSamples) body += Number(static_cast<std::uint16_t>(sample), 2);
  return body;
}

const std::string kFmt = Chunk("fmt ", Format(1, 2, 48000, 16));
const std::string kData = Chunk("data", Body());
const std::string kGood = Riff(kFmt + kData);

struct Case {
  std::string Name, Bytes;
  std::string Message = {};                      ///< after "path: "; empty: the file is good
  std::vector<std::int16_t> Samples = kSamples;  ///< of a good file
};

/// The samples where the file is said to have them.
std::vector<std::int16_t> SamplesOf(const IqFile& file) {
  std::vector<std::int16_t> samples(2 * file.Frames);
  ReadAhead ahead(file);
  ReadAhead::Got got = ReadAhead::Got::NotYet;
  while ((got = ahead.Take(0, samples)) == ReadAhead::Got::NotYet) std::this_thread::yield();
  EXPECT_EQ(got, ReadAhead::Got::All);
  return samples;
}

struct IqFileTest : testing::Test {
  ~IqFileTest() override { std::filesystem::remove(path_); }

  std::optional<IqFile> Load(const std::string& bytes) {
    std::ofstream(path_, std::ios::binary | std::ios::trunc) << bytes;
    message_.clear();
    return LoadIqFile(path_, message_);
  }
  void Expect(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
      const auto file = Load(c.Bytes);
      EXPECT_EQ(message_, c.Message.empty() ? "" : path_ + ": " + c.Message) << c.Name;
      ASSERT_EQ(file.has_value(), c.Message.empty()) << c.Name;
      if (!file) continue;
      EXPECT_EQ(file->RateHz, 48000) << c.Name;
      EXPECT_EQ(SamplesOf(*file), c.Samples) << c.Name;
    }
  }

  const std::string path_ =
      std::filesystem::temp_directory_path() / ("spectrino-iq-" + std::to_string(getpid()) + ".wav");
  std::string message_;
};

std::string With(std::uint32_t tag, std::uint32_t channels, std::uint32_t rate, std::uint32_t bits) {
  return Riff(Chunk("fmt ", Format(tag, channels, rate, bits)) + kData);
}

TEST_F(IqFileTest, AnyWavOfTheRightKindIsRead) {
  Expect({{"plain", kGood},
          {"extensible", Riff(Chunk("fmt ", Extensible(1, kPcmGuidTail)) + kData)},
          {"odd chunk before and after",
           Riff(Chunk("auxi", "abc") + kFmt + Chunk("LIST", "x") + kData + Chunk("id3 ", "yz"))},
          {"data before format", Riff(kData + kFmt)},
          {"data size 0 while recording", Riff(kFmt + Chunk("data", Body(), 0))},
          {"data size unknown", Riff(kFmt + Chunk("data", Body(), 0xFFFFFFFF))},
          {"data longer than the file", Riff(kFmt + Chunk("data", Body(), 4000))},
          {"last frame cut", kGood.substr(0, kGood.size() - 1), {}, {1, -2, 300, -400, 32767, -32768}}});
}

const std::string kNeed = "; I/Q files need 16-bit stereo";
const std::string kRates = "; I/Q files need one of 11025, 22050, 44100, 48000, 88200, 96000, 192000 Hz";

TEST_F(IqFileTest, AnythingElseIsRefusedWithTheReason) {
  Expect({{"empty", "", "not a WAV file" + kNeed + " WAV"},
          {"short format", Riff(Chunk("fmt ", "1234") + kData), "the WAV file has no format chunk" + kNeed},
          {"mono", With(1, 1, 48000, 16), "mono" + kNeed},
          {"24 bits", With(1, 2, 48000, 24), "24-bit samples" + kNeed},
          {"float", With(3, 2, 48000, 32), "floating-point samples" + kNeed},
          {"compressed", With(85, 2, 48000, 16), "sample format 85 is not PCM" + kNeed},
          {"extensible float", Riff(Chunk("fmt ", Extensible(3, kPcmGuidTail)) + kData),
           "floating-point samples" + kNeed},
          {"absurd rate", With(1, 2, 0xFFFFFFFF, 16), "sample rate 4294967295 Hz" + kRates},
          {"no data", Riff(kFmt), "there are no samples in it"},
          {"less than a frame", Riff(kFmt + Chunk("data", "abc")), "there are no samples in it"}});
}

TEST_F(IqFileTest, WhatIsNotAFileIsNamed) {
  std::string message;
  EXPECT_FALSE(LoadIqFile("/no/such/file.wav", message));
  EXPECT_EQ(message, "/no/such/file.wav: cannot be read: No such file or directory");
  EXPECT_FALSE(LoadIqFile("/", message));
  EXPECT_EQ(message, "/: is not a file");
}

}  // namespace
}  // namespace spectrino
