// The markers of both receivers, from what is known of the radio.
// Frequencies only: drawing them is the display's business.
#pragma once

#include <vector>

#include "display/MarkerPainter.h"
#include "state/RadioState.h"

namespace spectrino {

/// The main receiver's marker, and the sub receiver's where the radio tells of one.
[[nodiscard]] std::vector<PlotMarker> VfoMarkers(const RadioState& radio);

}  // namespace spectrino
