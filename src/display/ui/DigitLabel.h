// A frequency whose digits turn: by the wheel over one of them, by a click on its upper or lower half.
// Tells which digit and which way; what a step does is decided elsewhere.
#pragma once

#include <QColor>
#include <QLabel>
#include <QMouseEvent>
#include <QWheelEvent>
#include <optional>

namespace spectrino {

class DigitLabel final : public QLabel {
  Q_OBJECT
 public:
  explicit DigitLabel(QWidget* parent) : QLabel(parent) { setMouseTracking(true); }

  /// text: "14.074.000", or dashes, which have no digits. smallPx: height in which the last three characters
  /// of A are written; 0: as the others.
  void ShowFrequency(const QString& text, const QColor& colour, int smallPx);
  /// Whether the digits turn and a frequency can be typed.
  void Allow(bool allowed);

 signals:
  /// direction: +1 up, -1 down. hertz: what one step of the digit is.
  void Clicked(double hertz, int direction);
  /// delta: eighths of a degree, 120 a notch.
  void Turned(double hertz, int delta);
  /// A double click, or a click where no digit is. undo: the step of the first click is to be taken back;
  /// hertz 0: there was none.
  void EntryWanted(double undoHertz);

 protected:
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QRectF CharacterBox(qsizetype index) const;
  /// Decimal place of the digit there, 0 for 1 Hz; a dot belongs to the digit before it.
  [[nodiscard]] std::optional<int> PlaceAt(double x) const;
  void PointAt(QPointF at);
  void ShowPlace(std::optional<int> place);

  QString text_;
  int smallPx_ = 0;
  bool allowed_ = false;
  std::optional<int> place_;  ///< under the pointer; the wheel keeps it when the digits move away beneath
  QPointF pointedAt_;
  double clickedHertz_ = 0;  ///< signed: what the last click asked for
};

}  // namespace spectrino
