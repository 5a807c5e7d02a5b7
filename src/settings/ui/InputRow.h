// One sound input to choose: its name, what arrives left and right, and what keeps it from being heard.
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QRadioButton>
#include <QWidget>

namespace spectrino::setup {

/// Peaks in dB below full scale, down to -100; trouble goes before them.
struct InputLevel {
  bool Heard = false;
  float LeftDb = -100;
  float RightDb = -100;
  QString Trouble{};
};

class InputRow final : public QWidget {
  Q_OBJECT
 public:
  /// name: as the desktop calls the input.
  explicit InputRow(const QString& name, QWidget* parent);
  void Show(const InputLevel& level);

 private:
  QProgressBar* AddBar(const char* name, const QString& spoken);

  QProgressBar* left_;
  QProgressBar* right_;
  QLabel* lblLevel_;
};

}  // namespace spectrino::setup
