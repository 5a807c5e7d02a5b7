#include "app/PeakKeys.h"

#include <cmath>

#include "display/Overlays.h"
#include "rig/Passband.h"
#include "tuning/Peaks.h"

namespace spectrino {
namespace {
constexpr double kSameDialMHz = 2e-6;
}

// A signal that was found before the dial moved is no longer the one meant.
bool PeakKeys::Stands() const {
  return peak_ && std::abs(state_.Radio.MainFreqMHz - peak_->DialMHz) < kSameDialMHz;
}

bool PeakKeys::Tune() {
  if (!Stands()) return false;
  const RadioState& radio = state_.Radio;
  const double dialMHz = DialFor(peak_->FreqMHz, MainPassband(radio), radio.RadioMode);
  tuner_.TuneTo(dialMHz);
  peak_->DialMHz = dialMHz;
  return true;
}

void PeakKeys::Show(int direction) {
  if (!cycle_.Running()) return;
  const double dialMHz = state_.Radio.MainFreqMHz;
  const auto peak = FindPeak(cycle_.View().Line, Stands() ? peak_->FreqMHz : dialMHz, direction);
  if (!peak) {
    scope_.Announce(direction > 0 ? QObject::tr("No signal above") : QObject::tr("No signal below"));
    return;
  }
  peak_ = {peak->FreqMHz, dialMHz};
  PlotScale& plot = cycle_.Scale();
  const FrameGeometry& shown = plot.State().Geometry;
  // In a zoomed window it may stand outside.
  const double middleMHz = (shown.LeftMHz + shown.RightMHz) / 2;
  if (peak->FreqMHz < shown.LeftMHz || peak->FreqMHz > shown.RightMHz)
    plot.PanBy((peak->FreqMHz - middleMHz) / (shown.RightMHz - shown.LeftMHz));
  PointAt(peak->FreqMHz, peak->Level);
}

void PeakKeys::PointAt(double freqMHz, float level) {
  const ScaleState& scale = cycle_.Scale().State();
  const PlotLayout& layout = display_.Layout();
  const double x = scale.Geometry.FrequencyToPixel(freqMHz) / layout.Scale;
  display_.SetHover(QPointF(x, (layout.TopMargin + layout.PlotHeight / 2.0) / layout.Scale));
  const HoverPlace place{.FreqMHz = freqMHz,
                         .FrequencyKnown = scale.FrequencyKnown,
                         .Level = level,
                         .InDb = scale.Levels.InDb,
                         .TakenUtc = {}};
  scope_.Announce(QString::fromStdString(HoverText(place)));
  scope_.update();
}

}  // namespace spectrino
