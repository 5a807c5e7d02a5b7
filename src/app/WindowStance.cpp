#include "app/WindowStance.h"

namespace spectrino {

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
