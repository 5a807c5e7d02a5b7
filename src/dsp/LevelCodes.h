// A line's levels as bytes, and such bytes on another grid of frequencies.
// Keeps no lines; that is LinePast's.
#pragma once

#include <cstdint>
#include <span>

#include "state/SpectrumLine.h"

namespace spectrino {

/// What the bytes of one line mean: 0 is kUndrawnLevel, 1..255 are equal steps upwards.
struct LevelCodes {
  static constexpr int kSteps = 254;

  float Base = 0;        ///< level of byte 1; a whole number of quanta
  float Quantum = 0.5F;  ///< dB, or height of a radio's own scope

  bool operator==(const LevelCodes&) const = default;
  [[nodiscard]] float Top() const { return Base + kSteps * Quantum; }
  [[nodiscard]] float LevelOf(std::uint8_t code) const {
    return code == 0 ? kUndrawnLevel : Base + static_cast<float>(code - 1) * Quantum;
  }
};

/// For these levels: half a unit over the 127 below the strongest; a whole one over 254 where that is too
/// little, as with a radio's heights of 0..160, which are whole numbers. Levels of kEmptyLevel and below do
/// not count.
[[nodiscard]] LevelCodes CodesFor(std::span<const float> levels);
/// bytes: as many as levels. What lies below the steps, or is no number, becomes the lowest.
void EncodeLevels(std::span<const float> levels, const LevelCodes& codes, std::span<std::uint8_t> bytes);
/// The bytes of one meaning in another: into[x] becomes the stronger of what it was and bytes[x]. Both are as
/// long.
void JoinCodes(std::span<const std::uint8_t> bytes, const LevelCodes& from, const LevelCodes& to,
               std::span<std::uint8_t> into);

/// Cells First..End-1.
struct CellRange {
  int First = 0;
  int End = 0;
};

/// Byte i stands at i; cell x covers first + x * step up to, but not with, first + (x + 1) * step, the last
/// one its end too. It takes the strongest byte in it, or what lies between its neighbours at its middle
/// where there is none. Returns the cells that the line reaches, half a step beyond its outer bytes; others
/// are left as they are.
[[nodiscard]] CellRange ResampleCodes(std::span<const std::uint8_t> bytes, double first, double step,
                                      std::span<std::uint8_t> cells);

}  // namespace spectrino
