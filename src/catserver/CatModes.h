// The modes by the names that programs know them by: Hamlib's words and bits.
// Kenwood's digits are the RadioMode codes themselves.
#pragma once

#include <span>
#include <string_view>

#include "rig/RigBackend.h"

namespace spectrino {

struct CatMode {
  std::string_view Word;  ///< Hamlib's: "PKTUSB"
  ExactMode Exact;
  unsigned Bit;  ///< in Hamlib's masks of modes
};

[[nodiscard]] std::span<const CatMode> CatModes();
/// Null for a mode that has no word.
[[nodiscard]] const CatMode* CatModeOf(const ExactMode& exact);
/// Null for a word that no radio here has.
[[nodiscard]] const CatMode* CatModeOf(std::string_view word);

/// Whether a mode is DATA, the reverse one too.
[[nodiscard]] bool IsData(int radioMode);

}  // namespace spectrino
