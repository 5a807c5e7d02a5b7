// A recording as a sound input: played in real time, over and over.
#pragma once

#include <memory>

#include "platform/Clock.h"
#include "platform/SoundInput.h"
#include "sim/IqFile.h"

namespace spectrino {

class IqFileInput final : public SoundInput {
 public:
  /// path names the device in the list (without its folder) and is its stable id.
  IqFileInput(const Clock& clock, std::string path, IqFile file);

  [[nodiscard]] std::vector<SoundDevice> Devices() override;
  [[nodiscard]] std::unique_ptr<SoundStream> Open(const SoundDevice& device, int rateHz, int blockFrames,
                                                  std::string& reason) override;

 private:
  const Clock& clock_;
  std::string path_;
  std::shared_ptr<const IqFile> file_;  // streams may outlast the list that they were opened from
};

}  // namespace spectrino
