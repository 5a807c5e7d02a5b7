// The S-meter as a bar with its scale and a mark for the held peak.
// Shows a level in dBm; the reading beside it is text of its own.
#pragma once

#include <QPixmap>
#include <QWidget>

namespace spectrino {

class SMeterBar final : public QWidget {
  Q_OBJECT
 public:
  explicit SMeterBar(QWidget* parent = nullptr);
  void SetLevels(float levelDbm, float heldDbm, bool known);
  [[nodiscard]] QSize sizeHint() const override { return {190, 24}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {96, 24}; }
  /// Share of the bar that a level fills, 0..1: S0 to S9 take 55 % in steps of 6 dB, S9 to S9+60 the rest.
  [[nodiscard]] static double Share(float levelDbm);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QPixmap DrawTicks(double barWidth, double ratio) const;

  QPixmap ticks_;
  double share_ = 0;
  double heldShare_ = 0;
};

}  // namespace spectrino
