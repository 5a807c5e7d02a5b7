#include "tuning/Wheel.h"

#include <algorithm>
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
  const RigBackend* backend = backend_();
  return backend != nullptr && backend->HasVfoB() ? WheelVfo : Vfo::A;
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
  if (stepHz <= 0) return;
  const Time now = clock_.Now();
  if (target_ && target_->Of != vfo) Forget(vfo);
  const bool counting = target_ && now - lastTurn_ < kOwnCount;
  const double fromMHz = counting ? target_->FreqMHz : FreqOf(vfo);
  if (!(fromMHz > 0)) return;
  const int direction = settings_.WheelInverted ? -notches : notches;
  const double freqMHz = fromMHz + direction * stepHz / 1e6;
  const double snappedMHz = std::round(freqMHz * 1e6 / stepHz) * stepHz / 1e6;
  if (!(snappedMHz > 0) || snappedMHz > kHighestMHz) return;
  target_ = Target{vfo, freqMHz, snappedMHz};
  lastTurn_ = now;
  pending_ = true;
  FreqOf(vfo) = freqMHz;
  Pump();
}

void Wheel::Pump() {
  if (!pending_ || (lastSend_ && clock_.Now() - *lastSend_ < kSendPace)) return;
  Send();
}

void Wheel::Send() {
  RigBackend* backend = backend_();
  if (backend == nullptr) {
    ForgetAll();
    return;
  }
  // A back-end that turns the event loop may bring the next notch: it waits in the target.
  const BusyGuard busy{WheelBusy_};
  if (!busy) return;
  pending_ = false;
  lastSend_ = clock_.Now();
  const Target sent = *target_;
  backend->SetFrequency(sent.Of, sent.WheelSnappedMHz);
}

void Wheel::Hold() {
  if (target_ && RadioSourceActive(radio_) && clock_.Now() - lastTurn_ < kOwnCount)
    FreqOf(target_->Of) = target_->FreqMHz;
}

void Wheel::Forget(Vfo vfo) {
  if (pending_ && target_->Of != vfo) Send();
  target_.reset();
  pending_ = false;
}

void Wheel::ForgetAll() {
  target_.reset();
  pending_ = false;
  notches_.Clear();
}

}  // namespace spectrino
