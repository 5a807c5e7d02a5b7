// What an I/Q recording is: a WAV file of 16-bit stereo PCM, and where its samples stand.
// Not a general sound-file reader: everything else is refused with a sentence that says so. Reads no samples.
#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <string>

namespace spectrino {

struct IqFile {
  std::string Path;
  int RateHz = 0;            ///< one of kSoundRatesHz
  std::uint64_t DataAt = 0;  ///< offset of the first frame: left, right, 2 bytes each, low byte first
  std::uint64_t Frames = 0;  ///< stereo frames; at least one
};

/// Takes RIFF/WAVE with format tag 1 or extensible PCM; skips other chunks; a data chunk without a size (0 or
/// FFFFFFFF, as streaming recorders leave it) or longer than the file runs to the last whole frame. Nothing
/// when the file is unusable: message is then one sentence, without a full stop, that names the file and what
/// was expected.
[[nodiscard]] std::optional<IqFile> LoadIqFile(const std::string& path, std::string& message);

/// The same for a file that is open already, of so many bytes. Returns what is wrong with it, empty when
/// nothing is; iq.Path stays as it was.
[[nodiscard]] std::string ParseIqFile(std::istream& file, std::uint64_t fileBytes, IqFile& iq);

}  // namespace spectrino
