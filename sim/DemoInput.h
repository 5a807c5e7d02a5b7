// The demo band as a sound input, always there.
#pragma once

#include <functional>

#include "platform/Clock.h"
#include "platform/SoundInput.h"

namespace spectrino {

class DemoInput final : public SoundInput {
 public:
  /// radioFreqMHz tells what the radio is tuned to, 0 while that is unknown; the band stands still around it.
  DemoInput(const Clock& clock, std::function<double()> radioFreqMHz, std::uint32_t seed)
      : clock_(clock), radioFreqMHz_(std::move(radioFreqMHz)), seed_(seed) {}

  [[nodiscard]] std::vector<SoundDevice> Devices() override;
  [[nodiscard]] std::unique_ptr<SoundStream> Open(const SoundDevice& device, int rateHz, int blockFrames,
                                                  std::string& reason) override;

 private:
  const Clock& clock_;
  std::function<double()> radioFreqMHz_;
  std::uint32_t seed_;
};

}  // namespace spectrino
