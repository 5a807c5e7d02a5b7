#include "settings/ui/DisplayPage.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

#include "settings/Keys.h"

namespace spectrino::setup {
namespace {
constexpr int kMostSamples = 10;
}  // namespace

DisplayPage::DisplayPage(QWidget* parent) : QWidget(parent) {
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(MakeSpectrum());
  rows->addWidget(MakeDesign());
  rows->addStretch(1);
}

QGroupBox* DisplayPage::MakeSpectrum() {
  QGroupBox* fraSpectrum = MakeFrame("fraSpectrum", tr("Spectrum"), this);
  QStringList counts;
  for (int n = 0; n <= kMostSamples; ++n) counts.append(QString::number(n));
  cboSoft_ = MakeList("cboSoft", counts, tr("Number of samples for AVG/MAX integration"), fraSpectrum);
  QCheckBox* chkQSY = MakeCheck("chkQSY", tr("QS&Y Detect."),
                                tr("Restart averaging after a change of frequency"), fraSpectrum);
  chkAUTOREF_ =
      MakeCheck("chkAUTOREF", tr("Auto &REF Level"), tr("Memorizes and set REF level by band"), fraSpectrum);
  chkPriority = MakeCheck("chkPriority", tr("&Priority: Real Time"),
                          tr("Windows Real Time Priority (not recommended)"), fraSpectrum);
  QCheckBox* chkWFFollow =
      MakeCheck("chkWFFollow", tr("&Waterfall follows the frequency"),
                tr("Older waterfall lines move to where their frequencies are after tuning"), fraSpectrum);
  QCheckBox* chkWFLive =
      MakeCheck("chkWFLive", tr("Waterfall of the newest le&vels"),
                tr("MAX, AVG and PEAK act on the trace only, not on the waterfall"), fraSpectrum);
  QComboBox* cboBandPlan = MakeList(
      "cboBandPlan", {tr("none"), tr("IARU Region 1"), tr("IARU Region 2"), tr("IARU Region 3")},
      tr("Band plan shown on the frequency axis; a bandplan.json beside the settings wins"), fraSpectrum);
  QComboBox* cboInset = MakeList("cboInset",
                                 {tr("by the room there is"), tr("over the plot"), tr("beside the plot"),
                                  tr("above the plot"), tr("over the waterfall")},
                                 tr("Where a K4's status and mini-pans stand"), fraSpectrum);
  QGridLayout* grid = GridOf(fraSpectrum);
  AddRow(grid, 0, tr("MAX/AVG Samp&les"), cboSoft_);
  grid->addWidget(chkQSY, 0, 2);
  grid->addWidget(chkAUTOREF_, 0, 3);
  grid->addWidget(chkPriority, 1, 2);
  grid->addWidget(chkWFFollow, 1, 3);
  grid->addWidget(chkWFLive, 2, 3);
  QComboBox* cboPalette = MakeList(
      "cboPalette", {tr("Hues"), tr("Inferno (most legible)"), tr("Cividis (colour-blind eyes)"), tr("Grey")},
      tr("Colours of the waterfall"), fraSpectrum);
  AddRow(grid, 1, tr("Waterfall &colours"), cboPalette);
  AddRow(grid, 2, tr("Band plan re&gion"), cboBandPlan);
  AddRow(grid, 3, tr("Status and m&ini-pans"), cboInset);
  grid->setColumnStretch(3, 1);
  free_.push_back(ListField(cboPalette, key::kWFPalette));
  free_.push_back(FlagField(chkQSY, key::kQsy));
  free_.push_back(FlagField(chkWFFollow, key::kWFFollow));
  free_.push_back(FlagField(chkWFLive, key::kWFLive));
  free_.push_back(ListField(cboBandPlan, key::kBandPlanRegion));
  free_.push_back(ListField(cboInset, key::kInsetPlace));
  return fraSpectrum;
}

QGroupBox* DisplayPage::MakeDesign() {
  QGroupBox* fraColor = MakeFrame("fraColor", tr("Color/Design"), this);
  optDesign_[0] = MakeOption("optDesign0", tr("Design &1"), {}, fraColor);
  optDesign_[1] = MakeOption("optDesign1", tr("Design &2"), {}, fraColor);
  chkFill_ = MakeCheck("chkFill", tr("&Fill"), {}, fraColor);
  chkSubD_ = MakeCheck("chkSubD", tr("su&b-division (line)"), {}, fraColor);
  QCheckBox* chkMHz = MakeCheck("chkMHz", tr("Disp &MHz"), {}, fraColor);
  chkBandMode_ = MakeCheck("chkBandMode", tr("Band/Mode SW (&Always)"),
                           tr("Band/Mode buttons always displayed"), fraColor);
  colours_ = new ColourEditor(fraColor, chkFill_, chkSubD_);
  QGridLayout* grid = GridOf(fraColor);
  grid->addWidget(optDesign_[0], 2, 0);
  grid->addWidget(optDesign_[1], 2, 1);
  grid->addWidget(chkFill_, 3, 0);
  grid->addWidget(chkSubD_, 3, 1);
  grid->addWidget(chkMHz, 4, 0);
  free_.push_back(FlagField(chkMHz, key::kMHz));
  grid->addWidget(chkBandMode_, 4, 1);
  grid->setColumnStretch(1, 1);
  // The colours stand above what was made before them.
  QWidget* last = colours_->LastButton();
  for (QWidget* next : std::initializer_list<QWidget*>{optDesign_[0], optDesign_[1], chkFill_, chkSubD_,
                                                       chkMHz, chkBandMode_}) {
    setTabOrder(last, next);
    last = next;
  }
  return fraColor;
}

void DisplayPage::AddFields(SetupFields& fields) {
  fields.push_back(
      {std::string(key::kDesign.Name.Text()),
       [this](const SetupSection& setup) { optDesign_[setup.Read(key::kDesign)]->setChecked(true); },
       [this](SetupBatch& batch) { batch.Put(key::kDesign, optDesign_[1]->isChecked() ? 1 : 0); }});
  fields.push_back(colours_->Field());
  fields.push_back(FlagField(chkSubD_, key::kSubD));
  fields.push_back(FlagField(chkPriority, key::kPriority));
  fields.push_back(FlagField(chkAUTOREF_, key::kAutoRef));
  fields.push_back(ListField(cboSoft_, key::kHistoryDepth));
  fields.push_back(FlagField(chkFill_, key::kFill));
  fields.push_back(FlagField(chkBandMode_, key::kBandMode));
  fields.insert(fields.end(), free_.begin(), free_.end());
}

void DisplayPage::Show(const SetupView& view) {
  chkAUTOREF_->setVisible(view.AutoRef);
  chkPriority->setVisible(view.SoundCard);
  chkBandMode_->setEnabled(view.SoundCard);
  if (!view.SoundCard) {
    const QSignalBlocker silent(chkPriority);
    chkPriority->setChecked(false);
    chkBandMode_->setChecked(true);
  }
  if (view.HistoryDepth) cboSoft_->setCurrentIndex(*view.HistoryDepth);
}

}  // namespace spectrino::setup
