// The plot on the screen: shows what PanDisplay painted and tells where the pointer is.
// Decides nothing and draws nothing itself.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include "display/PanDisplay.h"
#include "display/ui/StatusLine.h"
#include "state/StageTimes.h"

namespace spectrino {

class ScopeWidget final : public QWidget {
  Q_OBJECT
 public:
  ScopeWidget(PanDisplay& display, StageTimes& times, QWidget* parent = nullptr);

  /// Asks for a repaint if the display has something new, at most 50 times a second.
  /// arrived: when the line that is shown came in; the time since then is the latency.
  void ShowNew(std::chrono::steady_clock::time_point arrived);
  [[nodiscard]] StatusLine& Status() { return *lblStatus_; }
  /// Tells a screen reader, which has no pointer to hover with.
  void Announce(const QString& text);
  /// What was announced is no longer so.
  void EndAnnouncement();
  [[nodiscard]] QSize sizeHint() const override { return {600, 200}; }

 signals:
  void Resized();
  void ResizeBegun();
  /// Positions are logical pixels of this widget; this one is outside when the pointer left.
  void HoverMoved(QPointF at, Qt::KeyboardModifiers modifiers);
  void MouseDown(QPointF at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
  /// Before the second press of a double click.
  void DoubleClicked(QPointF at, Qt::MouseButton button);
  /// The pointer moved with a button down. from: where that was pressed.
  void Dragged(QPointF from, QPointF at);
  void DragEnded();
  /// delta: eighths of a degree, 120 a notch, as fine as the device tells; up or away is positive.
  void WheelTurned(QPointF at, int delta, Qt::KeyboardModifiers modifiers);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void ApplySize();
  void PlaceStatus();
  void FillBeyondPicture(QPainter& painter);
  void RequestRepaint();

  PanDisplay& display_;
  StageTimes& times_;
  StatusLine* lblStatus_;
  PlotLayout statusPlaced_;  ///< the layout that it was placed in
  QTimer resizeTimer_;
  QTimer repaintTimer_;
  QElapsedTimer sinceRepaint_;
  QPointF pressedAt_;
  bool focusShown_ = false;                          ///< it came by key: a click shows where it is by itself
  std::chrono::steady_clock::time_point arrived_{};  ///< of the newest line
  std::chrono::steady_clock::time_point shownArrival_{};  ///< of the line whose repaint was asked for last
  std::chrono::steady_clock::duration prepareTime_{};     ///< drawn since the last paint event
};

}  // namespace spectrino
