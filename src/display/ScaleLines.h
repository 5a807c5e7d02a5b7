// Where the lines and labels of the scale stand, and what the labels say.
// Positions and texts only; ScalePainter draws them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "display/PlotLayout.h"
#include "state/ScaleState.h"

namespace spectrino {

struct ScaleLine {
  int Position = 0;  ///< y of a level line, x of a frequency line: its first device pixel
  bool SubDivision = false;
};

struct ScaleLabel {
  std::string Text;
  int Left = 0;  ///< box in device pixels
  int Top = 0;
  int Width = 0;
  int Height = 0;
};

struct ScaleLines {
  std::vector<ScaleLine> Levels;
  std::vector<ScaleLine> Frequencies;
  std::vector<ScaleLabel> LevelLabels;  ///< top to bottom
  std::vector<ScaleLabel> FrequencyLabels;
};

/// What the label font needs, in device pixels.
struct LabelMetrics {
  std::function<int(const std::string&)> TextWidth;
  int TextHeight = 0;
};

/// First pixel of a line of lineWidth pixels at x; inside 0..plotWidth - lineWidth for an x in 0..plotWidth.
[[nodiscard]] int LinePixel(double x, int plotWidth, int lineWidth);

/// Lines of the level grid every GridStep dB, at the top and at the bottom; sub-divisions every GridStep / 5
/// with subDivisions. Frequency lines at LabelCentreMHz and GridOffsetHz to both sides of it, when zoomed at
/// 1-2-5 steps over all that is in view, through scale.Geometry; lines out of view or within 2 logical pixels
/// of the last one are skipped. A label that would touch another one or leave the picture is skipped; the
/// centre's label has the first choice.
[[nodiscard]] ScaleLines PlaceScale(const PlotLayout& layout, const ScaleState& scale, bool subDivisions,
                                    bool withMHz, const LabelMetrics& metrics);

}  // namespace spectrino
