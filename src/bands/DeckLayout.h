// What the mode buttons say, and which one a mode belongs to. The bands are in bandplan/.
// Presses nothing: BandModes acts on the clicks.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "bandplan/BandCaptions.h"
#include "state/DeckLayout.h"

namespace spectrino {

inline constexpr int kModeButtonCount = 10;

struct ModeButtonText {
  std::string_view Caption;  ///< empty: the button is hidden
  std::string_view ToolTip;
};
using ModeButtonTexts = std::array<ModeButtonText, kModeButtonCount>;

[[nodiscard]] const ModeButtonTexts& ModeTexts(ModeLayout layout);

/// 0..9; nothing for a mode without a button.
[[nodiscard]] std::optional<int> ModeButtonOf(ModeLayout layout, int radioMode);
/// CW or FSK on its other sideband.
[[nodiscard]] bool IsReverse(int radioMode);
/// The mode that a button asks for where no radio is asked, with the reverse flags as they stand. Nothing for
/// "rev" and for hidden buttons.
[[nodiscard]] std::optional<int> ModeOfButton(ModeLayout layout, int button, bool cwReverse, bool fskReverse);

}  // namespace spectrino
