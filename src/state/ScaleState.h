// The plot's frame of reference: level range, grid and the frequencies that its labels count from.
// Numbers only; the display draws them.
#pragma once

#include <array>

#include "state/FrameGeometry.h"

namespace spectrino {

/// What the level axis spans. BottomLevel and TopLevel are dB (Icom: 0 and 160).
struct LevelScale {
  float BottomLevel = -153;
  float TopLevel = -13;
  int RangeUnits = 140;  ///< steps that the grid loop walks from top to bottom
  int GridStep = 20;     ///< spacing of labelled lines in dB
  bool InDb = true;      ///< levels are dBm; otherwise heights of a radio's own scope

  bool operator==(const LevelScale&) const = default;

  static constexpr float kHeightsPerDb = 2;  ///< about, of such a scope
};

/// From what level to what level something runs, in the levels' own units.
struct LevelRange {
  float Bottom = 0;
  float Top = 0;

  bool operator==(const LevelRange&) const = default;
};

struct ScaleState {
  LevelScale Levels;
  FrameGeometry Geometry;
  std::array<double, 21> GridOffsetHz{};  ///< distance of grid line i from the centre, both sides
  double LabelCentreMHz = 0;              ///< frequency of the centre line; relative to 0 while none is known
  bool FrequencyKnown = false;            ///< labels are frequencies; otherwise offsets in kHz
  bool Zoomed = false;                    ///< a part of the line is in view: its grid is made for that part
  bool Running = false;                   ///< the centre label is shown only during a run

  bool operator==(const ScaleState&) const = default;
};

}  // namespace spectrino
