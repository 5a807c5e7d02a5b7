// The radio's status area and mini-pans as an inset over the upper plot.
// Draws what it is given; knows no radio.
#pragma once

#include <QFont>
#include <QRect>

#include "display/TextCache.h"
#include "state/FrameGeometry.h"
#include "state/StatusArea.h"

namespace spectrino {

/// Where the inset stands: on the side with more room beside the tuned signal, no wider than that room. Empty
/// when there is too little of it.
[[nodiscard]] QRect StatusBox(const PlotLayout& layout, const FrameGeometry& geometry, double lowMHz,
                              double highMHz);
/// Half the span, left and right at the foot of the plot.
void DrawScaleEnds(const OverlayPen& pen, const StatusArea& area, const QFont& font);

/// Texts on top, mini-pans below them as far as there is room.
void DrawStatus(const OverlayPen& pen, const QRect& box, const StatusArea& area, const QFont& font);

}  // namespace spectrino
