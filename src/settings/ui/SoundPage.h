// Setup, second page: sample rate, transform and I/Q of a sound-card source.
#pragma once

#include "settings/ui/SetupFields.h"
#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

class SoundPage final : public QWidget {
  Q_OBJECT
 public:
  explicit SoundPage(QWidget* parent = nullptr);

  void AddFields(SetupFields& fields);
  /// Everything on the page, for a sound card alone.
  void Show(bool soundCard);

  QComboBox* cboBits;
  QComboBox* cboSampleRate;
  QCheckBox* chkZoom;

 private:
  void MakeTransform();
  void MakeIq();
  void Arrange();
  /// "5.4Hz (13b)": the width of a bin and the exponent of the transform's length.
  void ShowResolution();
  void EnableFlip();

  QGroupBox* fraBits_;
  QLabel* lblNumSamples_;
  QCheckBox* chkRemoveSpike_;
  QGroupBox* FraRate_;
  QGroupBox* fraApo_;
  QComboBox* cboAPO_;
  QGroupBox* fraIQ_;
  QCheckBox* chkIQ_;
  QCheckBox* chkFlip6_;
  QLineEdit* txtFlipFreq_[2];
  QCheckBox* chkModeFlip_[2];
};

}  // namespace spectrino::setup
