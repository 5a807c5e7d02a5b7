// Where plot, labels and waterfall stand in the picture.
// Sizes only; all are device pixels, so that a line of the waterfall is one row of the screen at any scale.
#pragma once

namespace spectrino {

/// Of the palette beside the waterfall, with the room around it; logical pixels.
inline constexpr int kLegendWidth = 9;

/// Room that the texts need, in device pixels.
struct PlotMargins {
  int Top = 4;     ///< TopMargin
  int Gap = 16;    ///< between plot and waterfall: the frequency labels
  int Strip = 0;   ///< above them: the band plan
  int Label = 36;  ///< LabelMargin: dB labels; times and palette beside the waterfall
  int Beside = 0;  ///< a column at the right edge that is neither plot nor labels
  int Above = 0;   ///< a row of that kind at the top
};

/// Of the radio's status inset; as it is stored.
enum class InsetPlace { Automatic, OverPlot, Beside, Above, OverWaterfall };

struct PlotLayout {
  int Width = 0;  ///< of plot and labels: the whole picture but for a column beside them
  int Height = 0;
  int PictureWidth = 0;                     ///< with that column
  int RowAbove = 0;                         ///< height of a row over the whole width, part of TopMargin
  InsetPlace Inset = InsetPlace::OverPlot;  ///< never Automatic
  double Scale = 1;                         ///< device pixels per logical pixel
  int TopMargin = 0;
  int BottomMargin = 0;  ///< WaterfallHeight + gap + StripHeight
  int LabelMargin = 0;
  int StripHeight = 0;  ///< of the band plan, right below the plot
  int PlotWidth = 0;    ///< the plot spans x = 0..PlotWidth
  int PlotHeight = 0;
  int WaterfallTop = 0;  ///< y of the newest line; the picture's height while there is no waterfall
  int WaterfallHeight = 0;

  bool operator==(const PlotLayout&) const = default;

  [[nodiscard]] int PlotBottom() const { return TopMargin + PlotHeight; }
  /// Width of a hairline: one device pixel up to twice the scale, then more.
  [[nodiscard]] int LineWidth() const { return Scale < 2 ? 1 : static_cast<int>(Scale); }
  /// Logical pixels to device pixels, rounded.
  [[nodiscard]] int Px(double logical) const { return static_cast<int>(logical * Scale + 0.5); }
};

/// LayoutWaterfall, then the plot above it. width, height: the picture in device pixels. waterfallSel: 0 off,
/// 1 one eighth, 2 a quarter, 3 half of the height below the top margin; any other value counts as off. The
/// waterfall starts no higher than 100 logical pixels below a row above. Nothing gets negative, however small
/// the picture.
[[nodiscard]] PlotLayout LayoutPlot(int width, int height, double scale, int waterfallSel,
                                    const PlotMargins& margins);

}  // namespace spectrino
