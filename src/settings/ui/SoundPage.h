// Setup, second page: sample rate, transform and I/Q of a sound-card source.
#pragma once

#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

class SoundPage final : public QWidget {
  Q_OBJECT
 public:
  explicit SoundPage(QWidget* parent = nullptr);
  /// "5.4Hz (13b)": the width of a bin and the exponent of the transform's length.
  void ShowResolution();

  QGroupBox* fraBits;
  QComboBox* cboBits;
  QLabel* lblNumSamples;
  QCheckBox* chkRemoveSpike;
  QGroupBox* FraRate;
  QComboBox* cboSampleRate;
  QGroupBox* fraApo;
  QComboBox* cboAPO;
  QGroupBox* fraIQ;
  QCheckBox* chkIQ;
  QCheckBox* chkZoom;
  QCheckBox* chkFlip6;
  QLineEdit* txtFlipFreq[2];
  QCheckBox* chkModeFlip[2];
};

}  // namespace spectrino::setup
