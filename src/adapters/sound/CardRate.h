// The rate at which a sound card's hardware really captures, from the kernel's own report.
// Not what a sound server says about it: a server may resample and still name the rate that was asked for.
#pragma once

#include <filesystem>
#include <optional>

namespace spectrino {

/// The rate in Hz of the card's open capture stream, from root/card<card>/pcm<device>c/sub0/hw_params.
/// Empty when the stream is closed, the file cannot be read or names no rate.
[[nodiscard]] std::optional<int> ReadCardRateHz(int card, int device,
                                                const std::filesystem::path& root = "/proc/asound");

}  // namespace spectrino
