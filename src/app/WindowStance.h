// How the main window stands on the screen: full screen, before others, its strip of controls folded away.
// Where it stands and how large it is are WindowPlace's.
#pragma once

#include <QToolButton>
#include <QWidget>

#include "display/ui/HeaderPanel.h"

namespace spectrino {

class WindowStance {
 public:
  /// All outlive it. fold: what folds the strip.
  WindowStance(QWidget& window, HeaderPanel& header, QWidget& strip, QToolButton& fold);

  void ToggleFullScreen();
  /// After every change of the window's state: full screen may be left by the window manager as well.
  void ShowFullScreen();
  void FoldStrip(bool folded);
  [[nodiscard]] bool StripFolded() const { return folded_; }
  /// Before the windows of others, or no longer; what is shown stays shown.
  void KeepOnTop(bool on);
  [[nodiscard]] bool IsOnTop() const { return window_.windowFlags().testFlag(Qt::WindowStaysOnTopHint); }

 private:
  QWidget& window_;
  HeaderPanel& header_;
  QWidget& strip_;
  QToolButton& fold_;
  bool folded_ = false;
};

}  // namespace spectrino
