#include "settings/ui/DisplayPage.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QPixmap>
#include <QVBoxLayout>

namespace spectrino::setup {
namespace {
constexpr int kColourColumns = 5;
constexpr int kMostSamples = 10;
}  // namespace

DisplayPage::DisplayPage(QWidget* parent) : QWidget(parent) {
  MakeSpectrum();
  MakeColours();
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(fraSpectrum);
  rows->addWidget(fraColor);
  rows->addStretch(1);
}

void DisplayPage::MakeSpectrum() {
  fraSpectrum = MakeFrame("fraSpectrum", tr("Spectrum"), this);
  QStringList counts;
  for (int n = 0; n <= kMostSamples; ++n) counts.append(QString::number(n));
  cboSoft = MakeList("cboSoft", counts, tr("Number of samples for AVG/MAX integration"), fraSpectrum);
  chkQSY = MakeCheck("chkQSY", tr("&QSY Detect."), tr("Restart averaging after a change of frequency"),
                     fraSpectrum);
  chkAUTOREF =
      MakeCheck("chkAUTOREF", tr("Auto &REF Level"), tr("Memorizes and set REF level by band"), fraSpectrum);
  chkPriority = MakeCheck("chkPriority", tr("&Priority: Real Time"),
                          tr("Windows Real Time Priority (not recommended)"), fraSpectrum);
  chkWFFollow =
      MakeCheck("chkWFFollow", tr("&Waterfall follows the frequency"),
                tr("Older waterfall lines move to where their frequencies are after tuning"), fraSpectrum);
  QGridLayout* grid = GridOf(fraSpectrum);
  AddRow(grid, 0, tr("MAX/AVG &Samples"), cboSoft);
  grid->addWidget(chkQSY, 0, 2);
  grid->addWidget(chkAUTOREF, 0, 3);
  grid->addWidget(chkPriority, 1, 2);
  grid->addWidget(chkWFFollow, 1, 3);
  grid->setColumnStretch(3, 1);
}

void DisplayPage::MakeColours() {
  fraColor = MakeFrame("fraColor", tr("Color/Design"), this);
  QGridLayout* grid = GridOf(fraColor);
  auto* buttons = new QGridLayout;
  for (std::size_t n = 0; n < kColourCount; ++n) {
    const QString caption = kColourRows[n].Caption;
    cmdColor[n] = MakeButton(QString("cmdColor%1").arg(n), caption, tr("Color: %1").arg(caption), fraColor);
    const auto cell = static_cast<int>(n);
    buttons->addWidget(cmdColor[n], cell / kColourColumns, cell % kColourColumns);
  }
  cmdDefault = MakeButton("cmdDefault", tr("Defa&ult"), tr("Default colors (Spectrino)"), fraColor);
  cmdK4Color = MakeButton("cmdK4Color", tr("Default K&4"), tr("Default colors (K4)"), fraColor);
  optDesign[0] = MakeOption("optDesign0", tr("Design &1"), {}, fraColor);
  optDesign[1] = MakeOption("optDesign1", tr("Design &2"), {}, fraColor);
  chkSubD = MakeCheck("chkSubD", tr("su&b-division (line)"), {}, fraColor);
  chkFill = MakeCheck("chkFill", tr("&Fill"), {}, fraColor);
  chkMHz = MakeCheck("chkMHz", tr("Disp &MHz"), {}, fraColor);
  chkBandMode = MakeCheck("chkBandMode", tr("Band/Mode SW (&Always)"),
                          tr("Band/Mode buttons always displayed"), fraColor);
  picColor = new ColourPreview(fraColor);
  auto* defaults = new QHBoxLayout;
  defaults->addWidget(cmdDefault);
  defaults->addWidget(cmdK4Color);
  defaults->addStretch(1);
  grid->addLayout(buttons, 0, 0, 1, 2);
  grid->addLayout(defaults, 1, 0, 1, 2);
  grid->addWidget(optDesign[0], 2, 0);
  grid->addWidget(optDesign[1], 2, 1);
  grid->addWidget(chkFill, 3, 0);
  grid->addWidget(chkSubD, 3, 1);
  grid->addWidget(chkMHz, 4, 0);
  grid->addWidget(chkBandMode, 4, 1);
  grid->addWidget(picColor, 0, 2, 5, 1, Qt::AlignTop);
  grid->setColumnStretch(1, 1);
  setTabOrder(optDesign[1], chkFill);
  setTabOrder(chkFill, chkSubD);
}

void DisplayPage::ShowColours(const ColourTable& colours) {
  for (std::size_t n = 0; n < kColourCount; ++n) {
    QPixmap swatch(14, 14);
    swatch.fill(ToColour(colours[n]));
    cmdColor[n]->setIcon(QIcon(swatch));
    cmdColor[n]->setAccessibleDescription(ToColour(colours[n]).name());
  }
  picColor->Show(colours, chkFill->isChecked(), chkSubD->isChecked());
}

}  // namespace spectrino::setup
