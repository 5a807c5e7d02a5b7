#include "settings/ui/SoundPage.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <cmath>

#include "settings/Keys.h"

namespace spectrino::setup {
namespace {
constexpr int kSmallestBits = 8;
constexpr int kLargestBits = 16;
}  // namespace

SoundPage::SoundPage(QWidget* parent) : QWidget(parent) {
  MakeTransform();
  MakeIq();
  Arrange();
  connect(cboBits, &QComboBox::currentIndexChanged, this, &SoundPage::ShowResolution);
  connect(cboSampleRate, &QComboBox::currentIndexChanged, this, &SoundPage::ShowResolution);
  connect(chkFlip6_, &QAbstractButton::toggled, this, &SoundPage::EnableFlip);
  ShowResolution();
  EnableFlip();
}

void SoundPage::MakeTransform() {
  FraRate_ = MakeFrame("FraRate", tr("S. Rate"), this);
  cboSampleRate = MakeList("cboSampleRate", {"11025", "22050", "44100", "48000", "88200", "96000", "192000"},
                           tr("Sample rate"), FraRate_);
  AddRow(GridOf(FraRate_), 0, tr("Sa&mple rate"), cboSampleRate);

  fraBits_ = MakeFrame("fraBits", tr("FFT bins"), this);
  QStringList lengths;
  for (int bits = kSmallestBits; bits <= kLargestBits; ++bits) lengths.append(QString::number(1 << bits));
  cboBits = MakeList("cboBits", lengths, tr("Number of FFT Bins and accuracy in Hz"), fraBits_);
  lblNumSamples_ = new QLabel(fraBits_);
  lblNumSamples_->setObjectName("lblNumSamples");
  chkRemoveSpike_ = MakeCheck("chkRemoveSpike", tr("Smooth &0Hz spike"),
                              tr("Remove 0Hz spike (not required with high quality sound cards)"), fraBits_);
  AddRow(GridOf(fraBits_), 0, tr("FFT &bins"), cboBits);
  GridOf(fraBits_)->addWidget(lblNumSamples_, 0, 2);
  GridOf(fraBits_)->addWidget(chkRemoveSpike_, 1, 0, 1, 3);

  fraApo_ = MakeFrame("fraApo", tr("Apodization"), this);
  cboAPO_ =
      MakeList("cboAPO", {"None", "Hamming", "Blackman", "Blackman Harris", "Blackman Nuttall", "Flat Top"},
               tr("Apodization filter or Windowing"), fraApo_);
  AddRow(GridOf(fraApo_), 0, tr("&Window"), cboAPO_);
}

void SoundPage::MakeIq() {
  fraIQ_ = MakeFrame("fraIQ", {}, this);
  chkIQ_ = MakeCheck("chkIQ", tr("Re&verse I/Q (L/R)"), tr("Inverse Left/Right Channels"), fraIQ_);
  chkZoom =
      MakeCheck("chkZoom", tr("Hi&gh Res. Zoom"), tr("High Resolution Zoom (variable sample rate)"), fraIQ_);
  chkFlip6_ = MakeCheck("chkFlip6", tr("Flip &I/Q From"), tr("Automatically flip I/Q on 6m"), fraIQ_);
  chkModeFlip_[0] =
      MakeCheck("chkModeFlip0", tr("&CW: flip I/Q"), tr("Flip I/Q for CW mode\nActs in USB"), fraIQ_);
  chkModeFlip_[1] = MakeCheck("chkModeFlip1", tr("&USB: flip I/Q"),
                              tr("Flip I/Q for USB mode\nActs in CW and CW-R"), fraIQ_);
  txtFlipFreq_[0] = MakeText("txtFlipFreq0", tr("Flip I/Q from (MHz)"), 6, fraIQ_);
  txtFlipFreq_[1] = MakeText("txtFlipFreq1", tr("Flip I/Q to (MHz)"), 6, fraIQ_);
  QGridLayout* grid = GridOf(fraIQ_);
  grid->addWidget(chkIQ_, 0, 0);
  grid->addWidget(chkZoom, 0, 1);
  grid->addWidget(chkModeFlip_[0], 1, 0);
  grid->addWidget(chkModeFlip_[1], 1, 1);
  auto* flip = new QHBoxLayout;
  flip->setSpacing(6);
  flip->addWidget(chkFlip6_);
  flip->addWidget(txtFlipFreq_[0]);
  flip->addWidget(new QLabel(tr("to"), fraIQ_));
  flip->addWidget(txtFlipFreq_[1]);
  flip->addWidget(new QLabel(tr("MHz"), fraIQ_));
  flip->addStretch(1);
  grid->addLayout(flip, 2, 0, 1, 2);
}

void SoundPage::Arrange() {
  auto* rows = new QVBoxLayout(this);
  auto* top = new QHBoxLayout;
  top->addWidget(FraRate_, 1);
  top->addWidget(fraApo_, 1);
  rows->addLayout(top);
  rows->addWidget(fraBits_);
  rows->addWidget(fraIQ_);
  rows->addStretch(1);
  // As they stand, row by row.
  setTabOrder(cboSampleRate, cboAPO_);
  setTabOrder(cboAPO_, cboBits);
  setTabOrder(chkZoom, chkModeFlip_[0]);
  setTabOrder(chkModeFlip_[0], chkModeFlip_[1]);
  setTabOrder(chkModeFlip_[1], chkFlip6_);
}

void SoundPage::AddFields(SetupFields& fields) {
  fields.push_back(FlagField(chkIQ_, key::kIq));
  fields.push_back(ListField(cboBits, key::kBits));
  fields.push_back(FlagField(chkFlip6_, key::kFlip6));
  fields.push_back(FlagField(chkModeFlip_[0], key::kIqCw));
  fields.push_back(FlagField(chkModeFlip_[1], key::kIqUsb));
  fields.push_back(FlagField(chkRemoveSpike_, key::kSmoothZeroHz));
  fields.push_back(FlagField(chkZoom, key::kTypZoom));
  fields.push_back(ListField(cboSampleRate, key::kSRate));
  fields.push_back(ListField(cboAPO_, key::kWindowType));
  fields.push_back(TextField(txtFlipFreq_[0], key::kFlipFreq));
  fields.push_back(TextField(txtFlipFreq_[1], key::kFlipFreq2));
}

void SoundPage::Show(bool soundCard) {
  for (QGroupBox* frame : {fraBits_, fraApo_, FraRate_, fraIQ_}) frame->setVisible(soundCard);
}

void SoundPage::EnableFlip() {
  for (QLineEdit* text : txtFlipFreq_) text->setEnabled(chkFlip6_->isChecked());
}

void SoundPage::ShowResolution() {
  const int bits = cboBits->currentIndex() + kSmallestBits;
  // Pattern "#.0": no zero before the point.
  QString width =
      QString::number(std::round(cboSampleRate->currentText().toDouble() / (1 << bits) * 10) / 10, 'f', 1);
  if (width.startsWith("0.")) width.remove(0, 1);
  lblNumSamples_->setText(QString("%1Hz (%2b)").arg(width).arg(bits));
}

}  // namespace spectrino::setup
