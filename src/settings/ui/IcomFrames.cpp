#include "settings/ui/IcomFrames.h"

#include "settings/Keys.h"

namespace spectrino::setup {

IcomFrames::IcomFrames(SettingsStore& store, const SerialPorts* ports, QWidget* page) : QObject(page) {
  MakeLink(page);
  MakeAddresses(page);
  picker_ = new PortPicker(cboPort_, cboPortDevice_, store, ports);
  picker_->setParent(this);
}

void IcomFrames::MakeLink(QWidget* page) {
  fraICOM = MakeFrame("fraICOM", tr("ICOM"), page);
  QGridLayout* grid = GridOf(fraICOM);
  cboICOM = MakeList("cboICOM", {"Serial Port", "Castelon (OLE)"}, tr("Waveform data mode"), fraICOM);
  QStringList numbers;
  for (int n = 1; n <= 32; ++n) numbers.append(QString::number(n));
  cboPort_ = MakeList("cboPort", numbers, tr("Serial port (1-32)"), fraICOM);
  cboPortDevice_ = new FreshList(fraICOM);
  cboPortDevice_->setObjectName("cboPortDevice");
  cboPortDevice_->setToolTip(tr("The device that this port number stands for"));
  cboPortDevice_->setAccessibleName(cboPortDevice_->toolTip());
  cboPortDevice_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  cboPortDevice_->setMinimumContentsLength(24);
  AddRow(grid, 0, tr("D&ATA"), cboICOM);
  lblPort_ = AddRow(grid, 0, tr("&Port"), cboPort_, 2);
  lblPortDevice_ = AddRow(grid, 1, tr("Dev&ice"), cboPortDevice_);
  grid->addWidget(cboPortDevice_, 1, 1, 1, 3);
  grid->setColumnStretch(1, 1);
}

void IcomFrames::MakeAddresses(QWidget* page) {
  fraCIV = MakeFrame("fraCIV", tr("CI-V"), page);
  txtICAddr_ = MakeText("txtICAddr", tr("IC Address"), 4, fraCIV);
  txtCTRLADDR_ = MakeText("txtCTRLADDR", tr("Controller"), 4, fraCIV);
  AddRow(GridOf(fraCIV), 0, tr("IC Add&ress"), txtICAddr_);
  AddRow(GridOf(fraCIV), 0, tr("&Controller"), txtCTRLADDR_, 2);
  GridOf(fraCIV)->addWidget(new QLabel(tr("Speed 115200b (fixed)"), fraCIV), 0, 4);
  GridOf(fraCIV)->setColumnStretch(5, 1);
}

void IcomFrames::AddFields(SetupFields& fields) {
  fields.push_back(ListField(cboPort_, key::kPort, 1));
  fields.push_back(TextField(txtICAddr_, key::kIcAddress));
  fields.push_back(TextField(txtCTRLADDR_, key::kControllerAddress));
  fields.push_back(ListField(cboICOM, key::kIcomControl));
}

void IcomFrames::Show(const SetupView& view) {
  fraICOM->setVisible(view.Icom);
  fraCIV->setVisible(view.Icom && view.IcomSerial);
  for (QWidget* widget : std::initializer_list<QWidget*>{cboPort_, lblPort_, cboPortDevice_, lblPortDevice_})
    widget->setVisible(view.IcomSerial);
}

}  // namespace spectrino::setup
