#include "app/Deck.h"

#include <QVBoxLayout>
#include <utility>

#include "macros/ui/frmRemFunction.h"

namespace spectrino {

namespace {
constexpr int kHandleHeight = 10;
}

Deck::Deck(const Parts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      bandModes_({.Backend = [this] { return parts_.Cycle.Backend(); },
                  .Radio = parts.State.Radio,
                  .Settings = parts.State.Settings,
                  .Store = parts.Store}),
      macros_({.Store = parts.Store, .Settings = parts.State.Settings, .Backend = [this] {
                 return parts_.Cycle.Backend();
               }}) {
  setObjectName("Deck");
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  cmdFoldDeck_ = new QToolButton(this);
  cmdFoldDeck_->setObjectName("cmdFoldDeck");
  cmdFoldDeck_->setToolTip(tr("Fold bands, modes and macros away"));
  cmdFoldDeck_->setAccessibleName(cmdFoldDeck_->toolTip());
  cmdFoldDeck_->setFixedHeight(kHandleHeight);
  cmdFoldDeck_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  bandPanel_ = new BandModePanel(this);
  macroPanel_ = new MacroPanel(bandPanel_);
  bandPanel_->AddToModeRow(macroPanel_, kMacroCount);
  calibration_ = new CalibrationPanel(this);
  k4Panel_ = new K4Panel(this);
  icomPanel_ = new IcomPanel(this);
  for (QWidget* row :
       std::initializer_list<QWidget*>{cmdFoldDeck_, bandPanel_, calibration_, k4Panel_, icomPanel_})
    rows->addWidget(row);
  for (QWidget* row : std::initializer_list<QWidget*>{calibration_, k4Panel_, icomPanel_}) row->hide();
  Connect();
}

void Deck::Connect() {
  connect(cmdFoldDeck_, &QToolButton::clicked, this, [this] { FoldRows(!folded_); });
  connect(bandPanel_, &BandModePanel::cmdBand_Click, this, [this](int index) {
    emit Retuning();
    bandModes_.cmdBand_Click(index);
  });
  connect(bandPanel_, &BandModePanel::cmdMode_Click, this,
          [this](int index) { bandModes_.cmdMode_Click(index); });
  connect(macroPanel_, &MacroPanel::cmdMacro_Click, this, [this](int n) {
    emit Retuning();
    macros_.cmdMacro_Click(n);
  });
  connect(macroPanel_, &MacroPanel::chkMacro_Click, this,
          [this](int n, bool checked) { macros_.chkMacro_Click(n, checked); });
  connect(macroPanel_, &MacroPanel::EditMacro, this,
          [this](int n) { ShowMacroEditor(macros_, n, *macroPanel_, window(), parts_.Window); });
}

void Deck::ShowSource() {
  const PanSettings& settings = parts_.State.Settings;
  const bool k4 = settings.K4 || settings.K4D;
  k4Panel_->setVisible(k4);
  icomPanel_->setVisible(settings.Icom);
  layout_ = bandModes_.Layout();
  bandPanel_->Show(layout_);
  macroPanel_->SetupMacroButtons(macros_.LoadAll());
  cmdFoldDeck_->setVisible(!settings.BandMode);
  // Where no radio answers them the rows only take room, until they are asked for.
  const bool radioSource = k4 || settings.Icom;
  if (settings.BandMode || std::exchange(radioSource_, radioSource) != radioSource)
    FoldRows(!settings.BandMode && !radioSource);
}

void Deck::FoldRows(bool folded) {
  folded_ = folded;
  bandPanel_->setVisible(!folded);
  cmdFoldDeck_->setArrowType(folded ? Qt::UpArrow : Qt::DownArrow);
}

void Deck::ShowCalibration(bool show) {
  calibration_->setVisible(show);
}

void Deck::ShowCurrent(int radioMode) {
  if (bandPanel_->isHidden()) return;
  const PanSettings& settings = parts_.State.Settings;
  bandPanel_->ShowCurrent(BandButtonOf(layout_.Bands, parts_.State.Radio.MainFreqMHz),
                          ModeButtonOf(layout_.Modes, radioMode), settings.CwReverse, settings.FskReverse);
}

}  // namespace spectrino
