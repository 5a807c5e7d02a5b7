// Random numbers by place, not by turn: the n-th value is computed from n.
// So any moment of the demo can be rendered without the moments before it. Not for cryptography.
#pragma once

#include <cstdint>

namespace spectrino {

/// The SplitMix64 finaliser: every output bit depends on every input bit.
[[nodiscard]] constexpr std::uint64_t Mix(std::uint64_t value) {
  value += 0x9E3779B97F4A7C15U;
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9U;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EBU;
  return value ^ (value >> 31);
}

/// A hash of a key and up to two places below it.
[[nodiscard]] constexpr std::uint64_t Mix(std::uint64_t key, std::uint64_t place, std::uint64_t detail = 0) {
  return Mix(Mix(Mix(key) + place) + detail);
}

/// The hash as a number in [0, 1).
[[nodiscard]] constexpr double Unit(std::uint64_t hash) {
  return static_cast<double>(hash >> 11) * 0x1p-53;
}

/// The hash as a number in [low, high).
[[nodiscard]] constexpr double Between(std::uint64_t hash, double low, double high) {
  return low + Unit(hash) * (high - low);
}

}  // namespace spectrino
