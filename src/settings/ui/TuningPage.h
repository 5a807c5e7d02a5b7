// Setup, third page: offsets between dial and spectrum, wheel steps, spans and S-meter of the K4.
#pragma once

#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

class TuningPage final : public QWidget {
  Q_OBJECT
 public:
  explicit TuningPage(QWidget* parent = nullptr);

  QGroupBox* fraModeOffset;
  QLineEdit* txtOffset[5];
  QGroupBox* fraGlobalOffset;
  QLineEdit* txtGlobalOffset;
  QGroupBox* fraCenterFrequencies;
  QLineEdit* txtCenter[4];
  QGroupBox* fraMouseWheel;
  QCheckBox* chkMouse;
  QCheckBox* chkInverted;
  QLineEdit* txtStep[4];
  QGroupBox* fraSpanK4;
  QLineEdit* txtSpan[3];
  QComboBox* cboSM;
  QLineEdit* txtCorr;
  QLineEdit* txtPKHold;
  QLineEdit* txtQSplit[2];

 private:
  void MakeOffsets();
  void MakeWheel();
  void MakeSpans();
};

}  // namespace spectrino::setup
