#include "tuning/Wheel.h"

#include <cmath>

#include "state/BusyGuard.h"

namespace spectrino {
namespace {

constexpr double kHighestMHz = 1e6;
constexpr int kFastFactor = 10;

}  // namespace

int WheelStepHz(const PanSettings& settings, int radioMode) {
  switch (radioMode) {
    case mode::kCw:
    case mode::kCwReverse:
      return settings.StepHz[0];
    case mode::kLsb:
    case mode::kUsb:
      return settings.StepHz[1];
    case mode::kFm:
    case mode::kAm:
    case 10:  // wide FM
    case 11:  // digital voice
      return settings.StepHz[2];
    case mode::kData:
    case mode::kDataReverse:
      return settings.StepHz[3];
    default:
      return 0;
  }
}

Vfo Wheel::Tuned() const {
  return backend_() != nullptr && hasVfoB_() ? WheelVfo : Vfo::A;
}

double& Wheel::FreqOf(Vfo vfo) {
  return vfo == Vfo::A ? radio_.MainFreqMHz : radio_.SubFreqMHz;
}

void Wheel::AddDelta(int eighthsOfDegree, bool tenfold) {
  const int notches = notches_.Add(eighthsOfDegree, clock_.Now());
  if (notches != 0) Turn(notches, tenfold);
}

void Wheel::Turn(int notches, bool tenfold) {
  if (backend_() == nullptr) return;
  const Vfo vfo = Tuned();
  const int radioMode = vfo == Vfo::A ? radio_.RadioMode : radio_.SubRadioMode;
  const double stepHz = WheelStepHz(settings_, radioMode) * (WheelFast || tenfold ? kFastFactor : 1);
  if (stepHz > 0) CountOn(vfo, (settings_.WheelInverted ? -notches : notches) * stepHz, stepHz);
}

void Wheel::MoveBy(Vfo vfo, double hertz) {
  if (backend_() == nullptr || (vfo == Vfo::B && !hasVfoB_())) return;
  constexpr double kSnapHz = 1;  // sums of binary fractions stay whole hertz
  CountOn(vfo, hertz, kSnapHz);
}

void Wheel::CountOn(Vfo vfo, double hertz, double snapHz) {
  const Time now = clock_.Now();
  if (target_ && target_->Of != vfo) Forget(vfo);
  const bool counting = target_ && now - lastTurn_ < kOwnCount;
  const double fromMHz = counting ? target_->FreqMHz : FreqOf(vfo);
  if (!(fromMHz > 0)) return;
  const double freqMHz = fromMHz + hertz / 1e6;
  const double snappedMHz = std::round(freqMHz * 1e6 / snapHz) * snapHz / 1e6;
  if (!(snappedMHz > 0) || snappedMHz > kHighestMHz) return;
  target_ = Target{vfo, freqMHz, snappedMHz};
  lastTurn_ = now;
  unsent_.Put(*target_);
  FreqOf(vfo) = freqMHz;
  Pump();
}

void Wheel::Pump() {
  // A back-end that turns the event loop may bring the next notch: it waits for its own turn.
  const BusyGuard busy{WheelBusy_};
  if (!busy) return;
  if (const auto target = unsent_.Due(clock_.Now())) Send(*target);
}

void Wheel::Send(const Target& target) {
  RigBackend* backend = backend_();
  if (backend == nullptr)
    ForgetAll();
  else
    backend->SetFrequency(target.Of, target.WheelSnappedMHz, Aim::Dial);
}

void Wheel::Hold() {
  if (target_ && radio_.OwnSpectrum && clock_.Now() - lastTurn_ < kOwnCount)
    FreqOf(target_->Of) = target_->FreqMHz;
}

void Wheel::Forget(Vfo vfo) {
  if (target_ && target_->Of != vfo) {
    if (const auto other = unsent_.TakeNow(clock_.Now())) Send(*other);
  }
  target_.reset();
  unsent_.Drop();
}

void Wheel::ForgetAll() {
  target_.reset();
  unsent_.Drop();
  notches_.Clear();
}

}  // namespace spectrino
