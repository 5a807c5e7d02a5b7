// The band plan as a strip between plot and frequency labels: coloured segments with their names.
// Where a frequency stands is FrameGeometry's, what it is meant for the plan's.
#pragma once

#include <QPainter>

#include "bandplan/BandPlan.h"
#include "display/PlotLayout.h"
#include "state/ScaleState.h"

namespace spectrino {

/// Device pixels: with room for names in pictures of at least 240 logical pixels, thin below.
[[nodiscard]] int BandStripHeight(int logicalHeight, double scale);

/// Colours that eyes of every kind tell apart, and names where they fit. Out of band: a dim red line,
/// hatched. Nothing while the frequency is unknown.
void DrawBandStrip(QPainter& painter, const PlotLayout& layout, const ScaleState& scale, const BandPlan& plan,
                   QRgb background);

/// Of a segment; for text and pictures alike.
[[nodiscard]] QRgb BandUseColour(BandUse use);

}  // namespace spectrino
