// Setup, first page: the frames of an Icom, its serial port and its CI-V addresses.
#pragma once

#include <QObject>

#include "platform/SerialPorts.h"
#include "settings/SettingsStore.h"
#include "settings/SetupView.h"
#include "settings/ui/FreshList.h"
#include "settings/ui/PortPicker.h"
#include "settings/ui/SetupFields.h"
#include "settings/ui/SetupWidgets.h"

namespace spectrino::setup {

class IcomFrames final : public QObject {
  Q_OBJECT
 public:
  /// ports may be null: then there are none.
  IcomFrames(SettingsStore& store, const SerialPorts* ports, QWidget* page);

  void AddFields(SetupFields& fields);
  [[nodiscard]] IcomData Waveform() const { return static_cast<IcomData>(cboICOM->currentIndex()); }
  void Show(const SetupView& view);
  /// What is not a field: the devices that were picked for port numbers.
  void SavePorts() { picker_->Save(); }

  QGroupBox* fraICOM;
  QComboBox* cboICOM;
  QGroupBox* fraCIV;

 private:
  void MakeLink(QWidget* page);
  void MakeAddresses(QWidget* page);

  QComboBox* cboPort_;
  QLabel* lblPort_;
  FreshList* cboPortDevice_;
  QLabel* lblPortDevice_;
  QLineEdit* txtICAddr_;
  QLineEdit* txtCTRLADDR_;
  PortPicker* picker_;
};

}  // namespace spectrino::setup
