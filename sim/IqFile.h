// Reads an I/Q recording: a WAV file of 16-bit stereo PCM.
// Not a general sound-file reader: everything else is refused with a sentence that says so.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace spectrino {

struct IqFile {
  int RateHz = 0;                     ///< one of kSoundRatesHz
  std::vector<std::int16_t> Samples;  ///< interleaved left, right; at least one frame
};

/// Reads the whole file into memory, up to 2 GiB of samples. Takes RIFF/WAVE with format tag 1 or extensible
/// PCM; skips other chunks; a data chunk without a size (0 or FFFFFFFF, as streaming recorders leave it) or
/// longer than the file runs to the last whole frame. Nothing when the file is unusable: message is then one
/// sentence that names the file and what was expected.
[[nodiscard]] std::optional<IqFile> LoadIqFile(const std::string& path, std::string& message);

}  // namespace spectrino
