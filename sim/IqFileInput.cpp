#include "sim/IqFileInput.h"

#include <algorithm>
#include <cassert>
#include <filesystem>
#include <utility>

#include "sim/PacedStream.h"

namespace spectrino {

namespace {

class IqFileStream final : public PacedStream {
 public:
  IqFileStream(const Clock& clock, std::shared_ptr<const IqFile> file)
      : PacedStream(clock, file->RateHz), file_(std::move(file)) {}

 protected:
  void Fill(std::uint64_t firstFrame, std::span<std::int16_t> block) override {
    const std::span<const std::int16_t> samples(file_->Samples);
    auto at = static_cast<std::size_t>(firstFrame % (samples.size() / 2)) * 2;
    while (!block.empty()) {
      const std::size_t count = std::min(block.size(), samples.size() - at);
      std::copy_n(samples.begin() + static_cast<std::ptrdiff_t>(at), count, block.begin());
      block = block.subspan(count);
      at = 0;
    }
  }

 private:
  std::shared_ptr<const IqFile> file_;
};

}  // namespace

IqFileInput::IqFileInput(const Clock& clock, std::string path, IqFile file)
    : clock_(clock),
      device_{std::filesystem::path(path).filename().string(), "file:" + path, true, file.RateHz,
              SourceKind::Recording},
      file_(std::make_shared<const IqFile>(std::move(file))) {
  assert(file_->Samples.size() >= 2 && file_->Samples.size() % 2 == 0);
}

std::vector<SoundDevice> IqFileInput::Devices() {
  return {device_};
}

std::unique_ptr<SoundStream> IqFileInput::Open(const SoundDevice& device, int rateHz, int blockFrames,
                                               std::string& reason) {
  if (device.StableId != device_.StableId) {
    reason = "\"" + device.Name + "\" is not the file " + device_.Name;
    return nullptr;
  }
  if (rateHz != file_->RateHz || blockFrames <= 0) {
    reason = device_.Name + " was recorded at " + std::to_string(file_->RateHz) +
             " Hz and cannot be played at " + std::to_string(rateHz) + " Hz";
    return nullptr;
  }
  return std::make_unique<IqFileStream>(clock_, file_);
}

}  // namespace spectrino
