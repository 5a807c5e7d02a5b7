#include "tuning/PassbandDrag.h"

#include <algorithm>
#include <cmath>

#include "rig/Passband.h"

namespace spectrino {
namespace {

constexpr double kStepHz = 10;
constexpr double kMostHz = 1e5;

}  // namespace

void PassbandDrag::Begin(PassbandGrip grip, Vfo receiver, int radioMode) {
  grip_ = grip;
  receiver_ = receiver;
  const bool turned = LiesBelowDial(radioMode) || radioMode == mode::kCwReverse;
  sign_ = grip == PassbandGrip::LowEdge || (grip == PassbandGrip::Middle && turned) ? -1 : 1;
  wantedHz_ = sentHz_ = 0;
}

void PassbandDrag::MoveTo(double movedHz) {
  if (!Active() || !std::isfinite(movedHz)) return;
  const double byHz = std::clamp(movedHz, -kMostHz, kMostHz) * (grip_ == PassbandGrip::Middle ? 1 : 2);
  wantedHz_ = sign_ * static_cast<int>(std::round(byHz / kStepHz) * kStepHz);
  Pump();
}

void PassbandDrag::Pump() {
  if (wantedHz_ != sentHz_ && pace_.Take(clock_.Now())) Send();
}

void PassbandDrag::End() {
  if (wantedHz_ != sentHz_) Send();
  grip_ = PassbandGrip::None;
}

void PassbandDrag::Send() {
  const int deltaHz = wantedHz_ - sentHz_;
  sentHz_ = wantedHz_;
  RigBackend* backend = backend_();
  if (backend == nullptr) return;
  if (grip_ == PassbandGrip::Middle)
    backend->ShiftPassband(receiver_, deltaHz);
  else
    backend->ChangeBandwidth(receiver_, deltaHz);
}

}  // namespace spectrino
