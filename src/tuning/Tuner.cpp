#include "tuning/Tuner.h"

#include "tuning/WindowKeys.h"

namespace spectrino {
namespace {

constexpr int kBandwidthStepHz = 50;
constexpr int kShiftStepHz = 10;
constexpr double kHighestMHz = 1e6;

Vfo ReceiverOf(PassbandDragMode drag) {
  return drag == PassbandDragMode::Sub ? Vfo::B : Vfo::A;
}

}  // namespace

Tuner::Tuner(const Parts& parts)
    : parts_(parts),
      wheel_(
          parts.Radio, parts.Settings, parts.Time, [this] { return Backend(); },
          [this] { return parts_.Traits().HasVfoB; }),
      drag_(parts.Time, [this] { return FiltersAt(gripped_); }) {}

void Tuner::Scope_MouseDown(ClickButton button, double freqMHz, bool inRightStrip) {
  const bool right = button == ClickButton::Right;
  if (PassbandDragMode_ != PassbandDragMode::None) {
    if (RigBackend* backend = Filters())
      backend->ChangeBandwidth(ReceiverOf(PassbandDragMode_), right ? kBandwidthStepHz : -kBandwidthStepHz);
    return;
  }
  if (parts_.Traits().ClickChoosesWheel) wheel_.WheelVfo = right ? Vfo::B : Vfo::A;
  if (freqMHz != 0) {
    Tune(right ? Vfo::B : Vfo::A, freqMHz, Aim::Signal);
    return;
  }
  if (!inRightStrip) return;
  if (right)
    parts_.Window.ToggleFullScreen();
  else
    parts_.Window.StepZoom(+1, true);
}

void Tuner::Tune(Vfo vfo, double freqMHz, Aim aim) {
  RigBackend* backend = Backend();
  if (backend == nullptr || !(freqMHz > 0) || freqMHz > kHighestMHz) return;
  PreviousFreqMHz_ = parts_.Radio.MainFreqMHz;
  PreviousSubFreqMHz_ = parts_.Radio.SubFreqMHz;
  clicked_ = parts_.Traits().HasVfoB ? vfo : Vfo::A;
  wheel_.Forget(clicked_);
  backend->SetFrequency(vfo, freqMHz, aim);
  parts_.Window.RestartTraces();
}

void Tuner::EnterFrequency(Vfo vfo, double freqMHz) {
  RigBackend* backend = Backend();
  if (backend == nullptr || !(freqMHz > 0) || freqMHz > kHighestMHz) return;
  backend->RememberBand();
  Tune(vfo, freqMHz, Aim::Dial);
}

GrippedFilter Tuner::FilterOf(Vfo receiver, FilterPlace place) const {
  const RadioState& radio = parts_.Radio;
  const bool main = receiver == Vfo::A;
  GrippedFilter filter{.Receiver = receiver, .RadioMode = main ? radio.RadioMode : radio.SubRadioMode};
  const RigBackend* backend = FiltersAt(place);
  filter.MiddleStays = LiesAroundDial(filter.RadioMode) ||
                       (backend != nullptr && backend->FilterReachOf(receiver).MiddleStays);
  // A mini-pan's radio may be another one than that which tells the frequency; its width is its own.
  if (backend == Backend()) filter.WidthHz = main ? radio.MainBandwidthHz : radio.SubBandwidthHz;
  return filter;
}

bool Tuner::MayGrip(PassbandGrip grip, Vfo receiver, FilterPlace place) const {
  const RigBackend* backend = FiltersAt(place);
  if (backend == nullptr || grip == PassbandGrip::None) return false;
  const FilterReach reach = backend->FilterReachOf(receiver);
  if (grip == PassbandGrip::Middle) return reach.Shift;
  return reach.Width && GripGain(grip, FilterOf(receiver, place)) != 0;
}

void Tuner::GripPassband(PassbandGrip grip, Vfo receiver, FilterPlace place) {
  gripped_ = place;
  drag_.Begin(grip, FilterOf(receiver, place));
}

void Tuner::WheelMoved(int eighthsOfDegree, bool tenfold) {
  if (!parts_.Running()) return;
  if (PassbandDragMode_ == PassbandDragMode::None) {
    wheel_.AddDelta(eighthsOfDegree, tenfold);
    return;
  }
  const int notches = shiftNotches_.Add(eighthsOfDegree, parts_.Time.Now());
  if (notches != 0) WheelStep(notches, tenfold);
}

void Tuner::WheelStep(int direction, bool tenfold) {
  if (PassbandDragMode_ == PassbandDragMode::None)
    KeyStep(direction, tenfold);
  else if (RigBackend* backend = Filters())
    backend->ShiftPassband(ReceiverOf(PassbandDragMode_), direction * kShiftStepHz);
}

void Tuner::KeyStep(int direction, bool tenfold) {
  if (Backend() != nullptr) wheel_.Turn(direction, tenfold);
}

void Tuner::RunEnded() {
  wheel_.ForgetAll();
  drag_.End();
  PassbandDragMode_ = PassbandDragMode::None;
  PreviousFreqMHz_ = PreviousSubFreqMHz_ = 0;
}

bool Tuner::KeyPress(char character) {
  const auto zoom = [this](int direction) {
    if (RigBackend* owner = parts_.SpanOwner())
      owner->StepSpan(direction);
    else
      parts_.Window.StepZoom(direction, false);
  };
  const WindowKey* key = FindKey(character);
  if (key == nullptr) return false;
  switch (key->Does) {
    case KeyAction::ToggleFullScreen:
      parts_.Window.ToggleFullScreen();
      break;
    case KeyAction::ZoomIn:
      zoom(+1);
      break;
    case KeyAction::ZoomOut:
      zoom(-1);
      break;
    case KeyAction::ZoomOff:
      if (parts_.SpanOwner() == nullptr) parts_.Window.ZoomOff();
      break;
    case KeyAction::WheelToA:
      wheel_.WheelVfo = Vfo::A;
      break;
    case KeyAction::WheelToB:
      wheel_.WheelVfo = Vfo::B;
      break;
    case KeyAction::WheelFast:
      wheel_.WheelFast = true;
      break;
    case KeyAction::WheelNormal:
      wheel_.WheelFast = false;
      break;
    case KeyAction::ToggleAutoLevel:
      parts_.Window.ToggleAutoLevel();
      break;
    case KeyAction::Spot:
      cmdSpot_Click();
      break;
  }
  return true;
}

void Tuner::cmdUndo_Click() {
  RigBackend* backend = Backend();
  const double freqMHz = clicked_ == Vfo::A ? PreviousFreqMHz_ : PreviousSubFreqMHz_;
  if (backend == nullptr || !(freqMHz > 0)) return;
  wheel_.Forget(clicked_);
  backend->SetFrequency(clicked_, freqMHz, Aim::Dial);
}

void Tuner::cmdUpDn_Click(int index, double centreMHz) {
  RigBackend* backend = Backend();
  const double fromMHz = centreMHz > 0 ? centreMHz : parts_.Radio.MainFreqMHz;
  if (backend == nullptr || !(fromMHz > 0)) return;
  wheel_.Forget(Vfo::A);
  const int direction = index % 2 == 0 ? +1 : -1;
  const double stepMHz = parts_.Traits().StepMHz;
  const double dialMHz = parts_.Radio.MainFreqMHz;
  if (stepMHz == 0)
    backend->StepFrequency(direction, fromMHz);
  else if (dialMHz > 0)
    backend->SetFrequency(Vfo::A, dialMHz + direction * stepMHz, Aim::Dial);
}

}  // namespace spectrino
