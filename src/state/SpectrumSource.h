// Where lines come from: the sound card, a K4, an Icom. One implementation for each.
// A source does not draw, does not keep history and never blocks.
#pragma once

#include <string>

#include "state/SpectrumLine.h"

namespace spectrino {

/// What a pass of the run cycle knows when it asks a source for a line.
struct LineRequest {
  double RadioFreqMHz = 0;  ///< MainFreqMHz; 0 when unknown
  double IfOffsetKHz = 0;   ///< radio frequency minus the frequency of the line's 0 Hz
  int RadioMode = 0;
  int BandFlip = 1;             ///< -1 where I and Q swap automatically
  float LevelCorrectionDb = 0;  ///< added to every level of a sound-card line
  float BottomLevel = 0;        ///< the plot's level range, for sources without a range of their own
  float TopLevel = 0;
};

enum class PollResult {
  Pending,  ///< nothing new since the last line
  Line,     ///< the line given to Poll was filled
  Failed,   ///< the source is gone; Failure() tells the user why
};

class SpectrumSource {
 public:
  virtual ~SpectrumSource() = default;
  SpectrumSource() = default;
  SpectrumSource(const SpectrumSource&) = delete;
  SpectrumSource& operator=(const SpectrumSource&) = delete;

  /// Takes the next line if one is there. Never blocks, never allocates once the sizes have settled.
  virtual PollResult Poll(const LineRequest& request, SpectrumLine& line) = 0;
  /// After Failed: what happened and what to do, in the user's terms.
  [[nodiscard]] virtual std::string Failure() const = 0;
};

}  // namespace spectrino
