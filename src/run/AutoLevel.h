// The level axis and the waterfall's colours as the received noise and the strongest signals want them.
// Follows lines and sends nothing; when it is asked for, and what stands in its place, is PlotLevels'.
#pragma once

#include "dsp/NoiseFloor.h"
#include "state/FrameGeometry.h"
#include "state/Pacer.h"
#include "state/ScaleState.h"
#include "state/SpectrumLine.h"

namespace spectrino {

class AutoLevel {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// The next line is taken as it is.
  void Restart() { known_ = false; }
  /// With each new line. shown: where it is drawn. inDb: its levels are dB, else heights of a radio's scope,
  /// two to the decibel. A line of another source, of another rate or of none of the frequencies before it is
  /// taken as it is; after that bottom and top move in steps of 5 dB, four a second at most.
  void Follow(const SpectrumLine& line, const FrameGeometry& shown, bool inDb, Time now);
  /// Whether lines of such levels were followed.
  [[nodiscard]] bool Known(bool inDb) const { return known_ && inDb == inDb_; }
  /// The axis: whole steps, the noise 4 to 12 dB above its bottom, the strongest signals below its top, 50 dB
  /// at least. Only while Known.
  [[nodiscard]] LevelScale Scale() const;
  /// The waterfall: its noise in the lowest twelfth. Only while Known.
  [[nodiscard]] LevelRange Colours() const;

 private:
  [[nodiscard]] bool Elsewhere(const SpectrumLine& line, bool inDb) const;
  void FollowStrongest(float strongest, Time now);
  void MoveTo(float& edge, float wanted) const;
  void MoveBottom();
  void MoveTop();
  void MoveColours();

  [[nodiscard]] float UnitsPerDb() const { return inDb_ ? 1 : LevelScale::kHeightsPerDb; }

  NoiseFloor floor_;  ///< dB
  Pacer measure_{std::chrono::milliseconds(125)};
  Pacer step_{std::chrono::milliseconds(250)};
  bool known_ = false;
  bool inDb_ = true;
  bool fresh_ = false;   ///< nothing before this line counts
  bool atOnce_ = false;  ///< the steps of this line are as large as they need be
  // In dB, whatever the lines are in.
  float strongest_ = 0;
  Time strongestSince_{};  ///< it was reached, or has been falling since
  Time followed_{};
  float bottom_ = 0;
  float top_ = 0;
  float colourBottom_ = 0;
  // Of the line before.
  double leftMHz_ = 0, rightMHz_ = 0;
  int pointCount_ = 0;
  double columnPoints_ = 0;
};

}  // namespace spectrino
