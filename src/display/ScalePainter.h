// The scale as a picture: background, grid, frame and labels.
// Drawn once per change of scale, size or options; nothing here runs per frame.
#pragma once

#include <QFont>
#include <QImage>

#include "bandplan/BandPlan.h"
#include "display/PlotLayout.h"
#include "display/ScaleLines.h"
#include "settings/ColourTable.h"
#include "state/ScaleState.h"

namespace spectrino {

/// The application's font at this many logical pixels (at least 9), scaled for the screen.
[[nodiscard]] QFont DisplayFont(double logicalPixels, double scale, bool bold = false);
/// Room for the labels in that font.
[[nodiscard]] PlotMargins MarginsFor(const QFont& font, double scale);
[[nodiscard]] LabelMetrics MetricsOf(const QFont& font);

struct ScaleLook {
  ColourTable Colours = kColoursK4;
  bool SubD = false;
  bool MHz = true;
};

class ScalePainter {
 public:
  /// Draws everything above the waterfall, the label column included, into Picture().
  void Render(const PlotLayout& layout, const ScaleState& scale, const ScaleLook& look, const BandPlan& plan,
              const QFont& font);

  /// layout.Width x layout.WaterfallTop device pixels, opaque.
  [[nodiscard]] const QImage& Picture() const { return picture_; }
  [[nodiscard]] const ScaleLines& Lines() const { return lines_; }

 private:
  QImage picture_;
  ScaleLines lines_;
};

}  // namespace spectrino
