#include "sim/IqFileInput.h"

#include <utility>

#include "sim/PacedStream.h"

namespace spectrino {

IqFileInput::IqFileInput(const Clock& clock, std::string path, IqFile file)
    : clock_(clock), path_(std::move(path)), file_(std::make_shared<const IqFile>(std::move(file))) {}

std::vector<SoundDevice> IqFileInput::Devices() {
  const std::size_t slash = path_.rfind('/');
  return {
      {slash == std::string::npos ? path_ : path_.substr(slash + 1), "file:" + path_, true, file_->RateHz}};
}

std::unique_ptr<SoundStream> IqFileInput::Open(const SoundDevice&, int rateHz, int, std::string& reason) {
  if (rateHz != file_->RateHz) {
    reason = path_ + " was recorded at " + std::to_string(file_->RateHz) + " Hz";
    return nullptr;
  }
  return std::make_unique<PacedStream>(
      clock_, rateHz, [file = file_](std::uint64_t firstFrame, std::span<std::int16_t> block) {
        const std::vector<std::int16_t>& samples = file->Samples;
        std::size_t at = static_cast<std::size_t>(firstFrame % (samples.size() / 2)) * 2;
        for (std::int16_t& sample : block) {
          sample = samples[at];
          if (++at == samples.size()) at = 0;
        }
      });
}

}  // namespace spectrino
