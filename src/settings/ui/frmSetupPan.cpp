#include "settings/ui/frmSetupPan.h"

#include <QHBoxLayout>
#include <QMessageBox>
#include <QScrollArea>
#include <QVBoxLayout>
#include <cmath>

#include "settings/Keys.h"
#include "settings/PanSettings.h"
#include "settings/SerialAlias.h"
#include "settings/SetupLimits.h"
#include "state/Val.h"

namespace spectrino {

using namespace setup;

namespace {
constexpr std::size_t kRadioSources = 3;  // "ICOM", "K4", "K4D" end the list
/// A page that scrolls where the screen is small.
QScrollArea* Scrolling(QWidget* page) {
  auto* area = new QScrollArea;
  area->setWidget(page);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  return area;
}

std::uint32_t StoredColour(const SetupSection& setup, std::size_t n) {
  return static_cast<std::uint32_t>(setup.Read(key::Colour(n))) & 0xFFFFFF;
}
}  // namespace

frmSetupPan::frmSetupPan(SetupWorld world, QWidget* parent)
    : QDialog(parent), world_(std::move(world)), setup_(world_.Store) {
  setObjectName("frmSetupPan");
  setWindowTitle(tr("Setup"));
  if (!world_.ShowMessage)
    world_.ShowMessage = [this](const QString& text) { QMessageBox::information(this, "Spectrino", text); };
  if (!world_.AskOkCancel) {
    world_.AskOkCancel = [this](const QString& text) {
      return QMessageBox::question(this, "Spectrino", text, QMessageBox::Ok | QMessageBox::Cancel) ==
             QMessageBox::Ok;
    };
  }
  Compose();
  ListFields();
  ConnectRules();
  ConnectColours();
  LoadControls();
  if (world_.Running) LockForRun();
}

void frmSetupPan::Compose() {
  source_ = new SourcePage;
  sound_ = new SoundPage;
  tuning_ = new TuningPage;
  display_ = new DisplayPage;
  pages_ = new QTabWidget(this);
  pages_->setObjectName("Pages");
  pages_->addTab(Scrolling(source_), tr("Source"));
  pages_->addTab(Scrolling(sound_), tr("Sound card"));
  pages_->addTab(Scrolling(tuning_), tr("Frequencies"));
  pages_->addTab(Scrolling(display_), tr("Display"));
  lblLocked_ = new QLabel(this);
  lblLocked_->setObjectName("lblLocked");
  lblLocked_->setWordWrap(true);
  lblLocked_->hide();

  auto* buttons = new QHBoxLayout;
  const auto add = [&](const char* name, const QString& caption, const QString& toolTip) {
    QPushButton* button = MakeButton(name, caption, toolTip, this);
    buttons->addWidget(button);
    return button;
  };
  connect(add("cmdHelp", tr("Help"), {}), &QPushButton::clicked, this, [this] { OpenChapter(""); });
  connect(add("cmdTRX", tr("Castelon web site"), {}), &QPushButton::clicked, this,
          [this] { OpenChapter("castelon"); });
  connect(add("cmdTelepost", tr("Telepost web site"), {}), &QPushButton::clicked, this,
          [this] { OpenChapter("telepost"); });
  buttons->addStretch(1);
  QPushButton* ok = add("cmdOK", tr("OK"), tr("Apply all changes and exit"));
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, [this] {
    SaveControls();
    accept();
  });
  connect(add("cmdCancel", tr("Cancel"), tr("Cancel changes")), &QPushButton::clicked, this,
          &QDialog::reject);

  auto* rows = new QVBoxLayout(this);
  rows->addWidget(lblLocked_);
  rows->addWidget(pages_, 1);
  rows->addLayout(buttons);
  resize(680, 500);
}

// The order is the order in which they are written.
void frmSetupPan::ListFields() {
  ListSourceFields();
  ListDisplayFields();
  ListLinkFields();
}

void frmSetupPan::Add(SetupField field) {
  fields_.push_back(std::move(field));
}
void frmSetupPan::AddNumber(QLineEdit* text, const NumberKey& key) {
  Add(TextField(text, key.Name, NumberText(key.Default)));
}
void frmSetupPan::AddInteger(QLineEdit* text, const IntKey& key) {
  Add(TextField(text, key.Name, std::to_string(key.Default)));
}
void frmSetupPan::AddText(QLineEdit* text, const TextKey& key) {
  Add(TextField(text, key.Name, std::string(key.Default)));
}

