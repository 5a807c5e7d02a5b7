// Which colour of the waterfall is which level: the palette beside it, with levels.
// Draws; which levels the colours run over is the waterfall's.
#pragma once

#include <QFont>
#include <QImage>
#include <vector>

#include "display/Overlays.h"
#include "state/ScaleState.h"

namespace spectrino {

class Legend {
 public:
  /// At the right end of the label column, as high as the waterfall: range from its bottom to its top. A
  /// level that would touch a time is left out.
  void Draw(const OverlayPen& pen, const LevelRange& range, const std::vector<TimeMark>& times,
            const QFont& font);

 private:
  QImage bar_;  ///< of barPalette_
  int barPalette_ = -1;
};

/// What a legend of that many pixels names, top to bottom: multiples of 5, 10, 20 or 50 whose texts stay
/// apart.
[[nodiscard]] std::vector<int> LegendLevels(const LevelRange& range, int height, int textHeight);

}  // namespace spectrino
