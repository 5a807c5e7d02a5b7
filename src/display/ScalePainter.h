// The part of the plot that stands still: background, filter shading, grid and labels, kept as a picture.
// Knows no trace; draws anew only when something that it shows has changed.
#pragma once

#include <QFont>
#include <QImage>
#include <optional>
#include <span>
#include <vector>

#include "display/Colours.h"
#include "display/PlotLayout.h"
#include "display/ScaleLines.h"
#include "state/ScaleState.h"

namespace spectrino {

/// A column range of the plot tinted under grid and trace: a filter's passband.
struct PlotShade {
  int Left = 0;   ///< first column
  int Right = 0;  ///< one past the last
  QRgb Colour = 0;
  double Opacity = 0;

  bool operator==(const PlotShade&) const = default;
};

struct ScaleLook {
  DisplayColours Colours{};
  bool ShowSubDivisions = false;
  bool ShowMHz = true;

  bool operator==(const ScaleLook&) const = default;
};

class ScalePainter {
 public:
  /// The picture above the waterfall, layout.Width x layout.SpectrumHeight(). Its geometry's PlotWidth is the
  /// layout's.
  const QImage& Picture(const ScaleState& scale, const PlotLayout& layout, const ScaleLook& look,
                        const QFont& font, std::span<const PlotShade> shades);

  /// What the picture shows.
  [[nodiscard]] const ScaleLines& Lines() const { return lines_; }

 private:
  void Draw();

  ScaleState scale_;
  PlotLayout layout_;
  ScaleLook look_;
  QFont font_;
  std::vector<PlotShade> shades_;
  ScaleLines lines_;
  QImage picture_;
};

}  // namespace spectrino
