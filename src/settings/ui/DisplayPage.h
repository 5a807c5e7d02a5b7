// Setup, fourth page: averaging, what the display shows, its colours.
#pragma once

#include <array>

#include "settings/ui/ColourPreview.h"
#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

class DisplayPage final : public QWidget {
  Q_OBJECT
 public:
  explicit DisplayPage(QWidget* parent = nullptr);
  /// The 13 colours on their buttons and in the preview.
  void ShowColours(const ColourTable& colours);

  QGroupBox* fraSpectrum;
  QComboBox* cboSoft;
  QCheckBox* chkQSY;
  QCheckBox* chkAUTOREF;
  QCheckBox* chkPriority;
  QCheckBox* chkWFFollow;
  QGroupBox* fraColor;
  std::array<QPushButton*, kColourCount> cmdColor;
  QPushButton* cmdDefault;
  QPushButton* cmdK4Color;
  QRadioButton* optDesign[2];
  QCheckBox* chkSubD;
  QCheckBox* chkFill;
  QCheckBox* chkMHz;
  QCheckBox* chkBandMode;
  ColourPreview* picColor;

 private:
  void MakeSpectrum();
  void MakeColours();
};

}  // namespace spectrino::setup
