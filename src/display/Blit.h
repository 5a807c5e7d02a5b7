// Copies a finished picture into what a painter draws on.
// Copies pixels as they are: no scaling, no blending.
#pragma once

#include <QImage>
#include <QPainter>
#include <QPoint>
#include <QRect>

namespace spectrino {

/// Draws the part of an opaque RGB32 picture with its top left corner there, in the painter's pixels, within
/// its clip. Where the painter draws into memory at one pixel a pixel, rows are copied straight into it: the
/// painter's own way hands each rectangle of a clip of several to a pool of threads, which costs three times
/// as much.
void BlitImage(QPainter& painter, QPoint at, const QImage& source, const QRect& part);

}  // namespace spectrino
