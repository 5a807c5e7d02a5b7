#include "display/PlotLayout.h"

#include <algorithm>
#include <cmath>

namespace spectrino {
namespace {

/// The plot keeps this much above the waterfall, in logical pixels.
constexpr double kHighestWaterfallTop = 100;

void LayoutWaterfall(PlotLayout& layout, int waterfallSel) {
  layout.WaterfallTop = layout.Height;
  layout.WaterfallHeight = 0;
  if (waterfallSel < 1 || waterfallSel > 3) return;
  const double divisor = waterfallSel == 3 ? 2 : waterfallSel == 2 ? 4 : 8;
  const int usable = std::max(0, layout.Height - layout.TopMargin);
  layout.WaterfallHeight = static_cast<int>(std::lround(usable / divisor));
  layout.WaterfallTop = layout.Height - layout.WaterfallHeight;
  const int highest = layout.RowAbove + layout.Px(kHighestWaterfallTop);
  if (layout.WaterfallTop >= highest) return;
  layout.WaterfallTop = std::min(highest, layout.Height);
  layout.WaterfallHeight = layout.Height - layout.WaterfallTop;
}

}  // namespace

PlotLayout LayoutPlot(int width, int height, double scale, int waterfallSel, const PlotMargins& margins) {
  PlotLayout layout;
  layout.PictureWidth = std::max(0, width);
  layout.Width = std::max(0, width - margins.Beside);
  layout.Height = std::max(0, height);
  layout.Scale = scale;
  layout.RowAbove = margins.Above;
  layout.TopMargin = margins.Above + margins.Top;
  layout.LabelMargin = std::min(margins.Label, layout.Width);
  LayoutWaterfall(layout, waterfallSel);
  layout.StripHeight = margins.Strip;
  layout.BottomMargin = layout.WaterfallHeight + margins.Gap + margins.Strip;
  layout.PlotWidth = layout.Width - layout.LabelMargin;
  layout.PlotHeight = std::max(0, layout.Height - layout.BottomMargin - layout.TopMargin);
  return layout;
}

}  // namespace spectrino
