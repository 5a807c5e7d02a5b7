#include "tuning/PassbandDrag.h"

#include <algorithm>
#include <cmath>

namespace spectrino {
namespace {

constexpr double kStepHz = 10;
constexpr double kMostHz = 1e5;

}  // namespace

int GripGain(PassbandGrip grip, const GrippedFilter& filter) {
  const bool below = LiesBelowDial(filter.RadioMode);
  if (grip == PassbandGrip::Middle) return below || filter.RadioMode == mode::kCwReverse ? -1 : 1;
  const int outwards = grip == PassbandGrip::LowEdge ? -1 : 1;
  if (filter.MiddleStays) return 2 * outwards;
  return below == (grip == PassbandGrip::LowEdge) ? outwards : 0;
}

void PassbandDrag::Begin(PassbandGrip grip, const GrippedFilter& filter) {
  grip_ = grip;
  filter_ = filter;
  gain_ = GripGain(grip, filter);
  wantedHz_ = sentHz_ = 0;
}

void PassbandDrag::MoveTo(double movedHz) {
  if (!Active() || !std::isfinite(movedHz)) return;
  double byHz = gain_ * std::clamp(movedHz, -kMostHz, kMostHz);
  if (grip_ != PassbandGrip::Middle && filter_.WidthHz > 0)
    byHz = std::max(byHz, std::min(0.0, kNarrowestHz - filter_.WidthHz));
  wantedHz_ = static_cast<int>(std::round(byHz / kStepHz) * kStepHz);
  Pump();
}

void PassbandDrag::Pump() {
  if (wantedHz_ != sentHz_ && pace_.Take(clock_.Now())) Send();
}

void PassbandDrag::End() {
  if (wantedHz_ != sentHz_) Send();
  grip_ = PassbandGrip::None;
}

Passband PassbandDrag::Wanted(const Passband& gripped) const {
  if (grip_ == PassbandGrip::Middle)
    return {gripped.LowHz + gain_ * wantedHz_, gripped.HighHz + gain_ * wantedHz_};
  if (filter_.MiddleStays) return {gripped.LowHz - wantedHz_ / 2.0, gripped.HighHz + wantedHz_ / 2.0};
  if (LiesBelowDial(filter_.RadioMode)) return {gripped.LowHz - wantedHz_, gripped.HighHz};
  return {gripped.LowHz, gripped.HighHz + wantedHz_};
}

void PassbandDrag::Send() {
  const int deltaHz = wantedHz_ - sentHz_;
  sentHz_ = wantedHz_;
  RigBackend* backend = backend_();
  if (backend == nullptr) return;
  if (grip_ == PassbandGrip::Middle)
    backend->ShiftPassband(filter_.Receiver, deltaHz);
  else
    backend->ChangeBandwidth(filter_.Receiver, deltaHz);
}

}  // namespace spectrino
