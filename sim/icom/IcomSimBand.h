// What a simulated Icom hears: a band drawn as power over frequency, the same wherever the radio is tuned.
// Not a signal to listen to, and not the scope's own scaling: see IcomSimScope.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "sim/Morse.h"

namespace spectrino {

/// Every 500 kHz the same plan with other stations: telegraphy in the first 70 kHz, an FT8-like group at
/// 74 kHz, voices up to 350 kHz, broadcast carriers above. What is where follows from frequency, time and
/// seed alone, so any line can be drawn without the lines before it.
class IcomSimBand {
 public:
  explicit IcomSimBand(std::uint64_t seed = 1);

  /// Fills dBm with the power around each point; the first point shows lowHz, the last one highHz.
  /// lowHz below highHz; at least two points. seconds: since the radio was switched on, 0 and up.
  void Render(double lowHz, double highHz, double seconds, std::span<double> dBm) const;

  /// Power in dBm that a 2.4 kHz filter around a frequency lets through.
  [[nodiscard]] double PowerAt(double hz, double seconds) const;

 private:
  struct Line;
  struct Keying {
    std::vector<MorseMark> Marks;
    int CycleDits = 0;
  };

  void AddStations(const Line& line, double periodHz) const;
  void AddTelegraphy(const Line& line, std::uint64_t key, double hz) const;
  void AddVoice(const Line& line, std::uint64_t key, double hz) const;
  void AddSlotGroup(const Line& line, std::uint64_t key, double hz) const;

  std::uint64_t seed_;
  Keying call_;
};

}  // namespace spectrino
