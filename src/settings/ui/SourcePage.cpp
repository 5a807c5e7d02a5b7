#include "settings/ui/SourcePage.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "settings/Keys.h"

namespace spectrino::setup {

SourcePage::SourcePage(SettingsStore& store, const SerialPorts* ports, AskRigList askRigs, LookForServer look,
                       QWidget* parent)
    : QWidget(parent) {
  QGroupBox* fraDevice = MakeDevice();
  QGroupBox* fraFrequency = MakeFrequency();
  fraTRXM_ = MakeInstructions();
  Icom = new IcomFrames(store, ports, this);
  k4_ = new K4Frames(this);
  server_ = new HostServerFrame(ports, std::move(askRigs), std::move(look), this);
  CatServer = new CatServerFrame(this);
  connect(txtHostEndpoint_, &QLineEdit::textChanged, this,
          [this](const QString& text) { server_->Show(!txtHostEndpoint_->isHidden(), text); });
  auto* rows = new QVBoxLayout(this);
  for (QGroupBox* frame : {fraDevice, fraFrequency, server_->fraHostServer, fraTRXM_, k4_->fraK4,
                           k4_->fraMiscK4, Icom->fraICOM, Icom->fraCIV, CatServer->fraCatServer})
    rows->addWidget(frame);
  rows->addStretch(1);
  // What nothing in the program heeds is kept in the file and not shown.
  for (QWidget* idle : std::initializer_list<QWidget*>{lblBits_, optbits[0], optbits[1]}) idle->hide();
}

QGroupBox* SourcePage::MakeDevice() {
  QGroupBox* fraDevice = MakeFrame("fraDevice", tr("Device"), this);
  DevicesBox = new FreshList(fraDevice);
  DevicesBox->setObjectName("DevicesBox");
  DevicesBox->setToolTip(tr("Device selection"));
  DevicesBox->setAccessibleName(tr("Device selection"));
  QGridLayout* grid = GridOf(fraDevice);
  AddRow(grid, 0, tr("De&vice"), DevicesBox);
  optbits[0] = MakeOption("optbits0", tr("24bits"), tr("Sound card resolution (24bits)"), fraDevice);
  optbits[1] = MakeOption("optbits1", tr("16bits"), tr("Sound card resolution (16bits)"), fraDevice);
  lblBits_ = new QLabel(tr("Resolution"), fraDevice);
  auto* row = new QHBoxLayout;
  row->addWidget(optbits[0]);
  row->addWidget(optbits[1]);
  row->addStretch(1);
  grid->addWidget(lblBits_, 1, 0);
  grid->addLayout(row, 1, 1);
  grid->setColumnStretch(1, 1);
  return fraDevice;
}

QGroupBox* SourcePage::MakeFrequency() {
  QGroupBox* fraFrequency = MakeFrame("fraFrequency", {}, this);
  QGridLayout* grid = GridOf(fraFrequency);
  cboControl = MakeList("cboControl", {"Castelon", "Castelon+K3", "LPBridge", "Ketrel", "ICOM"},
                        tr("CAT Control software"), fraFrequency);
  cboSDR = MakeList("cboSDR", {"LPPan (IF Adapter)", "SDR (Fixed LO)"}, tr("Type of SDR (Qudarature output)"),
                    fraFrequency);
  txtHostEndpoint_ = MakeText(
      "txtHostEndpoint", tr("Where Castelon answers, host:port; empty: 127.0.0.1:4532"), 18, fraFrequency);
  txtHostEndpoint_->setPlaceholderText("127.0.0.1:4532");
  AddRow(grid, 0, tr("CAT Contro&l"), cboControl);
  lblSDR_ = AddRow(grid, 0, tr("SD&R"), cboSDR, 2);
  lblHostEndpoint_ = AddRow(grid, 1, tr("Host pro&gram"), txtHostEndpoint_);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  return fraFrequency;
}

QGroupBox* SourcePage::MakeInstructions() {
  QGroupBox* frame = MakeFrame("fraTRXM", {}, this);
  lblTRX_ = new QLabel(frame);
  lblTRX_->setObjectName("lblTRX");
  lblTRX_->setWordWrap(true);
  GridOf(frame)->addWidget(lblTRX_, 0, 0);
  return frame;
}

void SourcePage::AddFields(SetupFields& fields) {
  // Two options of one group: the other one goes out by itself.
  fields.push_back(
      {std::string(key::k24Bits.Name.Text()),
       [this](const SetupSection& setup) { optbits[setup.Read(key::k24Bits) ? 0 : 1]->setChecked(true); },
       [this](SetupBatch& batch) { batch.Put(key::k24Bits, optbits[0]->isChecked()); }});
  fields.push_back(TextField(txtHostEndpoint_, key::kHostEndpoint));
  CatServer->AddFields(fields);
  Icom->AddFields(fields);
  k4_->AddFields(fields);
  server_->AddFields(fields);
}

CatChoice SourcePage::Cat() const {
  return {static_cast<CatSoftware>(cboControl->currentIndex()), static_cast<SdrKind>(cboSDR->currentIndex())};
}

void SourcePage::ShowCat(const CatChoice& choice) {
  cboControl->setCurrentIndex(static_cast<int>(choice.Software));
  cboSDR->setCurrentIndex(static_cast<int>(choice.Sdr));
}

void SourcePage::Show(const SetupView& view, bool running) {
  {
    const QSignalBlocker silent(cboControl);
    cboControl->setCurrentIndex(static_cast<int>(view.Software));
  }
  cboControl->setEnabled(view.SoftwareFree && !running);
  cboSDR->setVisible(view.SoundCard);
  lblSDR_->setVisible(view.SoundCard);
  fraTRXM_->setVisible(view.Instructions != nullptr);
  lblTRX_->setText(view.Instructions);
  Icom->Show(view);
  k4_->Show(view);
  const bool host = UsesHost(view.Control);
  lblHostEndpoint_->setVisible(host);
  txtHostEndpoint_->setVisible(host);
  server_->Show(host, txtHostEndpoint_->text());
}

}  // namespace spectrino::setup
