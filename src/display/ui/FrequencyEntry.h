// The line in which a frequency is typed, over the one it replaces.
// Hands on what was typed; what it means is decided elsewhere.
#pragma once

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>

namespace spectrino {

class FrequencyEntry final : public QLineEdit {
  Q_OBJECT
 public:
  explicit FrequencyEntry(QWidget* parent = nullptr);
  /// Over a label, with what was typed already.
  void Begin(const QWidget& over, const QString& typed);

 signals:
  void Entered(const QString& text);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void End();
};

}  // namespace spectrino
