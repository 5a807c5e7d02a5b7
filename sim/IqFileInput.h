// An I/Q recording as a sound input: played in real time, again and again.
// Not the reading of the file: see IqFile.
#pragma once

#include <memory>
#include <string>

#include "platform/Clock.h"
#include "platform/SoundInput.h"
#include "sim/IqFile.h"

namespace spectrino {

class IqFileInput final : public SoundInput {
 public:
  /// file: what LoadIqFile found at path, which names the device. clock must outlive the input and its
  /// streams.
  IqFileInput(const Clock& clock, const std::string& path, const IqFile& file);

  [[nodiscard]] std::vector<SoundDevice> Devices() override;
  /// Opens at the file's own rate only: another rate would show the signals at wrong frequencies.
  [[nodiscard]] std::unique_ptr<SoundStream> Open(const SoundDevice& device, int rateHz, int blockFrames,
                                                  std::string& reason) override;

 private:
  const Clock& clock_;
  std::string path_;
  SoundDevice device_;
};

}  // namespace spectrino
