// Where the radio's frequency comes from, and how a sound-card spectrum relates to it.
// One row for each stored number: whoever needs to know what a number means asks its row.
#pragma once

#include <array>
#include <cstddef>

namespace spectrino {

/// Setting "OptFreq". The numbers are stored, so they never change.
enum class CatControl {
  HostIf = 0,
  FixedLo = 1,
  HostK3If = 2,
  BridgeIf = 3,
  BridgeFixedLo = 4,
  KetrelIf = 5,
  KetrelFixedLo = 6,
  RadioDirect = 7,
  IcomViaHost = 8,
};

/// Who carries frequencies and commands.
enum class CatWay {
  Host,         ///< the host CAT program
  HostK3,       ///< the same, which also tells the offset
  Bridge,       ///< the bridge service
  Ketrel,       ///< the outside program's settings section
  Direct,       ///< the radio that delivers the spectrum, by its own link
  HostAndScope  ///< the host program, for a radio whose scope it passes on as well
};

/// What stands between the radio's frequency and the 0 Hz of a sound card.
enum class OffsetRule {
  Mode,         ///< the mode's offset
  Global,       ///< one offset, plus what the link tells
  FixedCentre,  ///< a fixed oscillator: the band stands still, the marker moves
  None          ///< no sound card
};

struct CatControlRow {
  CatWay Way = CatWay::Host;
  OffsetRule Offset = OffsetRule::Mode;
};

[[nodiscard]] constexpr CatControlRow RowOf(CatControl control) {
  constexpr std::array<CatControlRow, 9> rows{{
      {CatWay::Host, OffsetRule::Mode},
      {CatWay::Host, OffsetRule::FixedCentre},
      {CatWay::HostK3, OffsetRule::Global},
      {CatWay::Bridge, OffsetRule::Global},
      {CatWay::Bridge, OffsetRule::FixedCentre},
      {CatWay::Ketrel, OffsetRule::Global},
      {CatWay::Ketrel, OffsetRule::FixedCentre},
      {CatWay::Direct, OffsetRule::None},
      {CatWay::HostAndScope, OffsetRule::None},
  }};
  return rows[static_cast<std::size_t>(control)];
}

/// The links that need the host CAT program.
[[nodiscard]] constexpr bool UsesHost(CatControl control) {
  const CatWay way = RowOf(control).Way;
  return way == CatWay::Host || way == CatWay::HostK3 || way == CatWay::HostAndScope;
}

/// The receiver hangs on an intermediate frequency that follows the radio's dial.
[[nodiscard]] constexpr bool UsesIfAdapter(CatControl control) {
  const OffsetRule rule = RowOf(control).Offset;
  return rule == OffsetRule::Mode || rule == OffsetRule::Global;
}

}  // namespace spectrino
