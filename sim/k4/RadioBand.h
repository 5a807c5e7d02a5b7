// A band of stations by absolute frequency, as a radio's own scope would see it.
// Levels per bin; no samples and no radio. Deterministic from frequency and time.
#pragma once

#include <cstdint>
#include <span>

namespace spectrino {

class RadioBand {
 public:
  /// Levels in dBm for levels.size() bins over spanHz around centreHz, seconds after the start of time.
  void Fill(double centreHz, double spanHz, double seconds, std::span<float> levels) const;
  /// The strongest level between two frequencies.
  [[nodiscard]] float Strongest(double lowHz, double highHz, double seconds) const;
};

}  // namespace spectrino
