// Setup, fourth page: averaging, what the display shows, its colours.
#pragma once

#include "settings/SetupView.h"
#include "settings/ui/ColourEditor.h"
#include "settings/ui/SetupFields.h"
#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

class DisplayPage final : public QWidget {
  Q_OBJECT
 public:
  explicit DisplayPage(QWidget* parent = nullptr);

  void AddFields(SetupFields& fields);
  void Show(const SetupView& view);

  QCheckBox* chkPriority;

 private:
  QGroupBox* MakeSpectrum();
  QGroupBox* MakeDesign();

  QComboBox* cboSoft_;
  QCheckBox* chkAUTOREF_;
  QRadioButton* optDesign_[2];
  QCheckBox* chkSubD_;
  QCheckBox* chkFill_;
  QCheckBox* chkBandMode_;
  ColourEditor* colours_;
  SetupFields free_;  ///< of the controls that no rule speaks of
};

}  // namespace spectrino::setup
