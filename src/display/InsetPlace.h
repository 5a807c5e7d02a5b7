// Where the radio's status inset stands beside, above or over the picture, and how much room that takes.
// Places of the whole inset only; what stands where within it is StatusLayout's.
#pragma once

#include <QPointF>
#include <QRect>

#include "display/PlotLayout.h"

namespace spectrino {

/// The room that a place takes from plot and waterfall, device pixels; none of it lies over them.
struct InsetRoom {
  InsetPlace Place = InsetPlace::OverPlot;  ///< never Automatic
  int Beside = 0;                           ///< width of a column at the right edge
  int Above = 0;                            ///< height of a row at the top
};

/// What becomes of a wish: a place without the room for it falls back to over the waterfall, or over the
/// plot. bare: the layout of the picture without any room taken. Automatic depends on the sizes alone, never
/// on a frequency: beside in a wide picture, above in a tall one, over the waterfall in a small one, over the
/// plot where that is low or off.
[[nodiscard]] InsetRoom RoomForInset(InsetPlace wanted, const PlotLayout& bare);

/// The place that a pointer means which carries the inset there: right edge, top, waterfall, plot.
[[nodiscard]] InsetPlace InsetPlaceAt(QPointF at, const PlotLayout& layout);
/// About where the inset would stand, to show it beforehand.
[[nodiscard]] QRect InsetOutline(InsetPlace place, const PlotLayout& layout);
/// The one that follows it, round all that there is room for. bare: as above.
[[nodiscard]] InsetPlace NextInsetPlace(InsetPlace place, const PlotLayout& bare);

}  // namespace spectrino
