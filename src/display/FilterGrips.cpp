#include "display/FilterGrips.h"

#include <cmath>
#include <cstddef>

namespace spectrino {
namespace {

// Logical pixels.
constexpr double kReachOutside = 4;
constexpr double kReachInside = 2;
constexpr double kNarrowest = 12;

}  // namespace

PlotFilterHit FilterGripAt(QPointF at, const PlotLayout& layout, const FrameGeometry& geometry,
                           std::span<const PlotMarker> markers) {
  const double width = layout.PlotWidth;
  if (!geometry.Valid() || at.x() < 0 || at.x() >= width || at.y() < layout.TopMargin ||
      at.y() >= layout.PlotBottom())
    return {};
  PlotFilterHit hit{.HzPerPixel = geometry.ShownSpanHz() / width};
  double nearest = width;
  for (std::size_t i = 0; i < markers.size(); ++i) {
    const PlotMarker& marker = markers[i];
    const double low = geometry.FrequencyToPixel(marker.PassbandLowMHz);
    const double high = geometry.FrequencyToPixel(marker.PassbandHighMHz);
    if (!(high - low >= kNarrowest * layout.Scale)) continue;
    const auto edge = [&](MiniPanPart part, double x, double beyond) {
      const double reach = (beyond > 0 ? kReachOutside : kReachInside) * layout.Scale;
      const double distance = std::abs(beyond);
      if (x < 0 || x > width || distance > reach || distance >= nearest) return;
      nearest = distance;
      hit.Part = part;
      hit.Sub = i > 0;
    };
    edge(MiniPanPart::LowEdge, low, low - at.x());
    edge(MiniPanPart::HighEdge, high, at.x() - high);
    if (hit.Part == MiniPanPart::None && at.x() > low && at.x() < high) {
      hit.Part = MiniPanPart::Passband;
      hit.Sub = i > 0;
    }
  }
  return hit;
}

}  // namespace spectrino
