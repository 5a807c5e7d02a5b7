// Where the operator was on each band: frequency, mode and scope level, for radios connected directly.
// Tunes nothing and does not decide when a record is kept.
#pragma once

#include <array>
#include <cstddef>

#include "settings/SettingsStore.h"

namespace spectrino {

inline constexpr std::size_t kBandRecordCount = 22;

struct BandRecord {
  double FrequencyMHz = 0;
  int Mode = 2;    ///< Icom: mode index; K4: mode code
  int Level = 10;  ///< scope reference level, dB
};

/// Index: IcomBandNumber, 0 for general coverage.
struct BandMemory {
  std::array<BandRecord, kBandRecordCount> Records;
};

enum class BandMemoryRadio { Icom, K4 };

/// Always reads the Icom keys: K4 records begin with them, or with the defaults, in each run.
[[nodiscard]] BandMemory LoadBandMemory(SettingsStore& store);

/// Keeps where the radio is now in the record of its band and stores that record, in one write. An Icom on
/// 2200 m, 4 m, 1.25 m, from 33 cm up or outside the amateur bands is stored as general coverage as well; a
/// band without a record (22 and above) only so. now.Level is not used for a K4. A frequency of 0 is
/// unknown: nothing is kept.
void SaveBandMemory(SettingsStore& store, BandMemory& memory, BandMemoryRadio radio, const BandRecord& now);

/// The scope reference level of an Icom alone, under the same rules.
void SaveBandLevel(SettingsStore& store, BandMemory& memory, double mhz, int level);

}  // namespace spectrino
