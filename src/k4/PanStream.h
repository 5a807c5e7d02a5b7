// The K4's own spectrum: frames of the panadapter connection, cropped and averaged into lines.
// Whole frames only: K4PanAssembler makes them from what the socket delivers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "k4/K4State.h"

namespace spectrino {

/// One frame as it comes over the wire; ASCII fields are decimal numbers.
///
///   offset  0    5      6        7          13           24                29      64               4160
///          +----+------+--------+----------+------------+-----------------+-------+----------------+------+
///          |sync|unused| letter | span, Hz | centre, Hz | reference level,|unused | 2048 levels    |unused|
///          |    |      | A B Y Z|          |            | 0.1 dB, signed  |       | 0.1 dB each    |      |
///          +----+------+--------+----------+------------+-----------------+-------+----------------+------+
///   bytes   5    1      1        6          11           5                 35      2 * 2048         2
///
///   sync    FF FE 01 00 02
///   letter  A main panadapter, B not shown, Y main mini-pan, Z sub mini-pan
///   level   two's complement, high byte first: FB 50 is -1200, -120 dB
inline constexpr std::size_t kPanFrameBytes = 4162;
inline constexpr int kPanFrameLevels = 2048;
inline constexpr std::string_view kPanSync{"\xFF\xFE\x01\x00\x02", 5};

/// Takes the frames of one read, averages those of each display, and publishes one line per display in
/// state.K4PanChannels, cropped to the span that K4SpanPreset asks for.
///
/// Frame k is looked for from k * 4162 on. Nothing is published before PanScaleDb is known, nor by a read
/// that holds an unknown letter, a span or centre that is not positive, a reference level that cannot be, or
/// two spans of one display: its lines would not belong together. A line is never wider than its frame.
/// Allocates only the first time that a display is seen.
void ParseK4PanFrames(std::span<const std::uint8_t> read, K4State& state);

}  // namespace spectrino
