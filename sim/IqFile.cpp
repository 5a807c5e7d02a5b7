#include "sim/IqFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <span>
#include <string_view>

#include "sim/DemoBand.h"

namespace spectrino {

namespace {

constexpr std::string_view kNeed = "; I/Q files need 16-bit stereo";

std::uint32_t LittleEndian(std::span<const unsigned char> bytes) {
  std::uint32_t value = 0;
  for (std::size_t i = bytes.size(); i-- > 0;) value = value << 8 | bytes[i];
  return value;
}

// fmt chunk: tag(2) channels(2) rate(4) bytes/s(4) frame bytes(2) bits(2) | extra(2) valid bits(2) mask(4)
// GUID(16)
struct WaveFormat {
  std::uint32_t Tag = 0;
  std::uint32_t Channels = 0;
  std::uint32_t RateHz = 0;
  std::uint32_t FrameBytes = 0;
  std::uint32_t Bits = 0;
};

constexpr std::uint32_t kTagPcm = 1;
constexpr std::uint32_t kTagFloat = 3;
constexpr std::uint32_t kTagExtensible = 0xFFFE;

WaveFormat ParseFormat(std::span<const unsigned char> chunk) {
  // The tail that all format GUIDs of WAVE share; the tag stands before it.
  constexpr std::array<unsigned char, 14> kGuidTail{0, 0, 0,    0, 0x10, 0,    0x80,
                                                    0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};
  WaveFormat format{LittleEndian(chunk.subspan(0, 2)), LittleEndian(chunk.subspan(2, 2)),
                    LittleEndian(chunk.subspan(4, 4)), LittleEndian(chunk.subspan(12, 2)),
                    LittleEndian(chunk.subspan(14, 2))};
  if (format.Tag == kTagExtensible && chunk.size() >= 40 &&
      std::equal(kGuidTail.begin(), kGuidTail.end(), chunk.begin() + 26)) {
    format.Tag = LittleEndian(chunk.subspan(24, 2));
  }
  return format;
}

/// What is wrong with the format, empty when nothing is.
std::string Objection(const WaveFormat& format) {
  const std::string need(kNeed);
  if (format.Tag == kTagFloat) return "floating-point samples" + need;
  if (format.Tag != kTagPcm) return "sample format " + std::to_string(format.Tag) + " is not PCM" + need;
  if (format.Channels == 1) return "mono" + need;
  if (format.Channels != 2) return std::to_string(format.Channels) + " channels" + need;
  if (format.Bits != 16) return std::to_string(format.Bits) + "-bit samples" + need;
  if (format.FrameBytes != 4) return "frames of " + std::to_string(format.FrameBytes) + " bytes" + need;
  if (format.RateHz > 1'000'000 || !IsSoundRate(static_cast<int>(format.RateHz))) {
    std::string rates;
    for (const int rate : kSoundRatesHz) rates += (rates.empty() ? "" : ", ") + std::to_string(rate);
    return "sample rate " + std::to_string(format.RateHz) + " Hz; I/Q files need one of " + rates + " Hz";
  }
  return {};
}

struct Layout {
  std::optional<WaveFormat> Format;
  std::uint64_t DataAt = 0;
  std::uint64_t DataBytes = 0;
  bool HasData = false;
};

template <std::size_t Size>
bool ReadExactly(std::istream& file, std::array<unsigned char, Size>& bytes, std::size_t count = Size) {
  return static_cast<bool>(
      file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(count)));
}

/// Walks the chunks after the RIFF header; stops at the data or wherever the file stops making sense.
Layout WalkChunks(std::istream& file, std::uint64_t fileBytes) {
  Layout layout;
  std::uint64_t at = 12;
  while (at + 8 <= fileBytes && !(layout.Format && layout.HasData)) {
    std::array<unsigned char, 8> header{};
    file.seekg(static_cast<std::streamoff>(at));
    if (!ReadExactly(file, header)) break;
    const std::string_view id(reinterpret_cast<const char*>(header.data()), 4);
    const std::uint64_t size = LittleEndian(std::span(header).subspan(4));
    const std::uint64_t left = fileBytes - at - 8;
    if (id == "fmt " && size >= 16 && left >= 16) {
      std::array<unsigned char, 40> chunk{};
      const std::size_t count = static_cast<std::size_t>(std::min<std::uint64_t>({size, left, chunk.size()}));
      if (!ReadExactly(file, chunk, count)) break;
      layout.Format = ParseFormat(std::span(chunk).first(count));
    } else if (id == "data" && !layout.HasData) {
      layout.HasData = true;
      layout.DataAt = at + 8;
      const bool sizeUnknown = size == 0 || size == 0xFFFFFFFF;
      layout.DataBytes = sizeUnknown ? left : std::min(size, left);
      if (sizeUnknown) break;
    }
    at += 8 + size + size % 2;
  }
  return layout;
}

}  // namespace

std::string ParseIqFile(std::istream& file, std::uint64_t fileBytes, IqFile& iq) {
  std::array<unsigned char, 12> riff{};
  const bool isWave = ReadExactly(file, riff) && std::memcmp(riff.data(), "RIFF", 4) == 0 &&
                      std::memcmp(riff.data() + 8, "WAVE", 4) == 0;
  if (!isWave) return "not a WAV file" + std::string(kNeed) + " WAV";
  const Layout layout = WalkChunks(file, fileBytes);
  if (!layout.Format) return "the WAV file has no format chunk" + std::string(kNeed);
  if (const std::string objection = Objection(*layout.Format); !objection.empty()) return objection;
  if (!layout.HasData || layout.DataBytes < 4) return "there are no samples in it";
  iq.RateHz = static_cast<int>(layout.Format->RateHz);
  iq.DataAt = layout.DataAt;
  iq.Frames = layout.DataBytes / 4;
  return {};
}

std::optional<IqFile> LoadIqFile(const std::string& path, std::string& message) {
  message = path + ": ";
  std::error_code error;
  const bool regular = std::filesystem::is_regular_file(path, error);
  const std::uint64_t fileBytes = regular ? std::filesystem::file_size(path, error) : 0;
  if (error || !regular) {
    message += error ? "cannot be read: " + error.message() : "is not a file";
    return std::nullopt;
  }
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    message += std::string("cannot be read: ") + std::strerror(errno);
    return std::nullopt;
  }
  IqFile iq{.Path = path};
  if (const std::string wrong = ParseIqFile(file, fileBytes, iq); !wrong.empty()) {
    message += wrong;
    return std::nullopt;
  }
  message.clear();
  return iq;
}

}  // namespace spectrino
