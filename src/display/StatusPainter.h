// The radio's status area and mini-pans as an inset over the upper plot.
// Draws what it is given; knows no radio.
#pragma once

#include <QFont>
#include <QRect>

#include "display/TextCache.h"
#include "state/FrameGeometry.h"
#include "state/StatusArea.h"

namespace spectrino {

/// Where the inset stands: in the half of the plot that the tuned signal is not in. Empty when the plot is
/// too small.
[[nodiscard]] QRect StatusBox(const PlotLayout& layout, const FrameGeometry& geometry, double tunedMHz);

/// Texts on top, mini-pans below them as far as there is room.
void DrawStatus(const OverlayPen& pen, const QRect& box, const StatusArea& area, const QFont& font);

}  // namespace spectrino
