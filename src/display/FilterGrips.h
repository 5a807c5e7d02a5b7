// What of a receiver's passband in the plot lies under a pixel: edges and middle, as a hand takes hold of
// them. Pixels and frequencies only; whether the radio lets its filter be moved is not known here.
#pragma once

#include <QPointF>
#include <span>

#include "display/MarkerPainter.h"
#include "display/PlotLayout.h"
#include "display/StatusInset.h"
#include "state/FrameGeometry.h"

namespace spectrino {

/// Part None: no passband there, or none wide enough to be told from a click beside it.
struct PlotFilterHit {
  MiniPanPart Part = MiniPanPart::None;  ///< LowEdge, HighEdge, Passband
  bool Sub = false;                      ///< the second marker's
  double HzPerPixel = 0;                 ///< device pixels
};

/// An edge reaches 4 logical pixels outside the passband and 2 inside; a passband narrower than 12 on the
/// screen has none, an edge beyond the plot neither. Of two edges the nearer one. Nothing outside the plot's
/// own height: in the waterfall every click tunes.
[[nodiscard]] PlotFilterHit FilterGripAt(QPointF at, const PlotLayout& layout, const FrameGeometry& geometry,
                                         std::span<const PlotMarker> markers);

}  // namespace spectrino
