#include "sim/IqFileInput.h"

#include <filesystem>
#include <optional>

#include "sim/PacedStream.h"
#include "sim/ReadAhead.h"

namespace spectrino {

namespace {

class IqFileStream final : public PacedStream {
 public:
  IqFileStream(const Clock& clock, const std::string& name, const IqFile& file)
      : PacedStream(clock, file.RateHz), name_(name), frames_(file) {}

  [[nodiscard]] std::string Cause() const override {
    return "The recording " + name_ + " was cut short or cannot be read any more";
  }

 protected:
  BlockState Fill(std::uint64_t firstFrame, std::span<std::int16_t> block) override {
    switch (frames_.Take(firstFrame, block)) {
      case ReadAhead::Got::All:
        return BlockState::Done;
      case ReadAhead::Got::NotYet:
        return BlockState::Pending;
      case ReadAhead::Got::Never:
        break;
    }
    return BlockState::Failed;
  }

 private:
  std::string name_;
  ReadAhead frames_;
};

}  // namespace

IqFileInput::IqFileInput(const Clock& clock, const std::string& path, const IqFile& file)
    : clock_(clock),
      path_(path),
      device_{std::filesystem::path(path).filename().string(), "file:" + path, true, file.RateHz,
              SourceKind::Recording} {}

std::vector<SoundDevice> IqFileInput::Devices() {
  return {device_};
}

std::unique_ptr<SoundStream> IqFileInput::Open(const SoundDevice& device, int rateHz, int blockFrames,
                                               std::string& reason) {
  if (device.StableId != device_.StableId) {
    reason = "\"" + device.Name + "\" is not the file " + device_.Name + ".";
    return nullptr;
  }
  // Anew: it may have become another one since it was listed.
  const std::optional<IqFile> file = LoadIqFile(path_, reason);
  if (!file) {
    reason += ".";
    return nullptr;
  }
  if (rateHz != file->RateHz || blockFrames <= 0) {
    reason = device_.Name + " was recorded at " + std::to_string(file->RateHz) +
             " Hz and cannot be played at " + std::to_string(rateHz) + " Hz.";
    return nullptr;
  }
  return std::make_unique<IqFileStream>(clock_, device_.Name, *file);
}

}  // namespace spectrino
