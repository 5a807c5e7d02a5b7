// Setup, first page: which source, which CAT software, and how the radio is reached.
// Controls and captions; the rules between them are the dialog's.
#pragma once

#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

/// Asks for the devices anew whenever it is opened: they come and go with their plugs.
class SourceList final : public QComboBox {
  Q_OBJECT
 public:
  using QComboBox::QComboBox;
  void showPopup() override {
    emit AboutToShow();
    QComboBox::showPopup();
  }
 signals:
  void AboutToShow();
};

class SourcePage final : public QWidget {
  Q_OBJECT
 public:
  explicit SourcePage(QWidget* parent = nullptr);

  QGroupBox* fraDevice;
  SourceList* DevicesBox;
  QRadioButton* optbits[2];
  QGroupBox* fraFrequency;
  QComboBox* cboControl;
  QComboBox* cboSDR;
  QLabel* lblSDR;
  QLineEdit* txtHostEndpoint;
  QGroupBox* fraTRXM;
  QLabel* lblTRX;
  QGroupBox* fraICOM;
  QComboBox* cboICOM;
  QComboBox* cboPort;
  QLabel* lblPort;
  SourceList* cboPortDevice;
  QLabel* lblPortDevice;
  QGroupBox* fraCIV;
  QLineEdit* txtICAddr;
  QLineEdit* txtCTRLADDR;
  QGroupBox* fraK4;
  QLineEdit* txtK4[3];
  QGroupBox* fraMiscK4;
  QCheckBox* chkMinipan;
  QGroupBox* fraCatServer;
  QCheckBox* chkCatServer;
  QLineEdit* txtCatServerPort;

 private:
  void MakeDevice();
  void MakeFrequency();
  void MakeIcom();
  void MakeK4();
  void MakeCatServer();
};

}  // namespace spectrino::setup
