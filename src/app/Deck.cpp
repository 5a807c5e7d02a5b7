#include "app/Deck.h"

#include <QVBoxLayout>
#include <utility>

#include "macros/ui/frmRemFunction.h"

namespace spectrino {

namespace {
constexpr int kHandleHeight = 10;
constexpr int kMacroStretch = BandModePanel::kButtonStretch * 5 / 4;
}  // namespace

Deck::Deck(const Parts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      bandModes_({.Backend = [this] { return parts_.Links.Backend(); },
                  .Traits = [this] { return ChosenWay().Traits; },
                  .Radio = parts.State.Radio,
                  .Settings = parts.State.Settings,
                  .Store = parts.Store}),
      macros_({.Store = parts.Store,
               // Whatever is heard of it: a macro may be what switches it on.
               .Backend = [this] { return parts_.Cycle.Backend(); },
               .Traits =
                   [this] {
                     const Route way = ChosenWay();
                     return way.Source != nullptr ? way.Source->Traits() : RadioTraits{};
                   }}) {
  Compose();
  Connect();
  ConnectCalibration();
}

Deck::~Deck() {
  for (RadioKit* kit : parts_.Router.Kits()) {
    if (QWidget* panel = kit->Panel()) panel->setParent(nullptr);
  }
}

// By the settings, so that the texts are right before Start.
Route Deck::ChosenWay() const {
  const PanSettings& settings = parts_.State.Settings;
  return parts_.Router.RouteOf(settings.Source.Id, settings.Control);
}

void Deck::Compose() {
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
  // Names of modes are short, and what users write is not.
  bandPanel_->AddToModeRow(macroPanel_, kMacroCount * kMacroStretch);
  calibration_ = new CalibrationPanel(this);
  calibration_->hide();
  for (QWidget* row : std::initializer_list<QWidget*>{cmdFoldDeck_, bandPanel_, calibration_})
    rows->addWidget(row);
  for (RadioKit* kit : parts_.Router.Kits()) {
    if (QWidget* panel = kit->Panel()) rows->addWidget(panel);
  }
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
  connect(macroPanel_, &MacroPanel::chkMacro_Click, this, [this](int n, bool checked) {
    emit Retuning();
    macros_.chkMacro_Click(n, checked);
  });
  connect(macroPanel_, &MacroPanel::EditMacro, this,
          [this](int n) { ShowMacroEditor(macros_, n, *macroPanel_, window(), parts_.Window); });
}

void Deck::ConnectCalibration() {
  PanSettings& settings = parts_.State.Settings;
  connect(calibration_, &CalibrationPanel::sldAmplitude_Change, this,
          [&settings](int value) { settings.DeAmp = value; });
  connect(calibration_, &CalibrationPanel::sldPhase_Change, this,
          [&settings](int value) { settings.DePhase = value; });
  connect(calibration_, &CalibrationPanel::slddbm_Change, this,
          [&settings](int value) { settings.BandLevelDb = value; });
}

void Deck::LoadCalibration() {
  const PanSettings& settings = parts_.State.Settings;
  calibration_->Show(settings.DeAmp, settings.DePhase, settings.BandLevelDb);
}

void Deck::ShowSource() {
  const PanSettings& settings = parts_.State.Settings;
  const RadioKit* source = ChosenWay().Source;
  for (RadioKit* kit : parts_.Router.Kits()) {
    if (QWidget* panel = kit->Panel()) panel->setVisible(kit == source);
  }
  layout_ = bandModes_.Layout();
  bandPanel_->Show(layout_);
  macroPanel_->SetupMacroButtons(macros_.LoadAll());
  cmdFoldDeck_->setVisible(!settings.BandMode);
  // Where no radio answers them the rows only take room, until they are asked for.
  const bool radioSource = source != nullptr;
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
  bandPanel_->ShowCurrent(BandButtonOf(layout_.Bands, parts_.State.Radio.MainFreqMHz),
                          ModeButtonOf(layout_.Modes, radioMode), IsReverse(radioMode));
}

}  // namespace spectrino
