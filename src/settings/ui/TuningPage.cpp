#include "settings/ui/TuningPage.h"

#include <QVBoxLayout>

namespace spectrino::setup {
namespace {

/// A row of text boxes, each behind its label.
template <std::size_t N>
void MakeRow(QGroupBox* frame, int row, const QString& name, const QString& toolTip,
             const char* const (&labels)[N], QLineEdit* (&texts)[N]) {
  for (std::size_t i = 0; i < N; ++i) {
    const QString shown = QString(labels[i]).remove('&');
    texts[i] = MakeText(name + QString::number(i), toolTip.isEmpty() ? shown : toolTip.arg(shown), 6, frame);
    AddRow(GridOf(frame), row, labels[i], texts[i], 2 * static_cast<int>(i));
  }
}

}  // namespace

TuningPage::TuningPage(QWidget* parent) : QWidget(parent) {
  MakeOffsets();
  MakeWheel();
  MakeSpans();
  auto* rows = new QVBoxLayout(this);
  for (QGroupBox* frame : {fraModeOffset, fraGlobalOffset, fraCenterFrequencies, fraMouseWheel, fraSpanK4})
    rows->addWidget(frame);
  rows->addStretch(1);
}

void TuningPage::MakeOffsets() {
  fraModeOffset = MakeFrame("fraModeOffset", tr("Mode Offsets (kHz)"), this);
  MakeRow(fraModeOffset, 0, "txtOffset", tr("Offset in %1 (kHz)"), {"&CW", "&USB", "&LSB", "&AM/FM", "FS&K"},
          txtOffset);
  fraGlobalOffset = MakeFrame("fraGlobalOffset", tr("Global Offset (kHz)"), this);
  txtGlobalOffset = MakeText("txtGlobalOffset", tr("Global Offset (kHz)"), 6, fraGlobalOffset);
  AddRow(GridOf(fraGlobalOffset), 0, tr("&Global Offset"), txtGlobalOffset);
  GridOf(fraGlobalOffset)->setColumnStretch(2, 1);
  fraCenterFrequencies = MakeFrame("fraCenterFrequencies", tr("Frequencies (kHz)"), this);
  MakeRow(fraCenterFrequencies, 0, "txtCenter", "%1 (kHz)",
          {"Center &CW", "Center &USB", "Center &LSB", "Center &AM"}, txtCenter);
}

void TuningPage::MakeWheel() {
  fraMouseWheel = MakeFrame("fraMouseWheel", tr("MouseWheel (Hz)"), this);
  chkMouse = MakeCheck("chkMouse", tr("Ena&bled"), {}, fraMouseWheel);
  chkInverted = MakeCheck("chkInverted", tr("Re&verse"), tr("Reverse tuning wheel"), fraMouseWheel);
  const char* const labels[4] = {"CW", "SSB", "AM/FM", "Data"};
  const char* const toolTips[4] = {"CW Step (Hz)", "SSB Step (Hz)", "AM/FM Step (Hz)", "Data Step (Hz)"};
  GridOf(fraMouseWheel)->addWidget(chkMouse, 0, 0, 1, 2);
  GridOf(fraMouseWheel)->addWidget(chkInverted, 0, 2, 1, 2);
  for (int i = 0; i < 4; ++i) {
    txtStep[i] = MakeText(QString("txtStep%1").arg(i), tr(toolTips[i]), 6, fraMouseWheel);
    AddRow(GridOf(fraMouseWheel), 1, labels[i], txtStep[i], 2 * i);
  }
}

void TuningPage::MakeSpans() {
  fraSpanK4 = MakeFrame("fraSpanK4", tr("K4 Span preset/SMeter/Quick Split"), this);
  QGridLayout* grid = GridOf(fraSpanK4);
  MakeRow(fraSpanK4, 0, "txtSpan", tr("Span kHz (%1)"), {"CW/&DT", "SSB", "AM/FM"}, txtSpan);
  cboSM = MakeList("cboSM", {"Scope", "Minipan"}, tr("Source for s-meter"), fraSpanK4);
  txtCorr = MakeText("txtCorr", tr("Adjust(+dBm)"), 4, fraSpanK4);
  txtPKHold = MakeText("txtPKHold", tr("Pk.Hold (s)"), 4, fraSpanK4);
  AddRow(grid, 1, tr("S-&meter"), cboSM);
  AddRow(grid, 1, tr("Ad&just(+dBm)"), txtCorr, 2);
  AddRow(grid, 1, tr("&Pk.Hold (s)"), txtPKHold, 4);
  txtQSplit[0] = MakeText("txtQSplit0", tr("Qk.Split (kHz), SSB"), 4, fraSpanK4);
  txtQSplit[1] = MakeText("txtQSplit1", tr("Qk.Split (kHz), CW"), 4, fraSpanK4);
  AddRow(grid, 2, tr("&Qk.Split (kHz)"), txtQSplit[0]);
  grid->addWidget(txtQSplit[1], 2, 3);
}

}  // namespace spectrino::setup