void frmSetupPan::ListSourceFields() {
  Add(FlagField(sound_->chkIQ, key::kIq));
  Add(ListField(sound_->cboBits, key::kBits));
  for (std::size_t n = 0; n < 5; ++n)
    Add(LimitedField(tuning_->txtOffset[n], key::kOffset[n].Name, "0", LimitOffsetKHz));
  for (std::size_t n = 0; n < 4; ++n) AddNumber(tuning_->txtCenter[n], key::kCenter[n]);
  for (std::size_t n = 0; n < 3; ++n) {
    const IntKey key = key::kAutoSpan[n];
    Add(LimitedField(tuning_->txtSpan[n], key.Name, std::to_string(key.Default), LimitAutoSpanKHz));
  }
  Add(FlagField(source_->chkMinipan, key::kMinipan));
  Add(ListField(tuning_->cboSM, key::kOptSM));
  Add({[](const SetupSection&) {},
       [this](SetupBatch& batch) { batch.Put(key::kCatControl, static_cast<int>(SetupCatControl_)); }});
  Add({[this](const SetupSection& setup) { display_->optDesign[setup.Read(key::kDesign)]->setChecked(true); },
       [this](SetupBatch& batch) { batch.Put(key::kDesign, display_->optDesign[1]->isChecked() ? 1 : 0); }});
  Add({[this](const SetupSection& setup) {
         for (std::size_t n = 0; n < kColourCount; ++n) SetupColors_[n] = StoredColour(setup, n);
       },
       [this](SetupBatch& batch) {
         for (std::size_t n = 0; n < kColourCount; ++n) {
           // A value wider than a colour reads as one; it stays as it was written unless another was chosen.
           const bool same = setup_.Has(key::Colour(n).Name) && StoredColour(setup_, n) == SetupColors_[n];
           if (!same) batch.Put(key::Colour(n), static_cast<std::int32_t>(SetupColors_[n]));
         }
       }});
}

void frmSetupPan::ListDisplayFields() {
  Add(FlagField(display_->chkSubD, key::kSubD));
  Add(FlagField(sound_->chkFlip6, key::kFlip6));
  Add(FlagField(sound_->chkModeFlip[0], key::kIqCw));
  Add(FlagField(sound_->chkModeFlip[1], key::kIqUsb));
  Add(FlagField(sound_->chkRemoveSpike, key::kSmoothZeroHz));
  Add(FlagField(sound_->chkZoom, key::kTypZoom));
  Add(FlagField(display_->chkPriority, key::kPriority));
  Add(FlagField(display_->chkAUTOREF, key::kAutoRef));
  Add(ListField(display_->cboSoft, key::kHistoryDepth));
  Add(FlagField(display_->chkQSY, key::kQsy));
  Add(FlagField(display_->chkFill, key::kFill));
  Add(ListField(sound_->cboSampleRate, key::kSRate));
  Add(ListField(sound_->cboAPO, key::kWindowType));
  AddNumber(tuning_->txtGlobalOffset, key::kGlobalOffset);
  Add({[this](const SetupSection& setup) {
         source_->optbits[setup.Read(key::k24Bits) ? 0 : 1]->setChecked(true);
       },
       [this](SetupBatch& batch) { batch.Put(key::k24Bits, source_->optbits[0]->isChecked()); }});
  Add(FlagField(display_->chkMHz, key::kMHz));
  Add(TextField(sound_->txtFlipFreq[0], key::kFlipFreq.Name, "44.0"));
  Add(TextField(sound_->txtFlipFreq[1], key::kFlipFreq2.Name, "54.0"));
}

void frmSetupPan::ListLinkFields() {
  Add(FlagField(tuning_->chkMouse, key::kMouse));
  Add(FlagField(tuning_->chkInverted, key::kWheelInverted));
  Add(ListField(source_->cboPort, key::kPort, 1));
  AddText(source_->txtICAddr, key::kIcAddress);
  AddText(source_->txtCTRLADDR, key::kControllerAddress);
  Add(ListField(source_->cboICOM, key::kIcomControl));
  AddText(source_->txtK4[0], key::kK4AddressOffered);
  AddInteger(source_->txtK4[1], key::kK4CatPort);
  AddInteger(source_->txtK4[2], key::kK4PanPort);
  AddInteger(tuning_->txtCorr, key::kSMeterCorr);
  AddNumber(tuning_->txtPKHold, key::kSMeterHold);
  Add({[this](const SetupSection& setup) {
         tuning_->txtQSplit[0]->setText(QString::fromStdString(setup.Read(TextKey{key::kQSplit0.Name, "1"})));
         tuning_->txtQSplit[1]->setText(QString::fromStdString(setup.Read(TextKey{key::kQSplit1.Name, "5"})));
       },
       [this](SetupBatch& batch) { PutQuickSplit(batch); }});
  Add({[](const SetupSection&) {},
       [this](SetupBatch& batch) {
         batch.Put(key::kIcom, Source() == SourceKind::Icom)
             .Put(key::kK4, Source() == SourceKind::K4)
             .Put(key::kK4D, Source() == SourceKind::K4D);
       }});
  for (std::size_t n = 0; n < 4; ++n) AddInteger(tuning_->txtStep[n], key::kStep[n]);
  Add(FlagField(display_->chkBandMode, key::kBandMode));
  AddText(source_->txtHostEndpoint, key::kHostEndpoint);
  Add(FlagField(source_->chkCatServer, key::kCatServer));
  AddInteger(source_->txtCatServerPort, key::kCatServerPort);
  Add(FlagField(display_->chkWFFollow, key::kWFFollow));
}

