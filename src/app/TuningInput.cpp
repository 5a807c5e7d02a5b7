#include "app/TuningInput.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <algorithm>
#include <cmath>
#include <utility>

#include "state/FrequencyText.h"
#include "tuning/Peaks.h"

namespace spectrino {
namespace {

constexpr int kLastZoom = 5;
// Letters typed there choose or edit.
bool TakesLetters(const QWidget* widget) {
  return qobject_cast<const QComboBox*>(widget) != nullptr ||
         qobject_cast<const QAbstractSlider*>(widget) != nullptr ||
         qobject_cast<const QLineEdit*>(widget) != nullptr ||
         qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
}

}  // namespace

TuningInput::TuningInput(const Parts& parts)
    : parts_(parts),
      tuner_({.Radio = parts.State.Radio,
              .Settings = parts.State.Settings,
              .Time = parts.Time,
              .Window = *this,
              .Backend = [this] { return parts_.Links.Backend(); },
              .Traits = [this] { return parts_.Cycle.View().Way.Traits; },
              .Filters = [this] { return parts_.Links.FilterBackend(); },
              .SpanOwner = [this] { return parts_.Cycle.View().SpanOwner(); },
              .Running = [this] { return parts_.Cycle.Running(); }}),
      axes_({.State = parts.State,
             .Cycle = parts.Cycle,
             .Display = parts.Display,
             .Time = parts.Time,
             .Scope = parts.Scope,
             .ZoomChanged = parts.ZoomChanged,
             .LevelsChanged = parts.LevelsChanged}),
      filters_({parts.State.Radio, parts.Time, parts.Display, parts.Scope, tuner_}),
      insetGrip_(parts.Display, parts.Scope, parts.InsetPlaced),
      peaks_(parts.State, parts.Cycle, parts.Display, *parts.Scope, tuner_) {
  ScopeWidget* scope = parts.Scope;
  connect(scope, &ScopeWidget::MouseDown, this, &TuningInput::MouseDown);
  connect(scope, &ScopeWidget::HoverMoved, this, &TuningInput::Hover);
  connect(scope, &ScopeWidget::Dragged, this, [this](QPointF from, QPointF at) {
    axes_.Drag(at);
    axisAt_ = at;
    filters_.Drag(from, at);
    insetGrip_.Drag(from, at);
  });
  connect(scope, &ScopeWidget::DragEnded, this, &TuningInput::ReleaseButton);
  connect(scope, &ScopeWidget::DoubleClicked, this, [this](QPointF at, Qt::MouseButton button) {
    const PlotPointer under = parts_.Display.At(at);
    const bool levels = under.Axis() == PlotAxis::Level && !under.InRightStrip();
    if (levels && button == Qt::LeftButton && parts_.AutoLevel) parts_.AutoLevel();
  });
  connect(scope, &ScopeWidget::WheelTurned, this, &TuningInput::Wheel);
  RangePanel* strip = parts.Strip;
  connect(strip, &RangePanel::cmdSpot_Click, this, [this] { tuner_.cmdSpot_Click(); });
  connect(strip, &RangePanel::cmdUndo_Click, this, [this] { tuner_.cmdUndo_Click(); });
  connect(strip, &RangePanel::cmdUpDn_Click, this,
          [this](int index) { tuner_.cmdUpDn_Click(index, parts_.Cycle.Scale().State().LabelCentreMHz); });
  connect(&parts.Header->Vfos(), &VfoPanel::FrequencyTyped, this, [this](int vfo, const QString& text) {
    tuner_.EnterFrequency(vfo == 0 ? Vfo::A : Vfo::B, TypedMHz(text.toStdString()));
  });
  connect(&parts.Header->Vfos(), &VfoPanel::DigitClicked, this, [this](int vfo, double hertz, int direction) {
    tuner_.TurnDigit(vfo == 0 ? Vfo::A : Vfo::B, direction * hertz);
  });
  connect(&parts.Header->Vfos(), &VfoPanel::DigitTurned, this, &TuningInput::DigitWheel);
  parts_.Cycle.Frames().SpotFrame = [this](const SpectrumLine& line) {
    const RadioState& radio = parts_.State.Radio;
    if (const auto dial = SpotFrequency(line, MainPassband(radio), radio.MainFreqMHz, radio.RadioMode))
      tuner_.TuneTo(*dial);
    else
      TellNoSpot();
  };
}

void TuningInput::TellNoSpot() {
  const QString text = QObject::tr("Spot: no signal in or beside the passband");
  parts_.Scope->Status().Show(StatusLine::Rank::Passing, text);
  parts_.Scope->Announce(text);
}

// Answered by the next line: one that comes when the link is back would move a dial that nobody turns any
// more.
void TuningInput::RequestSpot() {
  if (!parts_.Links.RadioStale() && !parts_.Links.StoppedAt())
    parts_.Cycle.Frames().RequestSpot(parts_.Time.Now());
}

TuningInput::~TuningInput() {
  parts_.Cycle.Frames().SpotFrame = nullptr;
}

void TuningInput::MouseDown(QPointF at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
  if (button != Qt::LeftButton && button != Qt::RightButton) return;
  const bool ctrl = modifiers.testFlag(Qt::ControlModifier);
  if (button == Qt::LeftButton && axes_.Press(at, ctrl)) {
    axisAt_ = at;
    return;
  }
  peaks_.Forget();
  Hover(at, modifiers);
  if (insetGrip_.Press(at, button) || filters_.Press(at, button, modifiers)) return;
  const ClickButton click = button == Qt::LeftButton ? ClickButton::Left : ClickButton::Right;
  const PlotPointer under = parts_.Display.At(at);
  const MiniPanHit hit = under.MiniPan();
  // A mini-pan is its receiver's, whichever button.
  const bool sub = hit.Part != MiniPanPart::None ? hit.Sub : click == ClickButton::Right;
  tuner_.Scope_MouseDown(sub ? ClickButton::Right : ClickButton::Left, under.TuneFreqMHz(),
                         under.InRightStrip());
}

void TuningInput::Hover(QPointF at, Qt::KeyboardModifiers modifiers) {
  hoveredAt_ = at;
  if (filters_.Holding() || insetGrip_.Holding()) return;
  if (insetGrip_.Hover(at)) {
    tuner_.SetPassbandDrag(PassbandDragMode::None);
    return;
  }
  filters_.Hover(at, modifiers);
  const auto axis = axes_.Shape(at);
  if (axis && parts_.Scope->cursor().shape() != *axis) parts_.Scope->setCursor(*axis);
}

void TuningInput::ReleaseButton() {
  const AxisInput::Held axis = axes_.Release();
  if (axis != AxisInput::Held::Nothing) Hover(axisAt_, {});
  if (axis == AxisInput::Held::Clicked)
    tuner_.Scope_MouseDown(ClickButton::Left, 0, parts_.Display.At(axisAt_).InRightStrip());
  filters_.Release();
  insetGrip_.Release();
}

void TuningInput::Wheel(QPointF at, int delta, Qt::KeyboardModifiers modifiers) {
  if (axes_.Wheel(at, delta, modifiers.testFlag(Qt::ControlModifier))) {
    Hover(at, modifiers);
    return;
  }
  if (!wheelAllowed_) return;
  Hover(at, modifiers);
  tuner_.WheelMoved(delta, modifiers.testFlag(Qt::ShiftModifier));
}

void TuningInput::DigitWheel(int vfo, double hertz, int delta) {
  if (!wheelAllowed_) return;
  // What was left of a notch belongs to the digit that it was turned on.
  if (const std::pair digit(vfo, hertz); std::exchange(turnedDigit_, digit) != digit) digitNotches_.Clear();
  const int notches = digitNotches_.Add(delta, parts_.Time.Now());
  const int up = parts_.State.Settings.WheelInverted ? -notches : notches;
  if (up != 0) tuner_.TurnDigit(vfo == 0 ? Vfo::A : Vfo::B, up * hertz);
}

void TuningInput::StepZoom(int direction, bool wraps) {
  const int wanted = parts_.State.Settings.Zoom + direction;
  const int count = kLastZoom + 1;
  parts_.Cycle.SetZoom(wraps ? (wanted + count) % count : std::clamp(wanted, 0, kLastZoom));
  parts_.ZoomChanged();
}

void TuningInput::ZoomOff() {
  parts_.Cycle.SetZoom(0);
  parts_.ZoomChanged();
}

bool TuningInput::KeyPressed(const QKeyEvent& event) {
  const QWidget* focus = QApplication::focusWidget();
  if (focus == parts_.Scope && ScopeKey(event)) return true;
  constexpr auto kCommands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
  if ((event.modifiers() & kCommands) != 0 || event.text().size() != 1 || TakesLetters(focus)) return false;
  const char typed = event.text().at(0).toLatin1();
  if (typed >= '0' && typed <= '9' && parts_.Links.Backend() != nullptr) {
    parts_.Header->Vfos().BeginEntry(tuner_.WheelVfo() == Vfo::A ? 0 : 1, QString(typed));
    return true;
  }
  return tuner_.KeyPress(typed);
}

// With the plot in focus the arrows are the dial: left and right tune, with Ctrl they look for signals.
bool TuningInput::ScopeKey(const QKeyEvent& event) {
  const bool ctrl = event.modifiers().testFlag(Qt::ControlModifier);
  const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
  switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right: {
      const int direction = event.key() == Qt::Key_Right ? 1 : -1;
      if (ctrl)
        peaks_.Show(direction);
      else
        tuner_.KeyStep(direction, shift);
      return true;
    }
    case Qt::Key_Up:
    case Qt::Key_Down:
      tuner_.KeyStep(event.key() == Qt::Key_Up ? 1 : -1, shift);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return peaks_.Tune();
    default:
      return false;
  }
}

void TuningInput::AfterPass() {
  tuner_.Refreshed();
  tuner_.Pump();
  // Shift alone changes what the pointer would take hold of.
  const Qt::KeyboardModifiers held = QGuiApplication::keyboardModifiers();
  const bool shift = held.testFlag(Qt::ShiftModifier);
  if (std::exchange(shiftHeld_, shift) == shift) return;
  Hover(hoveredAt_, held);
}

void TuningInput::RunChanged(bool running) {
  if (running) {
    const std::string_view step = parts_.Cycle.View().Way.Traits.StepText;
    parts_.Strip->SetUpDnStep(QString::fromUtf8(step.data(), static_cast<qsizetype>(step.size())));
    return;
  }
  tuner_.RunEnded();
  peaks_.Forget();
  filters_.RunEnded();
  parts_.Scope->EndAnnouncement();
}

QString TuningInput::WheelText() const {
  return QString("M.Wheel VFO-%1 %2")
      .arg(tuner_.WheelVfo() == Vfo::A ? "A" : "B", tuner_.WheelFast() ? "Fast" : "Normal");
}

}  // namespace spectrino
