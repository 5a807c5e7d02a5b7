#include "sim/DemoInput.h"

#include "sim/DemoBand.h"
#include "sim/PacedStream.h"

namespace spectrino {

std::vector<SoundDevice> DemoInput::Devices() {
  return {{"Demo signal (no hardware)", "demo", true, 0}};
}

std::unique_ptr<SoundStream> DemoInput::Open(const SoundDevice&, int rateHz, int, std::string&) {
  return std::make_unique<PacedStream>(clock_, rateHz,
                                       [band = DemoBand(seed_), rateHz, frequency = radioFreqMHz_](
                                           std::uint64_t firstFrame, std::span<std::int16_t> block) mutable {
                                         band.Render(firstFrame, rateHz, frequency(), block);
                                       });
}

}  // namespace spectrino
