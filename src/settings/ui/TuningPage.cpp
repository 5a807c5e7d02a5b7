#include "settings/ui/TuningPage.h"

#include <QVBoxLayout>

#include "settings/Keys.h"
#include "settings/SetupLimits.h"
#include "state/Val.h"

namespace spectrino::setup {
namespace {

/// A row of text boxes, each behind its label.
template <std::size_t N>
void MakeRow(QGroupBox* frame, int row, const QString& name, const QString& toolTip,
             const char* const (&labels)[N], QLineEdit* (&texts)[N], const QString& what = {}) {
  for (std::size_t i = 0; i < N; ++i) {
    const QString shown = QString(labels[i]).remove('&');
    texts[i] = MakeText(name + QString::number(i), toolTip.isEmpty() ? shown : toolTip.arg(shown), 6, frame);
    const QString label = i == 0 && !what.isEmpty() ? what + ' ' + labels[i] : QString(labels[i]);
    AddRow(GridOf(frame), row, label, texts[i], 2 * static_cast<int>(i));
  }
}

}  // namespace

TuningPage::TuningPage(QWidget* parent) : QWidget(parent) {
  MakeOffsets();
  MakeWheel();
  MakeSpans();
  auto* rows = new QVBoxLayout(this);
  for (QGroupBox* frame :
       {fraModeOffset_, fraGlobalOffset_, fraCenterFrequencies_, fraMouseWheel_, fraSpanK4_})
    rows->addWidget(frame);
  rows->addStretch(1);
  connect(chkMouse, &QAbstractButton::toggled, this, &TuningPage::Enable);
  connect(cboSM_, &QComboBox::currentIndexChanged, this, &TuningPage::Enable);
  Enable();
}

void TuningPage::MakeOffsets() {
  fraModeOffset_ = MakeFrame("fraModeOffset", tr("Mode Offsets (kHz)"), this);
  MakeRow(fraModeOffset_, 0, "txtOffset", tr("Offset in %1 (kHz)"), {"&CW", "&USB", "&LSB", "&AM/FM", "&FSK"},
          txtOffset_);
  fraGlobalOffset_ = MakeFrame("fraGlobalOffset", tr("Global Offset (kHz)"), this);
  txtGlobalOffset_ = MakeText("txtGlobalOffset", tr("Global Offset (kHz)"), 6, fraGlobalOffset_);
  AddRow(GridOf(fraGlobalOffset_), 0, tr("&Global Offset"), txtGlobalOffset_);
  GridOf(fraGlobalOffset_)->setColumnStretch(2, 1);
  fraCenterFrequencies_ = MakeFrame("fraCenterFrequencies", tr("Frequencies (kHz)"), this);
  MakeRow(fraCenterFrequencies_, 0, "txtCenter", "%1 (kHz)",
          {"Center &CW", "Center &USB", "Center &LSB", "Center &AM"}, txtCenter_);
}

void TuningPage::MakeWheel() {
  fraMouseWheel_ = MakeFrame("fraMouseWheel", tr("MouseWheel (Hz)"), this);
  chkMouse = MakeCheck("chkMouse", tr("Ena&bled"), {}, fraMouseWheel_);
  chkInverted_ = MakeCheck("chkInverted", tr("Re&verse"), tr("Reverse tuning wheel"), fraMouseWheel_);
  const char* const labels[4] = {"CW", "SSB", "AM/FM", "Data"};
  const char* const toolTips[4] = {"CW Step (Hz)", "SSB Step (Hz)", "AM/FM Step (Hz)", "Data Step (Hz)"};
  GridOf(fraMouseWheel_)->addWidget(chkMouse, 0, 0, 1, 2);
  GridOf(fraMouseWheel_)->addWidget(chkInverted_, 0, 2, 1, 2);
  for (int i = 0; i < 4; ++i) {
    txtStep_[i] = MakeText(QString("txtStep%1").arg(i), tr(toolTips[i]), 6, fraMouseWheel_);
    AddRow(GridOf(fraMouseWheel_), 1, labels[i], txtStep_[i], 2 * i);
  }
}

void TuningPage::MakeSpans() {
  fraSpanK4_ = MakeFrame("fraSpanK4", tr("K4 Span preset/SMeter/Quick Split"), this);
  QGridLayout* grid = GridOf(fraSpanK4_);
  MakeRow(fraSpanK4_, 0, "txtSpan", tr("Span kHz (%1)"), {"C&W/DT", "SSB", "AM/FM"}, txtSpan_,
          tr("Span kHz"));
  cboSM_ = MakeList("cboSM", {"Scope", "Minipan"}, tr("Source for s-meter"), fraSpanK4_);
  txtCorr_ = MakeText("txtCorr", tr("Adjust(+dBm)"), 4, fraSpanK4_);
  txtPKHold_ = MakeText("txtPKHold", tr("Pk.Hold (s)"), 4, fraSpanK4_);
  AddRow(grid, 1, tr("S-&meter"), cboSM_);
  AddRow(grid, 1, tr("Ad&just(+dBm)"), txtCorr_, 2);
  AddRow(grid, 1, tr("&Pk.Hold (s)"), txtPKHold_, 4);
  txtQSplit_[0] = MakeText("txtQSplit0", tr("Qk.Split (kHz), CW/AM/Data"), 4, fraSpanK4_);
  txtQSplit_[1] = MakeText("txtQSplit1", tr("Qk.Split (kHz), SSB"), 4, fraSpanK4_);
  AddRow(grid, 2, tr("Qk.Spl&it (kHz) CW/AM/DT"), txtQSplit_[0]);
  AddRow(grid, 2, tr("SSB"), txtQSplit_[1], 2);
}

void TuningPage::AddFields(SetupFields& fields) {
  fields.push_back(RowField(txtOffset_, key::kOffset, LimitOffsetKHz));
  fields.push_back(RowField(txtCenter_, key::kCenter));
  fields.push_back(RowField(txtSpan_, key::kAutoSpan, LimitAutoSpanKHz));
  fields.push_back(ListField(cboSM_, key::kOptSM));
  fields.push_back(TextField(txtGlobalOffset_, key::kGlobalOffset));
  fields.push_back(FlagField(chkMouse, key::kMouse));
  fields.push_back(FlagField(chkInverted_, key::kWheelInverted));
  fields.push_back(TextField(txtCorr_, key::kSMeterCorr));
  fields.push_back(TextField(txtPKHold_, key::kSMeterHold));
  fields.push_back(QuickSplitField());
  fields.push_back(RowField(txtStep_, key::kStep));
}

// The two limit each other.
SetupField TuningPage::QuickSplitField() {
  constexpr NumberKey keys[2] = {key::kQSplit0, key::kQSplit1};
  const auto load = [=, this](const SetupSection& setup) {
    for (std::size_t n = 0; n < 2; ++n) TextField(txtQSplit_[n], keys[n]).Load(setup);
  };
  const auto put = [=, this](SetupBatch& batch) {
    const std::string typed[2] = {txtQSplit_[0]->text().toStdString(), txtQSplit_[1]->text().toStdString()};
    const auto limited = LimitQSplitKHz(Val(typed[0]), Val(typed[1]));
    for (std::size_t n = 0; n < 2; ++n)
      batch.Put(TextKey{keys[n].Name, ""}, limited[n] == Val(typed[n]) ? typed[n] : NumberText(limited[n]));
  };
  return {std::string(keys[0].Name.Text()), load, put};
}

void TuningPage::Show(const SetupView& view) {
  fraModeOffset_->setVisible(view.Offsets == OffsetFrame::ModeOffset);
  fraCenterFrequencies_->setVisible(view.Offsets == OffsetFrame::CenterFrequencies);
  fraGlobalOffset_->setVisible(view.Offsets == OffsetFrame::GlobalOffset);
  fraSpanK4_->setVisible(view.K4);
}

void TuningPage::Enable() {
  for (QLineEdit* text : txtStep_) text->setEnabled(chkMouse->isChecked());
  chkInverted_->setEnabled(chkMouse->isChecked());
  txtCorr_->setEnabled(cboSM_->currentIndex() == 1);  // what the scope shows needs no correction
}

}  // namespace spectrino::setup
