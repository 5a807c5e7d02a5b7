#include "dsp/VisibleRange.h"

#include <algorithm>
#include <cassert>

#include "state/Val.h"

namespace spectrino {

PointWindow VisiblePoints(int points, int sampleRate, double ifOffsetKHz, int displayZoom, int panPoints) {
  assert(points > 0 && sampleRate > 0 && displayZoom > 0);
  if (displayZoom == 1) return {0, points, points / 2, 0};
  // An offset of a fixed receiver can be any number of MHz; the sum must not leave the integers.
  const double wanted = points / 2.0 + ifOffsetKHz * 1000 / sampleRate * points;
  const double limit = 4.0 * points;
  const int centre =
      RoundToInt32(std::clamp(wanted, -limit, limit)) + std::clamp(panPoints, -4 * points, 4 * points);
  const double half = points / (2.0 * displayZoom);
  const int first = RoundToInt32(centre - half);
  const int width = RoundToInt32(centre + half) - first;
  const int shift = std::clamp(first, 0, points - width) - first;
  return {first + shift, first + width + shift, centre + shift, shift};
}

FrameGeometry SoundCardGeometry(const PointWindow& window, int points, int sampleRate, double zeroFreqMHz,
                                double plotWidth) {
  const double rateMHz = sampleRate / 1e6;
  const double leftEdge = zeroFreqMHz - rateMHz / 2;
  return {.FirstPoint = window.FirstPoint,
          .LastPoint = window.LastPoint,
          .CentrePoint = window.CentrePoint,
          .LeftMHz = leftEdge + window.FirstPoint * rateMHz / points,
          .RightMHz = leftEdge + window.LastPoint * rateMHz / points,
          .PlotWidth = plotWidth};
}

PointWindow VisibleRadioPoints(int points, double centrePoint, int displayZoom, int panPoints) {
  assert(points >= 0 && displayZoom > 0);
  if (displayZoom == 1 || points < 2) return {1, points, (points + 1) / 2, 0};
  const double limit = 4.0 * points;
  const int centre =
      RoundToInt32(std::clamp(centrePoint, -limit, limit)) + std::clamp(panPoints, -4 * points, 4 * points);
  const int width = std::max(1, RoundToInt32(static_cast<double>(points - 1) / displayZoom));
  const int first = centre - width / 2;
  const int shift = std::clamp(first, 1, points - width) - first;
  return {first + shift, first + width + shift, centre + shift, shift};
}

FrameGeometry RadioGeometry(const PointWindow& window, int points, double leftMHz, double rightMHz,
                            double plotWidth) {
  const double stepMHz = points >= 2 ? (rightMHz - leftMHz) / (points - 1) : 0;
  // The ends of the line as it tells them: reckoned by steps they would miss by the last digit.
  return {.FirstPoint = window.FirstPoint,
          .LastPoint = window.LastPoint,
          .CentrePoint = window.CentrePoint,
          .LeftMHz = window.FirstPoint == 1 ? leftMHz : leftMHz + (window.FirstPoint - 1) * stepMHz,
          .RightMHz = window.LastPoint == points ? rightMHz : leftMHz + (window.LastPoint - 1) * stepMHz,
          .PlotWidth = plotWidth};
}

}  // namespace spectrino
