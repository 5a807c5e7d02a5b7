// VFO markers and their filter passbands.
// Told where they are in MHz; knows no radio.
#pragma once

#include <QImage>
#include <QRect>
#include <span>
#include <string>
#include <vector>

#include "display/PlotLayout.h"
#include "display/TextCache.h"
#include "settings/ColourTable.h"
#include "state/FrameGeometry.h"

namespace spectrino {

struct PlotMarker {
  double FreqMHz = 0;         ///< counted from the dial while its frequency is unknown
  double PassbandLowMHz = 0;  ///< both 0: no filter is shown
  double PassbandHighMHz = 0;
  double NotchMHz = 0;        ///< 0: none
  int ColourIndex = 4;        ///< line and flag: number in the colour table
  int FilterColourIndex = 7;  ///< shading
  std::string Label;          ///< on the flag; empty: no flag
  bool Transmits = false;     ///< the flag is the colour of a transmitter: the radio is split and sends here

  bool operator==(const PlotMarker&) const = default;
};

/// Shades the passbands over the plot's background; the trace comes over it. A bright colour shades less.
void ShadePassbands(QImage& background, const PlotLayout& layout, const FrameGeometry& geometry,
                    std::span<const PlotMarker> markers, const ColourTable& colours);

/// Lines and flags of the markers in view, flag beside flag: none covers another or one of the taken boxes;
/// the flags' own are added. font: the flags' letters.
void DrawMarkers(const OverlayPen& pen, const FrameGeometry& geometry, std::span<const PlotMarker> markers,
                 const QFont& font, std::vector<QRect>& taken);

}  // namespace spectrino
