#include "app/FilterHands.h"

#include <cmath>
#include <cstdio>
#include <utility>

namespace spectrino {
namespace {

using namespace std::chrono_literals;

constexpr double kDragBegins = 3;     // logical pixels
constexpr auto kConfirmTime = 700ms;  // as long as a slow radio takes to tell its new width

PassbandGrip GripOf(MiniPanPart part) {
  switch (part) {
    case MiniPanPart::LowEdge:
      return PassbandGrip::LowEdge;
    case MiniPanPart::HighEdge:
      return PassbandGrip::HighEdge;
    case MiniPanPart::Passband:
      return PassbandGrip::Middle;
    default:
      return PassbandGrip::None;
  }
}

}  // namespace

Passband FilterHands::Told(Vfo receiver) const {
  return receiver == Vfo::A ? MainPassband(parts_.Radio) : SubPassband(parts_.Radio);
}

std::optional<FilterHands::Hold> FilterHands::Under(QPointF at, Qt::KeyboardModifiers modifiers) const {
  const PlotPointer pointer = parts_.Display.At(at);
  const MiniPanHit pan = pointer.MiniPan();
  Hold hold;
  if (pan.Part != MiniPanPart::None) {
    hold = {.Grip = GripOf(pan.Part),
            .Receiver = pan.Sub ? Vfo::B : Vfo::A,
            .Place = FilterPlace::MiniPan,
            .FreqMHz = pan.FreqMHz,
            .HzPerPixel = pan.HzPerPixel};
  } else {
    const PlotFilterHit plot = pointer.Filter();
    hold = {.Grip = GripOf(plot.Part),
            .Receiver = plot.Sub ? Vfo::B : Vfo::A,
            .FreqMHz = pointer.TuneFreqMHz(),
            .HzPerPixel = plot.HzPerPixel};
    // Near the dial a click tunes: its middle is taken on purpose only.
    if (hold.Grip == PassbandGrip::Middle && !modifiers.testFlag(Qt::ShiftModifier)) return std::nullopt;
  }
  if (!parts_.Tune.MayGrip(hold.Grip, hold.Receiver, hold.Place)) return std::nullopt;
  hold.Begun = Told(hold.Receiver);
  return hold;
}

void FilterHands::Hover(QPointF at, Qt::KeyboardModifiers modifiers) {
  const std::optional<Hold> under = Under(at, modifiers);
  PassbandDragMode mode = PassbandDragMode::None;
  if (under && under->Place == FilterPlace::MiniPan)
    mode = under->Receiver == Vfo::B ? PassbandDragMode::Sub : PassbandDragMode::Main;
  parts_.Tune.SetPassbandDrag(mode);
  Qt::CursorShape shape = Qt::CrossCursor;
  if (under) shape = under->Grip == PassbandGrip::Middle ? Qt::OpenHandCursor : Qt::SizeHorCursor;
  if (parts_.Scope->cursor().shape() != shape) parts_.Scope->setCursor(shape);
  if (under)
    Note(under->Grip, under->Begun);
  else
    parts_.Display.SetPointerNote({});
}

bool FilterHands::Press(QPointF at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
  held_ = Under(at, modifiers);
  if (held_ && held_->Place == FilterPlace::Plot && button != Qt::LeftButton) held_.reset();
  if (!held_) return false;
  held_->Button = button == Qt::LeftButton ? ClickButton::Left : ClickButton::Right;
  parts_.Tune.GripPassband(held_->Grip, held_->Receiver, held_->Place);
  return true;
}

void FilterHands::Drag(QPointF from, QPointF at) {
  if (!held_) return;
  const double moved = at.x() - from.x();
  if (!held_->Moved && std::abs(moved) < kDragBegins) return;
  if (!held_->Moved && held_->Grip == PassbandGrip::Middle) parts_.Scope->setCursor(Qt::ClosedHandCursor);
  held_->Moved = true;
  parts_.Tune.DragPassband(moved * parts_.Display.Layout().Scale * held_->HzPerPixel);
  const Passband wanted = parts_.Tune.Drag().Wanted(held_->Begun);
  // A mini-pan may be that of another radio than the plot's markers.
  if (parts_.Tune.MayGrip(held_->Grip, held_->Receiver, FilterPlace::Plot))
    asked_ = {held_->Receiver, wanted, parts_.Time.Now() + kConfirmTime};
  Note(held_->Grip, wanted);
}

void FilterHands::Release() {
  parts_.Tune.LetPassbandGo();
  if (!held_) return;
  const Hold held = *std::exchange(held_, std::nullopt);
  if (asked_) asked_->Until = parts_.Time.Now() + kConfirmTime;
  if (!held.Moved) parts_.Tune.Scope_MouseDown(held.Button, held.FreqMHz, false);
  if (!held.Moved) return;
  parts_.Scope->setCursor(Qt::CrossCursor);
  parts_.Display.SetPointerNote({});
}

void FilterHands::RunEnded() {
  held_.reset();
  asked_.reset();
  parts_.Display.SetPointerNote({});
}

// "filter edge 2.70 kHz", from the dial; while it is dragged, what comes of it.
void FilterHands::Note(PassbandGrip grip, const Passband& passband) {
  char text[80];
  const double widthHz = passband.HighHz - passband.LowHz;
  const double edgeHz = grip == PassbandGrip::LowEdge ? passband.LowHz : passband.HighHz;
  if (grip == PassbandGrip::Middle)
    std::snprintf(text, sizeof text, "filter %.2f to %.2f kHz", passband.LowHz / 1e3, passband.HighHz / 1e3);
  else if (held_ && held_->Moved)
    std::snprintf(text, sizeof text, "filter edge %.2f kHz, width %.2f kHz", edgeHz / 1e3, widthHz / 1e3);
  else
    std::snprintf(text, sizeof text, "filter edge %.2f kHz", edgeHz / 1e3);
  parts_.Display.SetPointerNote(text);
}

void FilterHands::ShowHeld(std::span<PlotMarker> markers) const {
  if (!asked_ || (!held_ && parts_.Time.Now() >= asked_->Until)) return;
  const std::size_t index = asked_->Receiver == Vfo::A ? 0 : 1;
  if (index >= markers.size()) return;
  PlotMarker& marker = markers[index];
  marker.PassbandLowMHz = marker.FreqMHz + asked_->Wanted.LowHz / 1e6;
  marker.PassbandHighMHz = marker.FreqMHz + asked_->Wanted.HighHz / 1e6;
}

}  // namespace spectrino
