#include "app/PastInput.h"

#include <QMenu>
#include <algorithm>
#include <cmath>
#include <utility>

namespace spectrino {
namespace {

constexpr double kNotch = 120;
constexpr double kNotchShare = 0.1;  // of the waterfall's height
constexpr double kPageShare = 0.9;

}  // namespace

PastInput::PastInput(const Parts& parts) : parts_(parts) {
  parts_.Scope->installEventFilter(this);
}

bool PastInput::eventFilter(QObject* watched, QEvent* event) {
  if (watched != parts_.Scope) return false;
  switch (event->type()) {
    case QEvent::MouseMove:
      return Moved(static_cast<QMouseEvent&>(*event));
    case QEvent::MouseButtonPress:
      return Pressed(static_cast<QMouseEvent&>(*event));
    case QEvent::Wheel:
      return Turned(static_cast<QWheelEvent&>(*event));
    case QEvent::KeyPress:
      return Typed(static_cast<QKeyEvent&>(*event));
    case QEvent::ShortcutOverride:
      // The window's Esc leaves the full screen; back to now comes before that.
      if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape || parts_.Display.Past().Live())
        return false;
      event->accept();
      return true;
    default:
      return false;
  }
}

QPointF PastInput::Pixel(QPointF logical) const {
  return logical * parts_.Display.Layout().Scale;
}

bool PastInput::Moved(const QMouseEvent& event) {
  const QPointF at = Pixel(event.position());
  const bool column = InTimeColumn(parts_.Display.Layout(), at);
  const bool label = parts_.Display.Past().OnLabel(at);
  const QString tip =
      column ? tr("Wheel, PgUp and PgDn: back in time. Right click: save the picture (Ctrl+S)") : QString();
  if (parts_.Scope->toolTip() != tip) parts_.Scope->setToolTip(tip);
  if ((!column && !label) || event.buttons() != Qt::NoButton) return false;
  parts_.Scope->setCursor(label ? Qt::PointingHandCursor : Qt::SizeVerCursor);
  parts_.Display.SetHover(std::nullopt);
  parts_.Changed();
  return true;
}

bool PastInput::Pressed(const QMouseEvent& event) {
  const QPointF at = Pixel(event.position());
  if (parts_.Display.Past().OnLabel(at)) {
    if (event.button() == Qt::LeftButton) ShowNow();
    return true;
  }
  if (event.button() != Qt::RightButton || !InTimeColumn(parts_.Display.Layout(), at)) return false;
  OpenMenu(event.globalPosition().toPoint());
  return true;
}

void PastInput::OpenMenu(QPoint global) {
  auto* menu = new QMenu(parts_.Scope);
  menu->setObjectName("mnuPast");
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addAction(tr("&Save picture...\tCtrl+S"), this, [this] { parts_.Pictures.Save(); });
  QAction* now = menu->addAction(tr("&Back to now\tHome"), this, [this] { ShowNow(); });
  now->setEnabled(!parts_.Display.Past().Live());
  menu->addAction(tr("&Full screen\tEsc"), this, [this] { parts_.FullScreen(); });
  menu->popup(global);
}

bool PastInput::Turned(const QWheelEvent& event) {
  if (!InTimeColumn(parts_.Display.Layout(), Pixel(event.position()))) return false;
  if (event.modifiers() != Qt::NoModifier) return false;
  // As a page is moved: what came earlier lies below.
  turned_ -= event.angleDelta().y() / kNotch * kNotchShare * parts_.Display.Waterfall().Height();
  const double whole = std::trunc(turned_);
  turned_ -= whole;
  if (whole != 0) ScrollBy(static_cast<int>(whole));
  return true;
}

bool PastInput::Typed(const QKeyEvent& event) {
  if (event.modifiers() != Qt::NoModifier && event.modifiers() != Qt::KeypadModifier) return false;
  const bool live = parts_.Display.Past().Live();
  const int page = std::max(1, static_cast<int>(kPageShare * parts_.Display.Waterfall().Height()));
  switch (event.key()) {
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      ScrollBy(event.key() == Qt::Key_PageDown ? page : -page);
      return true;
    case Qt::Key_Home:
    case Qt::Key_Escape:
      if (live) return false;
      ShowNow();
      return true;
    default:
      return false;
  }
}

void PastInput::ScrollBy(int rows) {
  parts_.Display.Past().ScrollBy(rows);
  parts_.Changed();
}

void PastInput::ShowNow() {
  parts_.Display.Past().ShowNow();
  parts_.Scope->setCursor(Qt::CrossCursor);
  parts_.Changed();
}

}  // namespace spectrino
