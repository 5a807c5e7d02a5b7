// Which points of a line are in view, and the frame geometry that follows from it.
// Pixels of single points are FrameGeometry's and ColumnMap's.
#pragma once

#include "state/FrameGeometry.h"

namespace spectrino {

struct PointWindow {
  int FirstPoint = 0;
  int LastPoint = 0;  ///< one past the last point when nothing is zoomed
  int CentrePoint = 0;
  int Shift = 0;  ///< by how far it was moved to stay within the line
};

/// The points of a sound-card line in view. displayZoom 1: all. Above: points / displayZoom points around the
/// radio's frequency (ifOffsetKHz above the line's centre), moved by panPoints; a window that would leave
/// 0..points is shifted back, its width kept, CentrePoint with it.
[[nodiscard]] PointWindow VisiblePoints(int points, int sampleRate, double ifOffsetKHz, int displayZoom,
                                        int panPoints);

/// A sound-card line. zeroFreqMHz: of the line's 0 Hz, its middle. plotWidth: pixels.
[[nodiscard]] FrameGeometry SoundCardGeometry(const PointWindow& window, int points, int sampleRate,
                                              double zeroFreqMHz, double plotWidth);

/// The points of a radio's line in view, 1..points. displayZoom 1: all. Above: (points - 1) / displayZoom
/// intervals around centrePoint, moved by panPoints; a window that would leave the line is shifted back, its
/// width kept. LastPoint is the last one in view.
[[nodiscard]] PointWindow VisibleRadioPoints(int points, double centrePoint, int displayZoom, int panPoints);

/// A radio's line: the window's first point at x = 0, its last at plotWidth. leftMHz, rightMHz: of the whole
/// line, points 1 and the last. Not Valid() with fewer than two points.
[[nodiscard]] FrameGeometry RadioGeometry(const PointWindow& window, int points, double leftMHz,
                                          double rightMHz, double plotWidth);

}  // namespace spectrino
