#include "settings/ui/SourcePage.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace spectrino::setup {

SourcePage::SourcePage(QWidget* parent) : QWidget(parent) {
  MakeDevice();
  MakeFrequency();
  fraTRXM = MakeFrame("fraTRXM", {}, this);
  lblTRX = new QLabel(fraTRXM);
  lblTRX->setObjectName("lblTRX");
  lblTRX->setWordWrap(true);
  GridOf(fraTRXM)->addWidget(lblTRX, 0, 0);
  MakeIcom();
  MakeK4();
  MakeCatServer();
  auto* rows = new QVBoxLayout(this);
  for (QGroupBox* frame : {fraDevice, fraFrequency, fraTRXM, fraK4, fraMiscK4, fraICOM, fraCIV, fraCatServer})
    rows->addWidget(frame);
  rows->addStretch(1);
}

void SourcePage::MakeDevice() {
  fraDevice = MakeFrame("fraDevice", tr("Device"), this);
  DevicesBox = new SourceList(fraDevice);
  DevicesBox->setObjectName("DevicesBox");
  DevicesBox->setToolTip(tr("Device selection"));
  DevicesBox->setAccessibleName(tr("Device selection"));
  QGridLayout* grid = GridOf(fraDevice);
  AddRow(grid, 0, tr("D&evice"), DevicesBox);
  optbits[0] = MakeOption("optbits0", tr("24bits"), tr("Sound card resolution (24bits)"), fraDevice);
  optbits[1] = MakeOption("optbits1", tr("16bits"), tr("Sound card resolution (16bits)"), fraDevice);
  auto* label = new QLabel(tr("Resolution"), fraDevice);
  auto* row = new QHBoxLayout;
  row->addWidget(optbits[0]);
  row->addWidget(optbits[1]);
  row->addStretch(1);
  grid->addWidget(label, 1, 0);
  grid->addLayout(row, 1, 1);
  grid->setColumnStretch(1, 1);
}

void SourcePage::MakeFrequency() {
  fraFrequency = MakeFrame("fraFrequency", {}, this);
  QGridLayout* grid = GridOf(fraFrequency);
  cboControl = MakeList("cboControl", {"Castelon", "Castelon+K3", "LPBridge", "Ketrel", "ICOM"},
                        tr("CAT Control software"), fraFrequency);
  cboSDR = MakeList("cboSDR", {"LPPan (IF Adapter)", "SDR (Fixed LO)"}, tr("Type of SDR (Qudarature output)"),
                    fraFrequency);
  txtHostEndpoint = MakeText(
      "txtHostEndpoint", tr("Where Castelon answers, host:port; empty: 127.0.0.1:4532"), 18, fraFrequency);
  txtHostEndpoint->setPlaceholderText("127.0.0.1:4532");
  AddRow(grid, 0, tr("CAT Contro&l"), cboControl);
  lblSDR = AddRow(grid, 0, tr("SD&R"), cboSDR, 2);
  AddRow(grid, 1, tr("&Host"), txtHostEndpoint);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
}

void SourcePage::MakeIcom() {
  fraICOM = MakeFrame("fraICOM", tr("ICOM"), this);
  QGridLayout* grid = GridOf(fraICOM);
  cboICOM = MakeList("cboICOM", {"Serial Port", "Castelon (OLE)"}, tr("Waveform data mode"), fraICOM);
  QStringList numbers;
  for (int n = 1; n <= 32; ++n) numbers.append(QString::number(n));
  cboPort = MakeList("cboPort", numbers, tr("Serial port (1-32)"), fraICOM);
  cboPortDevice = new SourceList(fraICOM);
  cboPortDevice->setObjectName("cboPortDevice");
  cboPortDevice->setToolTip(tr("The device that this port number stands for"));
  cboPortDevice->setAccessibleName(cboPortDevice->toolTip());
  cboPortDevice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  cboPortDevice->setMinimumContentsLength(24);
  AddRow(grid, 0, tr("D&ATA"), cboICOM);
  lblPort = AddRow(grid, 0, tr("&Port"), cboPort, 2);
  lblPortDevice = AddRow(grid, 1, tr("Dev&ice"), cboPortDevice);
  grid->addWidget(cboPortDevice, 1, 1, 1, 3);
  grid->setColumnStretch(1, 1);

  fraCIV = MakeFrame("fraCIV", tr("CI-V"), this);
  txtICAddr = MakeText("txtICAddr", tr("IC Address"), 4, fraCIV);
  txtCTRLADDR = MakeText("txtCTRLADDR", tr("Controller"), 4, fraCIV);
  AddRow(GridOf(fraCIV), 0, tr("IC Add&ress"), txtICAddr);
  AddRow(GridOf(fraCIV), 0, tr("Co&ntroller"), txtCTRLADDR, 2);
  GridOf(fraCIV)->addWidget(new QLabel(tr("Speed 115200b (fixed)"), fraCIV), 0, 4);
  GridOf(fraCIV)->setColumnStretch(5, 1);
}

void SourcePage::MakeK4() {
  fraK4 = MakeFrame("fraK4", tr("K4 (IP ADDRESS, CAT PORT, PAN PORT)"), this);
  const char* const labels[] = {"&IP Address", "Port CA&T", "Port &PAN"};
  const char* const toolTips[] = {"K4 IP Address", "Port CAT (9200)", "Port Pan (9201)"};
  for (int i = 0; i < 3; ++i) {
    txtK4[i] = MakeText(QString("txtK4%1").arg(i), tr(toolTips[i]), i == 0 ? 16 : 6, fraK4);
    AddRow(GridOf(fraK4), 0, tr(labels[i]), txtK4[i], 2 * i);
  }
  GridOf(fraK4)->setColumnStretch(1, 1);
  fraMiscK4 = MakeFrame("fraMiscK4", tr("Misc (K4)"), this);
  chkMinipan = MakeCheck("chkMinipan", tr("Second R&X auto"),
                         tr("Automtically opens the second RX when SUB is selected"), fraMiscK4);
  GridOf(fraMiscK4)->addWidget(chkMinipan, 0, 0);
}

void SourcePage::MakeCatServer() {
  fraCatServer = MakeFrame("fraCatServer", tr("CAT server"), this);
  chkCatServer =
      MakeCheck("chkCatServer", tr("Ser&ve other programs"),
                tr("Let other programs read and set the radio's frequency through Spectrino"), fraCatServer);
  txtCatServerPort = MakeText("txtCatServerPort", tr("Port of the CAT server (4533)"), 6, fraCatServer);
  QGridLayout* grid = GridOf(fraCatServer);
  grid->addWidget(chkCatServer, 0, 0);
  AddRow(grid, 0, tr("Port"), txtCatServerPort, 1);
  grid->setColumnStretch(3, 1);
}

}  // namespace spectrino::setup
