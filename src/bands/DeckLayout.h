// What the band and mode buttons say, which one a frequency or mode belongs to, and which layout is in use.
// Presses nothing: BandModes acts on the clicks.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "bandplan/BandCaptions.h"
#include "settings/SettingsStore.h"
#include "state/DeckLayout.h"

namespace spectrino {

inline constexpr int kModeButtonCount = 10;

struct ModeButtonText {
  std::string_view Caption;  ///< empty: the button is hidden
  std::string_view ToolTip;
};
using ModeButtonTexts = std::array<ModeButtonText, kModeButtonCount>;

/// Whether the host's band decoder gives 80 m two buttons and 10 m one.
[[nodiscard]] bool ReadSplit80(SettingsStore& store);

[[nodiscard]] const ModeButtonTexts& ModeTexts(ModeLayout layout);

/// 0..13, "Gen" outside the bands of the layout; nothing for a frequency of 0, which is unknown.
[[nodiscard]] std::optional<int> BandButtonOf(BandLayout layout, double mhz);
/// 0..9; nothing for a mode without a button.
[[nodiscard]] std::optional<int> ModeButtonOf(ModeLayout layout, int radioMode);
/// CW or FSK on its other sideband.
[[nodiscard]] bool IsReverse(int radioMode);
/// The mode that a button asks for where no radio is asked, with the reverse flags as they stand. Nothing for
/// "rev" and for hidden buttons.
[[nodiscard]] std::optional<int> ModeOfButton(ModeLayout layout, int button, bool cwReverse, bool fskReverse);

}  // namespace spectrino
