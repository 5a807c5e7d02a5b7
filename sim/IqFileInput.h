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
  /// path: where the file came from; names the device. clock must outlive the input and its streams.
  IqFileInput(const Clock& clock, std::string path, IqFile file);

  [[nodiscard]] std::vector<SoundDevice> Devices() override;
  /// Opens at the file's own rate only: another rate would show the signals at wrong frequencies.
  [[nodiscard]] std::unique_ptr<SoundStream> Open(const SoundDevice& device, int rateHz, int blockFrames,
                                                  std::string& reason) override;
  [[nodiscard]] int RateHz() const { return file_->RateHz; }

 private:
  const Clock& clock_;
  SoundDevice device_;
  std::shared_ptr<const IqFile> file_;  ///< shared with the streams: samples can be gigabytes
};

}  // namespace spectrino
