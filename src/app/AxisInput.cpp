#include "app/AxisInput.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace spectrino {
namespace {

constexpr int kLastZoom = 5;
constexpr double kDragBegins = 3;  // logical pixels

}  // namespace

bool AxisInput::Press(QPointF at, bool ctrl) {
  const PlotAxis under = parts_.Display.At(at).Axis();
  const PlotAxis axis = ctrl ? PlotAxis::Frequency : under;
  if (axis == PlotAxis::None) return false;
  const double from = axis == PlotAxis::Frequency ? at.x() : at.y();
  grip_ = Grip{.Axis = axis, .From = from, .Began = from, .Plain = !ctrl};
  return true;
}

void AxisInput::Drag(QPointF at) {
  if (!grip_) return;
  const double now = grip_->Axis == PlotAxis::Frequency ? at.x() : at.y();
  if (!grip_->Moved && grip_->Plain && std::abs(now - grip_->Began) < kDragBegins) return;
  grip_->Moved = true;
  if (grip_->Axis == PlotAxis::Frequency)
    Pan(now);
  else
    MoveLevels(now);
}

AxisInput::Held AxisInput::Release() {
  const auto held = std::exchange(grip_, std::nullopt);
  if (!held) return Held::Nothing;
  return held->Moved || !held->Plain ? Held::Dragged : Held::Clicked;
}

double AxisInput::PlotShare(double logicalX) const {
  const PlotLayout& layout = parts_.Display.Layout();
  return layout.PlotWidth > 0 ? logicalX * layout.Scale / layout.PlotWidth : 0;
}

void AxisInput::Pan(double x) {
  const double wanted = PlotShare(grip_->From - x);
  const double moved = parts_.Cycle.Scale().PanBy(wanted);
  if (moved == 0) return;
  // What is less than a point waits for the next movement.
  grip_->From += (x - grip_->From) * moved / wanted;
  parts_.Scope->update();
}

// The level under the pointer stays there.
void AxisInput::MoveLevels(double y) {
  const PlotLayout& layout = parts_.Display.Layout();
  const LevelScale& levels = parts_.Cycle.Scale().State().Levels;
  if (layout.PlotHeight <= 0) return;
  const double dbPerPixel = (levels.TopLevel - levels.BottomLevel) * layout.Scale / layout.PlotHeight;
  const int moved =
      parts_.Cycle.Scale().MoveReference(static_cast<int>(std::lround((y - grip_->From) * dbPerPixel)));
  if (moved == 0) return;
  grip_->From += moved / dbPerPixel;
  parts_.LevelsChanged();
}

bool AxisInput::Wheel(QPointF at, int delta, bool ctrl) {
  const PlotAxis under = parts_.Display.At(at).Axis();
  if (ctrl || under == PlotAxis::Frequency) {
    ZoomWheel(at, delta);
    return true;
  }
  if (under == PlotAxis::Level) RangeWheel(delta);
  return under == PlotAxis::Level;
}

void AxisInput::ZoomWheel(QPointF at, int delta) {
  const int notches = zoomNotches_.Add(delta, parts_.Time.Now());
  if (notches == 0) return;
  const int zoom = std::clamp(parts_.State.Settings.Zoom + notches, 0, kLastZoom);
  parts_.Cycle.ZoomAt(zoom, std::clamp(PlotShare(at.x()), 0.0, 1.0));
  parts_.ZoomChanged();
}

// Away from the operator is nearer, as on the other axis: a smaller range.
void AxisInput::RangeWheel(int delta) {
  const int notches = rangeNotches_.Add(delta, parts_.Time.Now());
  for (int n = 0; n < std::abs(notches); ++n) {
    if (notches > 0)
      parts_.Cycle.Scale().RangeDown();
    else
      parts_.Cycle.Scale().RangeUp();
  }
  if (notches != 0) parts_.LevelsChanged();
}

std::optional<Qt::CursorShape> AxisInput::Shape(QPointF at) const {
  const bool zoomed = parts_.Cycle.Scale().State().Zoomed;
  if (grip_ && grip_->Moved) {
    if (grip_->Axis == PlotAxis::Level) return Qt::SizeVerCursor;
    return zoomed ? Qt::ClosedHandCursor : Qt::ArrowCursor;
  }
  const PlotPointer under = parts_.Display.At(at);
  switch (under.Axis()) {
    case PlotAxis::Frequency:
      return zoomed ? Qt::OpenHandCursor : Qt::ArrowCursor;
    case PlotAxis::Level:
      return under.InRightStrip() ? Qt::PointingHandCursor : Qt::SizeVerCursor;
    case PlotAxis::None:
      return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace spectrino
