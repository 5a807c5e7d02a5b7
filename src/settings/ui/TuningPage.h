// Setup, third page: offsets between dial and spectrum, wheel steps, spans and S-meter of the K4.
#pragma once

#include "settings/SetupView.h"
#include "settings/ui/SetupFields.h"
#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

class TuningPage final : public QWidget {
  Q_OBJECT
 public:
  explicit TuningPage(QWidget* parent = nullptr);

  void AddFields(SetupFields& fields);
  void Show(const SetupView& view);

  QCheckBox* chkMouse;

 private:
  void MakeOffsets();
  void MakeWheel();
  void MakeSpans();
  [[nodiscard]] SetupField QuickSplitField();
  void Enable();

  QGroupBox* fraModeOffset_;
  QLineEdit* txtOffset_[5];
  QGroupBox* fraGlobalOffset_;
  QLineEdit* txtGlobalOffset_;
  QGroupBox* fraCenterFrequencies_;
  QLineEdit* txtCenter_[4];
  QGroupBox* fraMouseWheel_;
  QCheckBox* chkInverted_;
  QLineEdit* txtStep_[4];
  QGroupBox* fraSpanK4_;
  QLineEdit* txtSpan_[3];
  QComboBox* cboSM_;
  QLineEdit* txtCorr_;
  QLineEdit* txtPKHold_;
  QLineEdit* txtQSplit_[2];
};

}  // namespace spectrino::setup
