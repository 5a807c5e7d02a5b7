#include "display/ui/FrequencyEntry.h"

namespace spectrino {

namespace {
constexpr int kLeastWidth = 110;
constexpr int kMostCharacters = 16;
}  // namespace

FrequencyEntry::FrequencyEntry(QWidget* parent) : QLineEdit(parent) {
  setMaxLength(kMostCharacters);
  setToolTip(tr("Frequency in MHz, kHz or Hz; Enter tunes, Esc leaves"));
  hide();
}

void FrequencyEntry::Begin(const QWidget& over, const QString& typed) {
  const QRect place = over.geometry();
  const int width = qMax(kLeastWidth, place.width());
  const int left = qMax(0, qMin(place.left(), parentWidget()->width() - width));
  setGeometry(left, place.top(), width, place.height());
  setText(typed);
  show();
  raise();
  setFocus();
}

// Esc leaves the entry here, not the full screen.
bool FrequencyEntry::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    event->accept();
    return true;
  }
  return QLineEdit::event(event);
}

void FrequencyEntry::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter && event->key() != Qt::Key_Escape) {
    QLineEdit::keyPressEvent(event);
    return;
  }
  const QString typed = text();
  End();
  if (enter) emit Entered(typed);
}

void FrequencyEntry::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  End();
}

void FrequencyEntry::End() {
  if (isHidden()) return;
  hide();
  if (QWidget* next = parentWidget()->window()->findChild<QWidget*>("Scope")) next->setFocus();
}

}  // namespace spectrino
