#include "display/ui/ScopeWidget.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>
#include <utility>

namespace spectrino {
namespace {
// As fast as the fastest radio sends: with less, each second line would wait longer than an eye forgives a
// knob.
constexpr int kRepaintMs = 20;
constexpr int kResizeSettleMs = 40;
constexpr QRgb kFocusColour = 0xFF7CC4EE;

/// Whole logical pixels that cover the device pixels; Qt rounds their edges at a broken scale.
QRegion ToLogical(const QRegion& pixels, double ratio) {
  if (ratio == 1) return pixels;
  const int edge = ratio == std::floor(ratio) ? 0 : 1;
  QRegion logical;
  for (const QRect& rect : pixels) {
    const QRectF exact(rect.x() / ratio, rect.y() / ratio, rect.width() / ratio, rect.height() / ratio);
    logical += exact.toAlignedRect().adjusted(-edge, -edge, edge, edge);
  }
  return logical;
}

}  // namespace

ScopeWidget::ScopeWidget(PanDisplay& display, StageTimes& times, QWidget* parent)
    : QWidget(parent), display_(display), times_(times), lblStatus_(new StatusLine(this)) {
  setObjectName("Scope");
  setAccessibleName(tr("Spectrum and waterfall"));
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::CrossCursor);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  // A window that is dragged wider sends hundreds of sizes; the picture is laid out for the last one.
  resizeTimer_.setSingleShot(true);
  resizeTimer_.setInterval(kResizeSettleMs);
  connect(&resizeTimer_, &QTimer::timeout, this, &ScopeWidget::ApplySize);
  repaintTimer_.setSingleShot(true);
  repaintTimer_.setTimerType(Qt::PreciseTimer);
  connect(&repaintTimer_, &QTimer::timeout, this, &ScopeWidget::RequestRepaint);
}

void ScopeWidget::ShowNew(std::chrono::steady_clock::time_point arrived) {
  arrived_ = arrived;
  if (repaintTimer_.isActive()) return;
  const qint64 since = sinceRepaint_.isValid() ? sinceRepaint_.elapsed() : kRepaintMs;
  if (since < kRepaintMs) {
    repaintTimer_.start(static_cast<int>(kRepaintMs - since));
    return;
  }
  RequestRepaint();
}

void ScopeWidget::RequestRepaint() {
  const auto begun = std::chrono::steady_clock::now();
  const QRegion changed = display_.Prepare();
  PlaceStatus();
  if (changed.isEmpty()) return;
  const auto ready = std::chrono::steady_clock::now();
  prepareTime_ += ready - begun;
  if (arrived_ != shownArrival_ && arrived_ != std::chrono::steady_clock::time_point{})
    times_.Add(Stage::Latency, ready - arrived_);
  shownArrival_ = arrived_;
  sinceRepaint_.restart();
  update(ToLogical(changed, devicePixelRatioF()));
}

void ScopeWidget::paintEvent(QPaintEvent*) {
  const auto begun = std::chrono::steady_clock::now();
  {
    QPainter painter(this);
    FillBeyondPicture(painter);
    display_.Paint(painter);
    if (focusShown_) {
      painter.setPen(kFocusColour);
      painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
  }
  times_.Add(Stage::Draw, std::exchange(prepareTime_, {}) + (std::chrono::steady_clock::now() - begun));
}

/// A window that is being dragged wider, or moved to a finer screen, is ahead of its picture.
void ScopeWidget::FillBeyondPicture(QPainter& painter) {
  const PlotLayout& layout = display_.Layout();
  if (layout.Scale != devicePixelRatioF() && !resizeTimer_.isActive()) resizeTimer_.start();
  const double ratio = devicePixelRatioF();
  const QRect laidOut(0, 0, static_cast<int>(layout.PictureWidth / ratio),
                      static_cast<int>(layout.Height / ratio));
  for (const QRect& rest : QRegion(rect()) - laidOut) painter.fillRect(rest, display_.BackgroundColour());
}

void ScopeWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (display_.Layout().PlotWidth <= 0 || !isVisible()) {
    ApplySize();
    return;
  }
  emit ResizeBegun();
  resizeTimer_.start();
}

void ScopeWidget::ApplySize() {
  display_.Resize(size(), devicePixelRatioF());
  PlaceStatus();
  emit Resized();
  update();
}

void ScopeWidget::PlaceStatus() {
  const double ratio = devicePixelRatioF();
  const PlotLayout& layout = display_.Layout();
  if (std::exchange(statusPlaced_, layout) == layout) return;
  lblStatus_->Place(QRect(0, 0, qRound(layout.PlotWidth / ratio), qRound(layout.PlotBottom() / ratio)));
}

void ScopeWidget::mouseMoveEvent(QMouseEvent* event) {
  display_.SetHover(event->position());
  emit HoverMoved(event->position(), event->modifiers());
  if (event->buttons() != Qt::NoButton) emit Dragged(pressedAt_, event->position());
  ShowNew(arrived_);
}

void ScopeWidget::mousePressEvent(QMouseEvent* event) {
  pressedAt_ = event->position();
  display_.SetHover(event->position());
  emit MouseDown(event->position(), event->button(), event->modifiers());
}

void ScopeWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  emit DoubleClicked(event->position(), event->button());
  mousePressEvent(event);
}

void ScopeWidget::mouseReleaseEvent(QMouseEvent*) {
  emit DragEnded();
}

void ScopeWidget::wheelEvent(QWheelEvent* event) {
  // What a touchpad coasts on after the fingers left is not the operator's wish.
  if (event->phase() == Qt::ScrollMomentum) return;
  // Some systems turn the wheel sideways while a modifier is held; without one, sideways is no tuning.
  const QPoint delta = event->angleDelta();
  const int turned = delta.y() != 0 || event->modifiers() == Qt::NoModifier ? delta.y() : delta.x();
  if (turned != 0) emit WheelTurned(event->position(), turned, event->modifiers());
  event->accept();
}

void ScopeWidget::leaveEvent(QEvent* event) {
  QWidget::leaveEvent(event);
  display_.SetHover(std::nullopt);
  emit HoverMoved(QPointF(-1, -1), Qt::NoModifier);
  ShowNew(arrived_);
}

void ScopeWidget::focusInEvent(QFocusEvent* event) {
  const auto reason = event->reason();
  focusShown_ = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
  update();
}

void ScopeWidget::focusOutEvent(QFocusEvent*) {
  focusShown_ = false;
  EndAnnouncement();
  update();
}

void ScopeWidget::Announce(const QString& text) {
  // A changed name of the focused widget is what screen readers speak.
  setAccessibleName(text);
  setAccessibleDescription(tr("Spectrum and waterfall"));
}

void ScopeWidget::EndAnnouncement() {
  setAccessibleName(tr("Spectrum and waterfall"));
  setAccessibleDescription({});
}

}  // namespace spectrino
