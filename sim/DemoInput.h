// The demo signal as a sound input, so that the program runs on a machine without a sound card.
// Not the signal itself: see DemoBand.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/Clock.h"
#include "platform/SoundInput.h"

namespace spectrino {

class DemoInput final : public SoundInput {
 public:
  /// radioFreqMHz tells what 0 Hz receives, 0 when unknown; asked once a block. clock must outlive the input
  /// and its streams.
  DemoInput(const Clock& clock, std::function<double()> radioFreqMHz, std::uint32_t seed);

  [[nodiscard]] std::vector<SoundDevice> Devices() override;
  [[nodiscard]] std::unique_ptr<SoundStream> Open(const SoundDevice& device, int rateHz, int blockFrames,
                                                  std::string& reason) override;

 private:
  const Clock& clock_;
  std::function<double()> radioFreqMHz_;
  std::uint32_t seed_;
};

}  // namespace spectrino
