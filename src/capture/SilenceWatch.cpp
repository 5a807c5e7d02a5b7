#include "capture/SilenceWatch.h"

namespace spectrino {
namespace {

/// The search ends at the first sample that differs: in a signal within the first few.
bool IsStill(std::span<const std::int16_t> block, std::size_t channel) {
  for (std::size_t i = channel + 2; i < block.size(); i += 2)
    if (block[i] != block[channel]) return false;
  return true;
}

}  // namespace

void SilenceWatch::Heard(std::span<const std::int16_t> block, Time begin, Time end) {
  if (block.size() < 2) return;
  end_ = end;
  for (std::size_t at = 0; at < channels_.size(); ++at) {
    Channel& channel = channels_[at];
    const bool still = IsStill(block, at);
    const bool goesOn = still && channel.Still && channel.Value == block[at];
    if (!goesOn) channel = {still, block[at], begin};
  }
}

std::string SilenceWatch::Warning(const std::string& name) const {
  const bool left = Silent(channels_[0]);
  const bool right = Silent(channels_[1]);
  if (left && right)
    return "\"" + name + "\" delivers silence: is the right input chosen, the cable in, the gain up?";
  if (!left && !right) return {};
  return "The " + std::string(left ? "left" : "right") + " channel of \"" + name +
         "\" is silent: without it each signal shows twice, once as its mirror image. Is the input stereo, "
         "the plug "
         "all the way in?";
}

}  // namespace spectrino
