// The calibration row: I/Q balance and the level correction.
// Shows and forwards; the values are kept by the settings.
#pragma once

#include <QLabel>
#include <QSlider>
#include <QWidget>

namespace spectrino {

class CalibrationPanel final : public QWidget {
  Q_OBJECT
 public:
  explicit CalibrationPanel(QWidget* parent = nullptr);
  /// amplitude and phase in thousandths, level in dB; moves the sliders without sending anything.
  void Show(double amplitude, double phase, double levelDb);

 signals:
  void sldAmplitude_Change(int value);  ///< -500..500, thousandths of gain
  void sldPhase_Change(int value);      ///< -500..500, thousandths
  void slddbm_Change(int value);        ///< -50..50 dB added to every level

 private:
  QSlider* sldAmplitude_;
  QSlider* sldPhase_;
  QSlider* slddbm_;
  QLabel* lbliQ0_;
  QLabel* lbliQ1_;
  QLabel* lbldbm_;
};

}  // namespace spectrino
