// Reads recordings of I/Q: 16-bit stereo WAV at a rate that the program knows.
// Plays nothing; IqFileInput does.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace spectrino {

struct IqFile {
  int RateHz = 0;
  std::vector<std::int16_t> Samples;  ///< interleaved left, right; whole stereo frames, at least one
};

/// The recording at path (UTF-8), or nothing with one sentence in message that names the file and what is
/// expected. A recording that ends early is used up to its last whole frame. Reads all of it into memory.
[[nodiscard]] std::optional<IqFile> LoadIqFile(const std::string& path, std::string& message);

}  // namespace spectrino
