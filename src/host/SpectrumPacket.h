// One packet of what a rigctld publishes of its radio, cut down to the scope line in it.
// Only reads; where the line belongs is the receiver's business.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "rig/HostIcom.h"

namespace spectrino {

/// The main scope's line of a packet: an object in JSON with, among what is not read,
///
///   "spectra": [{ "id": 0, "type": "CENTER" or "FIXED", "centerFreq", "span" (full), "lowFreq", "highFreq":
///   Hz,
///                 "minLevel", "maxLevel": of a point, "length": points, "data": two hex digits a point }]
///
/// Nothing for a packet without spectra (the news that a dial was turned), and for one that is cut, or holds
/// a frequency, a level or a length that no scope has.
[[nodiscard]] std::optional<HostScopeLine> ReadSpectrumPacket(std::span<const std::uint8_t> packet);

}  // namespace spectrino
