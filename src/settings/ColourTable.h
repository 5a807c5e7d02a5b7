// The display colours: what each is for, and the two sets of defaults.
// Chooses no colour itself; what the user chose is in PanSettings.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace spectrino {

inline constexpr std::size_t kColourCount = 13;
/// Each 0x00BBGGRR, red in the low byte.
using ColourTable = std::array<std::uint32_t, kColourCount>;

/// The n of key "ccolor"n.
enum class ColourIndex : std::size_t {
  Signal,
  Background,
  SubDivision,
  Grid,
  Mark,
  Cursor,
  Fill,
  Filter,
  SubReceiver,
  Info,
  BackgroundPeak,
  Frequency,
  SMeter,
};

[[nodiscard]] constexpr std::uint32_t ColourOf(const ColourTable& table, ColourIndex index) {
  return table[static_cast<std::size_t>(index)];
}

struct ColourRow {
  const char* Caption;  ///< of the button that edits it
  std::uint32_t K4;     ///< at first run, and by "Default colors (K4)"
  std::uint32_t Own;    ///< by "Default colors (Spectrino)"
};

inline constexpr std::array<ColourRow, kColourCount> kColourRows{{
    {"Signal", 0x80FF80, 0x80FF80},
    {"Backg.", 0x550000, 0x550000},
    {"Sub.D", 0x3F3F3F, 0x3F3F3F},
    {"Grid", 0x808080, 0x808080},
    {"Mark", 0xFF8000, 0x0000FF},
    {"Cursor", 0x4080FF, 0xFF80FF},
    {"Fill", 0x316200, 0x316200},
    {"Filter", 0x793D00, 0x808080},
    {"Sub.F", 0x36D700, 0x4080FF},
    {"Info", 0x00FFFF, 0x00FFFF},
    {"BPH", 0x316200, 0x316200},
    {"Freq", 0xFFFFFF, 0xFFFFFF},
    {"SMeter", 0xFFFF00, 0xFFFF00},
}};

[[nodiscard]] constexpr ColourTable ColoursBy(std::uint32_t ColourRow::*column) {
  ColourTable table{};
  for (std::size_t n = 0; n < kColourCount; ++n) table[n] = kColourRows[n].*column;
  return table;
}
inline constexpr ColourTable kColoursK4 = ColoursBy(&ColourRow::K4);
inline constexpr ColourTable kColoursSpectrino = ColoursBy(&ColourRow::Own);

}  // namespace spectrino
