// Where the host's radio was on each band: no CAT server has a band command that all radios take.
// A table of the band buttons, kept in the settings; it tunes nothing.
#pragma once

#include <array>

#include "bandplan/Bands.h"
#include "host/HostState.h"
#include "settings/SettingsStore.h"

namespace spectrino {

struct HostBandRecord {
  double FreqMHz = 0;
  int Mode = hostmode::kUnknown;  ///< unknown: the radio's is left as it is
};

class HostBands {
 public:
  /// The store outlives it.
  explicit HostBands(SettingsStore& store) : store_(store) {}

  /// The button whose band holds the frequency, as the host's band decoder divides the bands.
  [[nodiscard]] int ButtonOf(double freqMHz) const;
  /// What is kept for button 0..13; a usual frequency of its band where nothing was kept, or what was kept
  /// lies in another band by now.
  [[nodiscard]] HostBandRecord Recall(int button) const;
  /// Keeps it for the button that the frequency belongs to.
  void Keep(const HostBandRecord& now);

 private:
  [[nodiscard]] BandLayout Layout() const;

  SettingsStore& store_;
};

}  // namespace spectrino
