#include "sim/DemoInput.h"

#include <utility>

#include "sim/DemoBand.h"
#include "sim/PacedStream.h"

namespace spectrino {

namespace {

constexpr const char* kDemoId = "demo";

class DemoStream final : public PacedStream {
 public:
  DemoStream(const Clock& clock, int rateHz, std::uint32_t seed, std::function<double()> radioFreqMHz)
      : PacedStream(clock, rateHz), band_(rateHz, seed), radioFreqMHz_(std::move(radioFreqMHz)) {}

  [[nodiscard]] std::string Cause() const override { return {}; }  // there is nothing that could fail

 protected:
  BlockState Fill(std::uint64_t firstFrame, std::span<std::int16_t> block) override {
    band_.Render(firstFrame, radioFreqMHz_ ? radioFreqMHz_() : 0, block);
    return BlockState::Done;
  }

 private:
  DemoBand band_;
  std::function<double()> radioFreqMHz_;
};

}  // namespace

DemoInput::DemoInput(const Clock& clock, std::function<double()> radioFreqMHz, std::uint32_t seed)
    : clock_(clock), radioFreqMHz_(std::move(radioFreqMHz)), seed_(seed) {}

std::vector<SoundDevice> DemoInput::Devices() {
  return {{"Demo signal (no hardware)", kDemoId, true, 0, SourceKind::Demo}};
}

std::unique_ptr<SoundStream> DemoInput::Open(const SoundDevice& device, int rateHz, int blockFrames,
                                             std::string& reason) {
  if (device.StableId != kDemoId) {
    reason = "\"" + device.Name + "\" is not the demo signal.";
    return nullptr;
  }
  if (!IsSoundRate(rateHz) || blockFrames <= 0) {
    reason = "The demo signal has no rate of " + std::to_string(rateHz) + " Hz in blocks of " +
             std::to_string(blockFrames) + " frames.";
    return nullptr;
  }
  return std::make_unique<DemoStream>(clock_, rateHz, seed_, radioFreqMHz_);
}

}  // namespace spectrino
