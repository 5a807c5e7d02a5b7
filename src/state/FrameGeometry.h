// The one mapping between frequency, spectrum point and pixel.
// Trace, waterfall, grid, markers, labels, click and wheel all go through it; nobody else computes an x.
#pragma once

namespace spectrino {

struct FrameGeometry {
  int FirstPoint = 0;  ///< point at x = 0
  int LastPoint = 0;   ///< point at x = PlotWidth (sound card: one past the last when nothing is zoomed)
  int CentrePoint = 0;
  double LeftMHz = 0;    ///< frequency at x = 0
  double RightMHz = 0;   ///< frequency at x = PlotWidth
  double PlotWidth = 0;  ///< pixels, from x = 0 to the dB label column

  bool operator==(const FrameGeometry&) const = default;

  [[nodiscard]] bool Valid() const { return PlotWidth > 0 && LastPoint > FirstPoint && RightMHz > LeftMHz; }
  [[nodiscard]] double PixelsPerPoint() const { return PlotWidth / (LastPoint - FirstPoint); }
  /// PointX: x of a point's centre.
  [[nodiscard]] double PointX(int point) const { return (point - FirstPoint) * PixelsPerPoint(); }
  [[nodiscard]] double ShownSpanHz() const { return (RightMHz - LeftMHz) * 1e6; }
  /// x of a frequency; outside 0..PlotWidth when the frequency is not in view.
  [[nodiscard]] double FrequencyToPixel(double mhz) const {
    return (mhz - LeftMHz) / (RightMHz - LeftMHz) * PlotWidth;
  }
  /// Frequency at x, in view or not.
  [[nodiscard]] double FrequencyAt(double x) const { return LeftMHz + x / PlotWidth * (RightMHz - LeftMHz); }
  /// Frequency under the pointer in MHz; 0 outside the plot (plotHeight pixels high).
  [[nodiscard]] double PixelToFrequency(double x, double y, double plotHeight) const {
    if (!Valid() || x < 0 || x >= PlotWidth || y < 0 || y >= plotHeight) return 0;
    return FrequencyAt(x);
  }
};

}  // namespace spectrino
