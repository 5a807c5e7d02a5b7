// Where plot, labels and waterfall lie in the picture.
// Draws nothing. All lengths are device pixels, so that lines stay sharp at any scale of the screen.
#pragma once

#include <QFont>
#include <QSize>

namespace spectrino {

struct WaterfallArea {
  int Top = 0;     ///< y of the newest line
  int Height = 0;  ///< 0: nothing is drawn
};

/// waterfallSel: 0 off, 1 an eighth, 2 a quarter, 3 half of the height below topMargin. The waterfall never
/// starts above leastTop; what does not fit below it is cut from its height.
[[nodiscard]] WaterfallArea LayoutWaterfall(int pictureHeight, int topMargin, int waterfallSel, int leastTop);

/// What the layout needs to know of the font.
struct TextMetrics {
  int Height = 0;       ///< of a line of text
  int WidestLabel = 0;  ///< widest text of the label column: a level or a time
};

struct PlotLayout {
  double Scale = 1;  ///< device pixels in a logical one
  int Width = 0;     ///< of the whole picture
  int Height = 0;
  int TopMargin = 0;        ///< y of the plot's top edge
  int BottomMargin = 0;     ///< below the plot: WaterfallHeight and the frequency labels
  int LabelMargin = 0;      ///< the label column at the right
  int PlotWidth = 0;        ///< plot and waterfall run from x = 0 to here
  int PlotHeight = 0;       ///< rows of the plot
  int WaterfallTop = 0;     ///< y of the newest line
  int WaterfallHeight = 0;  ///< lines of the waterfall, 0 when it is off

  bool operator==(const PlotLayout&) const = default;

  [[nodiscard]] int PlotBottom() const { return TopMargin + PlotHeight; }
  /// Rows above the waterfall: plot and frequency labels.
  [[nodiscard]] int SpectrumHeight() const { return PlotBottom() + BottomMargin - WaterfallHeight; }
  /// A logical length in device pixels, at least one.
  [[nodiscard]] int Pixels(double logical) const;
};

/// size: device pixels; scale: device pixels in a logical one. A picture too small for a plot has PlotWidth
/// or PlotHeight 0.
[[nodiscard]] PlotLayout MakePlotLayout(QSize size, double scale, int waterfallSel, const TextMetrics& text);

/// The application's font at the size of the plot's labels, in device pixels of a screen of this scale.
[[nodiscard]] QFont PlotFont(double scale);
[[nodiscard]] TextMetrics MeasureText(const QFont& font);

}  // namespace spectrino
