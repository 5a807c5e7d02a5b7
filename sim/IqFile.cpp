#include "sim/IqFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <string_view>

namespace spectrino {
namespace {

constexpr std::array kKnownRates = {11025, 22050, 44100, 48000, 88200, 96000, 192000};
constexpr std::uint16_t kPcm = 1;
constexpr std::uint16_t kExtensible = 0xFFFE;
constexpr std::uint64_t kLargestData = std::uint64_t{4} << 30;  // what the format's 32-bit size can say

struct Format {
  std::uint16_t tag = 0;
  std::uint16_t channels = 0;
  std::uint32_t rateHz = 0;
  std::uint16_t bits = 0;
};

std::uint32_t Little(const unsigned char* bytes, int count) {
  std::uint32_t value = 0;
  for (int i = count - 1; i >= 0; --i) value = value << 8 | bytes[i];
  return value;
}

bool ReadBytes(std::istream& in, unsigned char* bytes, std::size_t count) {
  in.read(reinterpret_cast<char*>(bytes), static_cast<std::streamsize>(count));
  return static_cast<std::size_t>(in.gcount()) == count;
}

// fmt chunk: tag 2 | channels 2 | rate 4 | bytes a second 4 | block align 2 | bits 2
//            and, extensible: size 2 | valid bits 2 | channel mask 4 | subformat 16, its first two bytes the
//            real tag
bool ReadFormat(std::istream& in, std::uint32_t size, Format& format) {
  std::array<unsigned char, 40> bytes{};
  if (size < 16 || !ReadBytes(in, bytes.data(), std::min<std::size_t>(size, bytes.size()))) return false;
  format = {static_cast<std::uint16_t>(Little(&bytes[0], 2)),
            static_cast<std::uint16_t>(Little(&bytes[2], 2)), Little(&bytes[4], 4),
            static_cast<std::uint16_t>(Little(&bytes[14], 2))};
  if (format.tag == kExtensible && size >= 40) format.tag = static_cast<std::uint16_t>(Little(&bytes[24], 2));
  return true;
}

std::string FormatProblem(const Format& format) {
  if (format.tag != kPcm) return "samples are not plain PCM";
  if (format.channels != 2)
    return format.channels == 1 ? "mono" : std::to_string(format.channels) + " channels";
  if (format.bits != 16) return std::to_string(format.bits) + "-bit samples";
  if (std::ranges::find(kKnownRates, static_cast<int>(format.rateHz)) == kKnownRates.end()) {
    return "a rate of " + std::to_string(format.rateHz) + " Hz";
  }
  return {};
}

// Streaming recorders leave the size open (0 or all ones): then everything to the end of the file is data.
std::vector<std::int16_t> ReadSamples(std::istream& in, std::uint32_t size) {
  const std::uint64_t wanted = size == 0 || size == 0xFFFFFFFF ? kLargestData : size;
  std::vector<std::int16_t> samples;
  std::array<unsigned char, 1 << 16> bytes{};
  std::uint64_t read = 0;
  while (read < wanted) {
    in.read(reinterpret_cast<char*>(bytes.data()),
            static_cast<std::streamsize>(std::min<std::uint64_t>(bytes.size(), wanted - read)));
    const auto count = static_cast<std::size_t>(in.gcount());
    if (count == 0) break;
    read += count;
    for (std::size_t at = 0; at + 1 < count; at += 2) {
      samples.push_back(static_cast<std::int16_t>(Little(&bytes[at], 2)));
    }
  }
  samples.resize(samples.size() / 2 * 2);
  return samples;
}

std::optional<IqFile> ReadRiff(std::istream& in, std::string& problem) {
  std::array<unsigned char, 12> head{};
  if (!ReadBytes(in, head.data(), head.size()) || std::memcmp(head.data(), "RIFF", 4) != 0 ||
      std::memcmp(&head[8], "WAVE", 4) != 0) {
    problem = "not a WAV file";
    return std::nullopt;
  }
  std::optional<Format> format;
  std::array<unsigned char, 8> chunk{};
  while (ReadBytes(in, chunk.data(), chunk.size())) {
    const std::string_view name(reinterpret_cast<const char*>(chunk.data()), 4);
    const std::uint32_t size = Little(&chunk[4], 4);
    const std::streamoff body = in.tellg();
    if (name == "fmt ") {
      Format read;
      if (!ReadFormat(in, size, read)) break;
      format = read;
      problem = FormatProblem(read);
      if (!problem.empty()) return std::nullopt;
    } else if (name == "data" && format) {
      IqFile file{static_cast<int>(format->rateHz), ReadSamples(in, size)};
      if (!file.Samples.empty()) return file;
      break;
    }
    in.clear();
    in.seekg(body + static_cast<std::streamoff>(size) + (size & 1));  // chunks stand at even places
    if (!in) break;
  }
  problem = "it ends before its first sample";
  return std::nullopt;
}

}  // namespace

std::optional<IqFile> LoadIqFile(const std::string& path, std::string& message) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    message = "Cannot open \"" + path + "\": " + std::strerror(errno) + ".";
    return std::nullopt;
  }
  std::string problem;
  std::optional<IqFile> file = ReadRiff(in, problem);
  if (!file) {
    message = "Cannot play \"" + path + "\": " + problem +
              ". I/Q recordings are 16-bit stereo WAV files at 11025, 22050, 44100, 48000, 88200, 96000 or "
              "192000 Hz.";
  }
  return file;
}

}  // namespace spectrino
