// Which band a frequency is in, by each of the numberings in use.
// Says nothing of where one may transmit.
#pragma once

#include <optional>

#include "settings/SettingsStore.h"
#include "state/DeckLayout.h"

namespace spectrino {

inline constexpr int kBandButtonCount = 14;

/// Index of the band button (0..13) whose designed range holds the frequency, both ends included; 0 ("Gen")
/// outside all of them. 29 MHz itself belongs to the lower half of 10 m.
[[nodiscard]] int BandButton(double mhz);

/// The band (0..12) under which reference level and range are kept. Nothing for UHF, which has none.
[[nodiscard]] std::optional<int> RefBand(double mhz);

/// Band number of the band memory: 1..21 amateur bands, else 22..42 by coarse range, 0 outside 0..3500 MHz.
/// Radios connected directly, Icom and K4, both use it.
[[nodiscard]] int IcomBandNumber(double mhz);

/// The band-memory record that band button 0..13 recalls. The buttons count 60 m and all of 10 m as one band
/// each, like BandLayout::With60m, and so differ from BandButton between 40 m and 10 m.
[[nodiscard]] int BandRecordOfButton(int button);

/// Whether the host's band decoder gives 80 m two buttons and 10 m one.
[[nodiscard]] bool ReadSplit80(SettingsStore& store);
/// 0..13, "Gen" outside the bands of the layout; nothing for a frequency of 0, which is unknown.
[[nodiscard]] std::optional<int> BandButtonOf(BandLayout layout, double mhz);

}  // namespace spectrino
