#include "app/TuningInput.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <algorithm>
#include <cmath>

#include "display/Overlays.h"
#include "state/FrequencyText.h"
#include "tuning/Peaks.h"

namespace spectrino {
namespace {

constexpr int kLastZoom = 5;
constexpr double kSameDialMHz = 2e-6;

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
              .Backend = [this] { return parts_.Cycle.Backend(); },
              .Running = [this] { return parts_.Cycle.Running(); },
              .Control = [this] { return parts_.Cycle.Control(); }}) {
  ScopeWidget* scope = parts.Scope;
  connect(scope, &ScopeWidget::MouseDown, this, &TuningInput::MouseDown);
  connect(scope, &ScopeWidget::HoverMoved, this, &TuningInput::Hover);
  connect(scope, &ScopeWidget::Dragged, this, [this](QPointF, QPointF at) { Pan(at); });
  connect(scope, &ScopeWidget::DragEnded, this, [this] { panFromX_.reset(); });
  connect(scope, &ScopeWidget::WheelTurned, this, &TuningInput::Wheel);
  RangePanel* strip = parts.Strip;
  connect(strip, &RangePanel::cmdSpot_Click, this, [this] { tuner_.cmdSpot_Click(); });
  connect(strip, &RangePanel::cmdUndo_Click, this, [this] { tuner_.cmdUndo_Click(); });
  connect(strip, &RangePanel::cmdUpDn_Click, this,
          [this](int index) { tuner_.cmdUpDn_Click(index, parts_.Cycle.Scale().LabelCentreMHz); });
  connect(parts.Header, &HeaderPanel::FrequencyTyped, this, [this](int vfo, const QString& text) {
    tuner_.EnterFrequency(vfo == 0 ? Vfo::A : Vfo::B, TypedMHz(text.toStdString()));
  });
  parts_.Cycle.SpotFrame = [this](const SpectrumLine& line) {
    const RadioState& radio = parts_.State.Radio;
    if (const auto dial = SpotFrequency(line, MainPassband(radio), radio.MainFreqMHz, radio.RadioMode))
      tuner_.TuneTo(*dial);
  };
}

TuningInput::~TuningInput() {
  parts_.Cycle.SpotFrame = nullptr;
}

void TuningInput::MouseDown(QPointF at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
  if (button != Qt::LeftButton && button != Qt::RightButton) return;
  if (button == Qt::LeftButton && modifiers.testFlag(Qt::ControlModifier)) {
    panFromX_ = at.x();
    return;
  }
  peak_.reset();
  Hover(at);
  tuner_.Scope_MouseDown(button == Qt::LeftButton ? ClickButton::Left : ClickButton::Right,
                         parts_.Display.TuneFreqMHz(at), parts_.Display.InRightStrip(at));
}

// A filter is dragged in the mini-pans alone: near the dial every click would change it.
void TuningInput::Hover(QPointF at) {
  PassbandDragMode mode = PassbandDragMode::None;
  if (parts_.State.Radio.K4Active) {
    const MiniPanPassband under = parts_.Display.MiniPanPassbandAt(at);
    if (under == MiniPanPassband::Main) mode = PassbandDragMode::Main;
    if (under == MiniPanPassband::Sub) mode = PassbandDragMode::Sub;
  }
  tuner_.SetPassbandDrag(mode);
  parts_.Scope->setCursor(mode == PassbandDragMode::None ? Qt::CrossCursor : Qt::SizeHorCursor);
}

double TuningInput::PlotShare(double logicalX) const {
  const PlotLayout& layout = parts_.Display.Layout();
  return layout.PlotWidth > 0 ? logicalX * layout.Scale / layout.PlotWidth : 0;
}

void TuningInput::Pan(QPointF at) {
  if (!panFromX_) return;
  const double wanted = PlotShare(*panFromX_ - at.x());
  const double moved = parts_.Cycle.PanBy(wanted);
  if (moved == 0) return;
  // What is less than a point waits for the next movement.
  *panFromX_ += (at.x() - *panFromX_) * moved / wanted;
  parts_.Scope->update();
}

void TuningInput::Wheel(QPointF at, int delta, Qt::KeyboardModifiers modifiers) {
  if (modifiers.testFlag(Qt::ControlModifier)) {
    ZoomWheel(at, delta);
    return;
  }
  if (!wheelAllowed_) return;
  Hover(at);
  tuner_.WheelMoved(delta, modifiers.testFlag(Qt::ShiftModifier));
}

