// A single-sideband channel on which two stations talk in turn.
// Sounds like speech on the waterfall, not to the ear: syllables are pitch harmonics under formants.
#pragma once

#include <array>

#include "sim/DemoSignal.h"
#include "sim/HarmonicKernel.h"

namespace spectrino {

class VoiceSignal final : public DemoSignal {
 public:
  /// levelsDb: the strongest harmonic of a loud syllable of either station. patternHz is the suppressed
  /// carrier.
  VoiceSignal(double patternHz, std::array<double, 2> levelsDb, std::uint64_t key);
  void AddTo(const Slice& slice, const Placement& place, SliceBuffer& out) override;

 private:
  struct Syllable {
    std::int64_t Cell = -1;  ///< which cell of time this is; a cell holds at most one syllable
    double Amplitude = 0;    ///< 0: silence
    double OnS = 0;          ///< from the start of the cell
    double OffS = 0;
    double PitchHz = 100;  ///< at the start of the cell
    double GlideHzPerS = 0;
    double Roughness = 0;  ///< cycles of pitch jitter; much of it turns the harmonics into noise
    HarmonicBank Bank;
  };

  struct Speaker {
    Fading Strength;
    double PitchHz = 120;
  };

  void MakeSyllable(std::int64_t cell);
  [[nodiscard]] double EnvelopeAt(double secondsInCell) const;
  [[nodiscard]] double PitchCyclesAt(double secondsInCell) const;

  std::uint64_t key_;
  double cellS_;
  double turnS_;
  std::array<Speaker, 2> speakers_;
  Syllable syllable_;  ///< the one last needed; a cache, not a state
};

}  // namespace spectrino