void frmSetupPan::LoadControls() {
  SetupLoading_ = true;
  for (const SetupField& field : fields_) field.Load(setup_);
  InitDevices();
  LoadDevice();
  SetupCatControl_ = static_cast<CatControl>(setup_.Read(key::kCatControl));
  const CatChoice choice = ChoiceOf(SetupCatControl_);
  source_->cboControl->setCurrentIndex(static_cast<int>(choice.Software));
  source_->cboSDR->setCurrentIndex(static_cast<int>(choice.Sdr));
  ListPorts();
  ComposeCat();
  ShowSourceLayout();
  sound_->ShowResolution();
  display_->ShowColours(SetupColors_);
  Enable();
  SetupLoading_ = false;
}

void frmSetupPan::InitDevices() {
  RememberDevice();
  inputs_ = world_.ListInputs ? world_.ListInputs() : std::vector<SetupDevice>{};
  SourceList* list = source_->DevicesBox;
  const QSignalBlocker silent(list);
  list->clear();
  for (const SetupDevice& input : inputs_) list->addItem(QString::fromStdString(input.Name));
  list->addItems({"ICOM", "K4", "K4D"});
  ShowDevice();
}

/// What is selected, by what will find it again in another list.
void frmSetupPan::RememberDevice() {
  const int index = source_->DevicesBox->currentIndex();
  if (index < 0) return;
  const auto input = static_cast<std::size_t>(index);
  if (input < inputs_.size()) {
    chosen_ = {.Kind = SourceKind::SoundCard, .Input = inputs_[input]};
  } else if (input < inputs_.size() + kRadioSources) {
    chosen_ = {.Kind = Source(), .Input = {}};
  }
}

void frmSetupPan::ShowDevice() {
  SourceList* list = source_->DevicesBox;
  const auto same = [this](const SetupDevice& input) {
    return chosen_.Input.StableId.empty() ? input.Name == chosen_.Input.Name
                                          : input.StableId == chosen_.Input.StableId;
  };
  const auto at = std::find_if(inputs_.begin(), inputs_.end(), same);
  const int radios = static_cast<int>(inputs_.size());
  while (list->count() > radios + static_cast<int>(kRadioSources)) list->removeItem(list->count() - 1);
  if (chosen_.Kind != SourceKind::SoundCard) {
    list->setCurrentIndex(radios + static_cast<int>(chosen_.Kind) - static_cast<int>(SourceKind::Icom));
  } else if (at != inputs_.end()) {
    list->setCurrentIndex(static_cast<int>(at - inputs_.begin()));
  } else {
    list->addItem(tr("%1 (missing)").arg(QString::fromStdString(chosen_.Input.Name)));
    list->setCurrentIndex(list->count() - 1);
  }
}

void frmSetupPan::LoadDevice() {
  PanSettings stored;
  spectrino::LoadSettings(setup_, static_cast<int>(inputs_.size()), stored);
  std::vector<SoundDevice> inputs;
  for (const SetupDevice& input : inputs_) inputs.push_back({.Name = input.Name, .StableId = input.StableId});
  if (stored.Icom || stored.K4 || stored.K4D) {
    chosen_.Kind = stored.Icom ? SourceKind::Icom : stored.K4 ? SourceKind::K4 : SourceKind::K4D;
  } else if (const auto found = FindChosenInput(stored, inputs)) {
    chosen_.Input = inputs_[*found];
  } else {
    chosen_.Input = {stored.NDevice, stored.DeviceId};
  }
  const QSignalBlocker silent(source_->DevicesBox);
  source_->DevicesBox->setCurrentIndex(-1);
  ShowDevice();
}

