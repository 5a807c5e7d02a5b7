#include "settings/ui/SoundPage.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <cmath>

namespace spectrino::setup {
namespace {
constexpr int kSmallestBits = 8;
constexpr int kLargestBits = 16;
}  // namespace

SoundPage::SoundPage(QWidget* parent) : QWidget(parent) {
  FraRate = MakeFrame("FraRate", tr("S. Rate"), this);
  cboSampleRate = MakeList("cboSampleRate", {"11025", "22050", "44100", "48000", "88200", "96000", "192000"},
                           tr("Sample rate"), FraRate);
  AddRow(GridOf(FraRate), 0, tr("Sa&mple rate"), cboSampleRate);

  fraBits = MakeFrame("fraBits", tr("FFT bins"), this);
  QStringList lengths;
  for (int bits = kSmallestBits; bits <= kLargestBits; ++bits) lengths.append(QString::number(1 << bits));
  cboBits = MakeList("cboBits", lengths, tr("Number of FFT Bins and accuracy in Hz"), fraBits);
  lblNumSamples = new QLabel(fraBits);
  lblNumSamples->setObjectName("lblNumSamples");
  chkRemoveSpike = MakeCheck("chkRemoveSpike", tr("Smooth &0Hz spike"),
                             tr("Remove 0Hz spike (not required with high quality sound cards)"), fraBits);
  AddRow(GridOf(fraBits), 0, tr("FFT &bins"), cboBits);
  GridOf(fraBits)->addWidget(lblNumSamples, 0, 2);
  GridOf(fraBits)->addWidget(chkRemoveSpike, 1, 0, 1, 3);

  fraApo = MakeFrame("fraApo", tr("Apodization"), this);
  cboAPO =
      MakeList("cboAPO", {"None", "Hamming", "Blackman", "Blackman Harris", "Blackman Nuttall", "Flat Top"},
               tr("Apodization filter or Windowing"), fraApo);
  AddRow(GridOf(fraApo), 0, tr("&Window"), cboAPO);

  fraIQ = MakeFrame("fraIQ", {}, this);
  chkIQ = MakeCheck("chkIQ", tr("Re&verse I/Q (L/R)"), tr("Inverse Left/Right Channels"), fraIQ);
  chkZoom =
      MakeCheck("chkZoom", tr("&High Res. Zoom"), tr("High Resolution Zoom (variable sample rate)"), fraIQ);
  chkFlip6 = MakeCheck("chkFlip6", tr("Flip &I/Q From"), tr("Automatically flip I/Q on 6m"), fraIQ);
  chkModeFlip[0] = MakeCheck("chkModeFlip0", tr("&CW: flip I/Q"), {}, fraIQ);
  chkModeFlip[1] = MakeCheck("chkModeFlip1", tr("&USB: flip I/Q"), {}, fraIQ);
  txtFlipFreq[0] = MakeText("txtFlipFreq0", tr("Flip I/Q from (MHz)"), 6, fraIQ);
  txtFlipFreq[1] = MakeText("txtFlipFreq1", tr("Flip I/Q to (MHz)"), 6, fraIQ);
  QGridLayout* grid = GridOf(fraIQ);
  grid->addWidget(chkIQ, 0, 0);
  grid->addWidget(chkZoom, 0, 1);
  grid->addWidget(chkModeFlip[0], 1, 0);
  grid->addWidget(chkModeFlip[1], 1, 1);
  auto* flip = new QHBoxLayout;
  flip->addWidget(chkFlip6);
  flip->addWidget(txtFlipFreq[0]);
  flip->addWidget(new QLabel(tr("to"), fraIQ));
  flip->addWidget(txtFlipFreq[1]);
  flip->addWidget(new QLabel(tr("MHz"), fraIQ));
  flip->addStretch(1);
  grid->addLayout(flip, 2, 0, 1, 2);

  auto* rows = new QVBoxLayout(this);
  auto* top = new QHBoxLayout;
  top->addWidget(FraRate, 1);
  top->addWidget(fraApo, 1);
  rows->addLayout(top);
  rows->addWidget(fraBits);
  rows->addWidget(fraIQ);
  rows->addStretch(1);
  // As they stand, row by row.
  setTabOrder(cboSampleRate, cboAPO);
  setTabOrder(cboAPO, cboBits);
  setTabOrder(chkZoom, chkModeFlip[0]);
  setTabOrder(chkModeFlip[0], chkModeFlip[1]);
  setTabOrder(chkModeFlip[1], chkFlip6);
  connect(cboBits, &QComboBox::currentIndexChanged, this, &SoundPage::ShowResolution);
  connect(cboSampleRate, &QComboBox::currentIndexChanged, this, &SoundPage::ShowResolution);
}

void SoundPage::ShowResolution() {
  const int bits = cboBits->currentIndex() + kSmallestBits;
  // Pattern "#.0": no zero before the point.
  QString width =
      QString::number(std::round(cboSampleRate->currentText().toDouble() / (1 << bits) * 10) / 10, 'f', 1);
  if (width.startsWith("0.")) width.remove(0, 1);
  lblNumSamples->setText(QString("%1Hz (%2b)").arg(width).arg(bits));
}

}  // namespace spectrino::setup
