#include "app/WindowStance.h"

#include <QApplication>
#include <QShortcut>

namespace spectrino {

WindowStance::WindowStance(QWidget& window, HeaderPanel& header, QWidget& strip, QToolButton& fold)
    : window_(window), header_(header), strip_(strip), fold_(fold) {
  FoldStrip(false);
  auto* escape = new QShortcut(Qt::Key_Escape, &window);
  QObject::connect(escape, &QShortcut::activated, &window, [this] {
    // An open list or menu is what Esc closes first.
    if (QWidget* popup = QApplication::activePopupWidget())
      popup->close();
    else
      ToggleFullScreen();
  });
}

void WindowStance::ToggleFullScreen() {
  if (window_.isFullScreen())
    window_.setWindowState(window_.windowState() & ~Qt::WindowFullScreen);
  else
    window_.showFullScreen();
  ShowFullScreen();
}

void WindowStance::ShowFullScreen() {
  const bool full = window_.isFullScreen();
  strip_.setVisible(!full && !folded_);
  fold_.setVisible(!full);
  header_.ShowFullScreen(full);
}

void WindowStance::FoldStrip(bool folded) {
  folded_ = folded;
  strip_.setVisible(!folded);
  fold_.setText(QString::fromUtf8(folded ? "\u25C2" : "\u25B8"));
}

void WindowStance::KeepOnTop(bool on) {
  const bool shown = window_.isVisible();
  window_.setWindowFlag(Qt::WindowStaysOnTopHint, on);
  if (shown) window_.show();
}

}  // namespace spectrino
