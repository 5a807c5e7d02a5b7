#include "run/SMeter.h"

#include <algorithm>
#include <cmath>

#include "rig/Passband.h"

namespace spectrino {

std::optional<float> StrongestLevel(const SpectrumLine& line, double lowMHz, double highMHz) {
  if (!line.HasFrequencies()) return std::nullopt;
  // Rounded to the nearest points, so that a filter narrower than a point still meets one.
  const double first = std::max(std::round(line.IndexAt(lowMHz)), static_cast<double>(line.FirstIndex));
  const double last = std::min(std::round(line.IndexAt(highMHz)), static_cast<double>(line.EndIndex() - 1));
  if (!(first <= last)) return std::nullopt;
  const auto begin = line.Levels.begin();
  const float strongest =
      *std::max_element(begin + static_cast<long>(first), begin + static_cast<long>(last) + 1);
  if (strongest <= kEmptyLevel) return std::nullopt;
  return strongest;
}

void SMeter::Update(const RunView& run, const RadioState& radio, const PanSettings& settings, TimePoint now) {
  if (radio.SMeterTold && settings.OptSM == 1) {
    readings_.SMeterKnown = true;
    readings_.SMeterDbm = static_cast<float>(radio.SMeterDbm + settings.SMeterCorrDb);
    Hold(settings.SMeterHoldSeconds, now);
    return;
  }
  const Passband passband = MainPassband(radio);
  const double dialMHz = radio.MainFreqMHz;
  const auto level =
      StrongestLevel(run.Line, dialMHz + passband.LowHz / 1e6, dialMHz + passband.HighHz / 1e6);
  readings_.SMeterKnown = level.has_value();
  if (!level) return;
  readings_.SMeterDbm = run.Link != nullptr ? run.Link->AntennaDbm(*level) : *level;
  Hold(settings.SMeterHoldSeconds, now);
}

void SMeter::Hold(double holdSeconds, TimePoint now) {
  const bool expired = std::chrono::duration<double>(now - heldSince_).count() >= holdSeconds;
  if (!held_ || readings_.SMeterDbm >= *held_ || expired) {
    held_ = readings_.SMeterDbm;
    heldSince_ = now;
  }
  readings_.SMeterHeldDbm = *held_;
}

}  // namespace spectrino
