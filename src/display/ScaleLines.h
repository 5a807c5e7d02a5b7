// Grid lines and labels of the scale, as positions and texts.
// Draws nothing; every x comes from the frame geometry.
#pragma once

#include <QFont>
#include <QRect>
#include <string>
#include <vector>

#include "display/PlotLayout.h"
#include "state/ScaleState.h"

namespace spectrino {

struct GridLine {
  int Position = 0;  ///< row of a level line, column of a frequency line
  bool IsSubDivision = false;

  bool operator==(const GridLine&) const = default;
};

struct ScaleLabel {
  std::string Text;
  QRect Area;  ///< where the text stands, device pixels of the picture
};

struct ScaleLines {
  std::vector<GridLine> Levels;       ///< top first
  std::vector<GridLine> Frequencies;  ///< centre first, then outwards
  std::vector<ScaleLabel> LevelLabels;
  std::vector<ScaleLabel> FrequencyLabels;
};

/// Labels that would overlap another or leave the picture are left out. font: as drawn, device pixels.
[[nodiscard]] ScaleLines LayOutScale(const ScaleState& scale, const PlotLayout& layout, bool showSubDivisions,
                                     bool showMHz, const QFont& font);

}  // namespace spectrino
