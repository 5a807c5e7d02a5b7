// Pointer, wheel and keys where they lead the waterfall back in time, and its picture into a file.
// What they are anywhere else is TuningInput's.
#pragma once

#include <QKeyEvent>
#include <QMouseEvent>
#include <QObject>
#include <QPointF>
#include <QWheelEvent>
#include <functional>

#include "app/PictureFile.h"
#include "display/PanDisplay.h"
#include "display/ui/ScopeWidget.h"

namespace spectrino {

class PastInput final : public QObject {
  Q_OBJECT
 public:
  /// All outlive it. changed: the display has something new. fullScreen: what the right button does at the
  /// right edge of the plot.
  struct Parts {
    PanDisplay& Display;
    ScopeWidget* Scope;
    PictureFile& Pictures;
    std::function<void()> Changed;
    std::function<void()> FullScreen;
  };
  explicit PastInput(const Parts& parts);

  /// Before the scope sees its events.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool Moved(const QMouseEvent& event);
  bool Pressed(const QMouseEvent& event);
  bool Turned(const QWheelEvent& event);
  bool Typed(const QKeyEvent& event);
  void OpenMenu(QPoint global);
  void ScrollBy(int rows);
  void ShowNow();
  [[nodiscard]] QPointF Pixel(QPointF logical) const;

  Parts parts_;
  double turned_ = 0;  ///< rows that the wheel asked for and that were no whole one yet
};

}  // namespace spectrino