void frmSetupPan::LockForRun() {
  const QString why = tr("A run is on. Press Stop to change this.");
  for (QWidget* widget : std::initializer_list<QWidget*>{
           source_->DevicesBox, source_->optbits[0], source_->optbits[1], source_->cboControl,
           source_->cboSDR, source_->cboICOM, sound_->cboBits, sound_->cboSampleRate, sound_->chkZoom}) {
    widget->setEnabled(false);
    widget->setToolTip(why);
    widget->setAccessibleDescription(why);
  }
  lblLocked_->setText(
      tr("A run is on: source, CAT control, sample rate and FFT bins are locked until Stop. "
         "Addresses, apodization and Reverse I/Q act at the next Start."));
  lblLocked_->show();
}

void frmSetupPan::PutDevice(SetupBatch& batch) {
  // An input that is not there now stays the choice; its old index says nothing.
  const int index = source_->DevicesBox->currentIndex();
  if (index < 0) return;
  if (index < static_cast<int>(inputs_.size() + kRadioSources)) batch.Put(key::kDevice, index);
  if (chosen_.Kind != SourceKind::SoundCard) {
    batch.Put(key::kNDevice, source_->DevicesBox->currentText().toStdString()).Put(key::kDeviceId, "");
  } else if (!chosen_.Input.Name.empty() || !chosen_.Input.StableId.empty()) {
    batch.Put(key::kNDevice, chosen_.Input.Name).Put(key::kDeviceId, chosen_.Input.StableId);
  }
}

void frmSetupPan::PutQuickSplit(SetupBatch& batch) {
  const std::string typed[2] = {tuning_->txtQSplit[0]->text().toStdString(),
                                tuning_->txtQSplit[1]->text().toStdString()};
  const auto limited = LimitQSplitKHz(Val(typed[0]), Val(typed[1]));
  const NumberKey keys[2] = {key::kQSplit0, key::kQSplit1};
  for (std::size_t n = 0; n < 2; ++n)
    batch.Put(TextKey{keys[n].Name, ""}, limited[n] == Val(typed[n]) ? typed[n] : NumberText(limited[n]));
}

void frmSetupPan::SaveControls() {
  RememberDevice();
  SetupBatch batch(setup_);
  PutDevice(batch);
  for (const SetupField& field : fields_) field.Put(batch);
  batch.Save();
  for (const auto& [port, path] : portPicks_) SaveSerialAlias(world_.Store, port, path);
}

void frmSetupPan::ListPorts() {
  const QSignalBlocker silent(source_->cboPortDevice);
  source_->cboPortDevice->clear();
  ports_ = world_.Ports != nullptr ? world_.Ports->List() : std::vector<SerialPortEntry>{};
  for (const SerialPortEntry& port : ports_)
    source_->cboPortDevice->addItem(QString::fromStdString(port.Label));
  ShowPortDevice();
}

// The device of the chosen number: what was picked for it here, else what is stored. One that is none of the
// listed ports is shown by its path.
void frmSetupPan::ShowPortDevice() {
  const int port = source_->cboPort->currentIndex() + 1;
  const auto picked = portPicks_.find(port);
  const std::string path = picked != portPicks_.end() ? picked->second : SerialPath(world_.Store, port);
  SourceList* list = source_->cboPortDevice;
  const QSignalBlocker silent(list);
  while (list->count() > static_cast<int>(ports_.size())) list->removeItem(list->count() - 1);
  for (std::size_t i = 0; i < ports_.size(); ++i) {
    if (world_.Ports->SameDevice(ports_[i].Path, path)) {
      list->setCurrentIndex(static_cast<int>(i));
      return;
    }
  }
  const QString shown = QString::fromStdString(path);
  const bool there = world_.Ports != nullptr && world_.Ports->Exists(path);
  list->addItem(there ? shown : tr("%1 (not plugged in)").arg(shown));
  list->setCurrentIndex(list->count() - 1);
}

void frmSetupPan::PickPortDevice(int index) {
  if (index < 0 || index >= static_cast<int>(ports_.size())) return;
  portPicks_[source_->cboPort->currentIndex() + 1] = ports_[static_cast<std::size_t>(index)].Path;
}

void frmSetupPan::done(int result) {
  emit BridgeWanted(SetupCatControl_ == CatControl::BridgeIf ||
                    SetupCatControl_ == CatControl::BridgeFixedLo);
  QDialog::done(result);
}

}  // namespace spectrino
