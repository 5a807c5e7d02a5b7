// The radio's status area and mini-pans as an inset over the upper plot.
// Draws what it is given; knows no radio.
#pragma once

#include <QFont>

#include "display/StatusLayout.h"
#include "display/TextCache.h"
#include "state/StatusArea.h"

namespace spectrino {

/// Half the span, left and right at the foot of the plot.
void DrawScaleEnds(const OverlayPen& pen, const StatusArea& area, const QFont& font);

/// Where the inset would go.
void DrawInsetTarget(const OverlayPen& pen, const QRect& outline);

/// Texts and mini-pans, on a veil of the background.
void DrawStatus(const OverlayPen& pen, const StatusPlaces& places, const StatusArea& area, const QFont& font);

}  // namespace spectrino
