// The picture as it is kept in a file: plot and waterfall with their scales, and above them what and when.
// Writes no file.
#pragma once

#include <QImage>
#include <string>

#include "display/PanDisplay.h"

namespace spectrino {

/// As the window shows it, without pointer and label, at the screen's own pixels; a null image while it has
/// no size.
[[nodiscard]] QImage PrintPicture(PanDisplay& display);
/// Without a folder: "waterfall-2026-11-23-123105Z-14.074MHz.png", of the top row and the middle; what is not
/// known is left out.
[[nodiscard]] std::string PictureName(const PanDisplay& display);

}  // namespace spectrino