void TuningInput::ZoomWheel(QPointF at, int delta) {
  const int notches = zoomNotches_.Add(delta, parts_.Time.Now());
  if (notches == 0) return;
  if (RadioSourceActive(parts_.State.Radio)) {
    // Closer is narrower. A radio without span steps shows what it shows.
    if (RigBackend* backend = parts_.Cycle.Backend()) {
      for (int i = 0; i < std::abs(notches); ++i) (void)backend->StepSpan(notches > 0 ? -1 : 1);
    }
    return;
  }
  const int zoom = std::clamp(parts_.State.Settings.Zoom + notches, 0, kLastZoom);
  parts_.Cycle.ZoomAt(zoom, std::clamp(PlotShare(at.x()), 0.0, 1.0));
  parts_.ZoomChanged();
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
  if (typed >= '0' && typed <= '9' && parts_.Cycle.Backend() != nullptr) {
    parts_.Header->BeginEntry(tuner_.WheelVfo() == Vfo::A ? 0 : 1, QString(typed));
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
        ShowPeak(direction);
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
      return TuneToPeak();
    default:
      return false;
  }
}

// A signal that was found before the dial moved is no longer the one meant.
bool TuningInput::PeakStands() const {
  return peak_ && std::abs(parts_.State.Radio.MainFreqMHz - peak_->DialMHz) < kSameDialMHz;
}

bool TuningInput::TuneToPeak() {
  if (!PeakStands()) return false;
  const RadioState& radio = parts_.State.Radio;
  const double dialMHz = DialFor(peak_->FreqMHz, MainPassband(radio), radio.RadioMode);
  tuner_.TuneTo(dialMHz);
  peak_->DialMHz = dialMHz;
  return true;
}

void TuningInput::ShowPeak(int direction) {
  if (!parts_.Cycle.Running()) return;
  const double dialMHz = parts_.State.Radio.MainFreqMHz;
  const auto peak = FindPeak(parts_.Cycle.Line(), PeakStands() ? peak_->FreqMHz : dialMHz, direction);
  if (!peak) {
    parts_.Scope->Announce(direction > 0 ? QObject::tr("No signal above") : QObject::tr("No signal below"));
    return;
  }
  peak_ = {peak->FreqMHz, dialMHz};
  const FrameGeometry& shown = parts_.Cycle.Scale().Geometry;
  // In a zoomed window it may stand outside.
  const double middleMHz = (shown.LeftMHz + shown.RightMHz) / 2;
  if (peak->FreqMHz < shown.LeftMHz || peak->FreqMHz > shown.RightMHz)
    parts_.Cycle.PanBy((peak->FreqMHz - middleMHz) / (shown.RightMHz - shown.LeftMHz));
  const ScaleState& scale = parts_.Cycle.Scale();
  const PlotLayout& layout = parts_.Display.Layout();
  const double x = scale.Geometry.FrequencyToPixel(peak->FreqMHz) / layout.Scale;
  parts_.Display.SetHover(QPointF(x, (layout.TopMargin + layout.PlotHeight / 2.0) / layout.Scale));
  const HoverPlace place{.FreqMHz = peak->FreqMHz,
                         .FrequencyKnown = scale.FrequencyKnown,
                         .Level = peak->Level,
                         .InDb = scale.Levels.InDb,
                         .TakenUtc = {}};
  parts_.Scope->Announce(QString::fromStdString(HoverText(place)));
  parts_.Scope->update();
}

void TuningInput::AfterPass() {
  tuner_.Refreshed();
  tuner_.Pump();
}

void TuningInput::RunChanged(bool running) {
  if (running) {
    parts_.Strip->SetUpDnStep(parts_.State.Radio.K4Active ? "50kHz" : "100kHz");
    return;
  }
  tuner_.RunEnded();
  peak_.reset();
  parts_.Scope->EndAnnouncement();
}

QString TuningInput::WheelText() const {
  return QString("M.Wheel VFO-%1 %2")
      .arg(tuner_.WheelVfo() == Vfo::A ? "A" : "B", tuner_.WheelFast() ? "Fast" : "Normal");
}

}  // namespace spectrino
