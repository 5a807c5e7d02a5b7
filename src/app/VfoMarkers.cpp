#include "app/VfoMarkers.h"

#include <optional>

#include "rig/Passband.h"

namespace spectrino {
namespace {

PlotMarker MarkerAt(double dialMHz, const Passband& passband, const std::optional<double>& notchHz) {
  PlotMarker marker;
  marker.FreqMHz = dialMHz;
  marker.PassbandLowMHz = dialMHz + passband.LowHz / 1e6;
  marker.PassbandHighMHz = dialMHz + passband.HighHz / 1e6;
  if (notchHz) marker.NotchMHz = dialMHz + *notchHz / 1e6;
  return marker;
}

}  // namespace

std::vector<PlotMarker> VfoMarkers(const RadioState& radio) {
  std::vector<PlotMarker> markers{MarkerAt(radio.MainFreqMHz, MainPassband(radio), radio.MainNotchHz)};
  markers.front().Label = "A";
  if (radio.SubFreqMHz <= 0) return markers;
  PlotMarker sub = MarkerAt(radio.SubFreqMHz, SubPassband(radio), radio.SubNotchHz);
  sub.ColourIndex = sub.FilterColourIndex = static_cast<int>(ColourIndex::SubReceiver);
  sub.Transmits = radio.SplitOn != 0;
  sub.Label = sub.Transmits ? "B TX" : "B";
  markers.push_back(std::move(sub));
  return markers;
}

}  // namespace spectrino
