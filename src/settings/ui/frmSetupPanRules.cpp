// The rules between the setup dialog's controls. Silent while the dialog fills itself.
#include <QColorDialog>
#include <QSignalBlocker>

#include "settings/ui/frmSetupPan.h"

namespace spectrino {

using namespace setup;

namespace {
// What cboSoft becomes when the kind of source changes: a radio's lines come slower or already averaged.
constexpr int kSoftSoundCard = 2;
constexpr int kSoftIcom = 3;
constexpr int kSoftK4 = 5;
}  // namespace

void frmSetupPan::ConnectRules() {
  connect(source_->DevicesBox, &SourceList::AboutToShow, this, &frmSetupPan::InitDevices);
  connect(source_->DevicesBox, &QComboBox::currentIndexChanged, this, &frmSetupPan::DevicesBox_Click);
  const auto compose = [this] {
    if (!SetupLoading_) ComposeCat();
  };
  connect(source_->cboControl, &QComboBox::currentIndexChanged, this, compose);
  connect(source_->cboSDR, &QComboBox::currentIndexChanged, this, compose);
  connect(source_->cboICOM, &QComboBox::currentIndexChanged, this, [this] {
    if (SetupLoading_) return;
    if (Source() == SourceKind::Icom) ShowSourceLayout();
    ComposeCat();
  });
  connect(source_->cboPort, &QComboBox::currentIndexChanged, this, &frmSetupPan::ShowPortDevice);
  connect(source_->cboPortDevice, &QComboBox::currentIndexChanged, this, &frmSetupPan::PickPortDevice);
  connect(source_->cboPortDevice, &SourceList::AboutToShow, this, &frmSetupPan::ListPorts);
  for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{
           sound_->chkFlip6, display_->chkFill, display_->chkSubD, tuning_->chkMouse}) {
    connect(button, &QAbstractButton::toggled, this, &frmSetupPan::Enable);
  }
  connect(tuning_->cboSM, &QComboBox::currentIndexChanged, this, &frmSetupPan::Enable);
  connect(tuning_->chkMouse, &QAbstractButton::toggled, this, [this] {
    if (!SetupLoading_ && world_.ShowMessage) world_.ShowMessage("Please restart Spectrino");
  });
  connect(display_->chkPriority, &QAbstractButton::toggled, this, &frmSetupPan::chkPriority_Click);
}

SourceKind frmSetupPan::Source() const {
  switch (source_->DevicesBox->currentIndex() - static_cast<int>(inputs_.size())) {
    case 0:
      return SourceKind::Icom;
    case 1:
      return SourceKind::K4;
    case 2:
      return SourceKind::K4D;
    default:
      return SourceKind::SoundCard;
  }
}

IcomData frmSetupPan::WaveformData() const {
  return source_->cboICOM->currentIndex() == 1 ? IcomData::ViaHost : IcomData::SerialPort;
}

void frmSetupPan::DevicesBox_Click() {
  if (SetupLoading_) return;
  sourceChanged_ = true;
  ComposeCat();
  ShowSourceLayout();
}

void frmSetupPan::ShowSourceLayout() {
  switch (Source()) {
    case SourceKind::SoundCard:
      ShowSoundCardLayout();
      break;
    case SourceKind::K4:
    case SourceKind::K4D:
      ShowK4Layout(Source() == SourceKind::K4D);
      break;
    case SourceKind::Icom:
      ShowIcomLayout();
      break;
  }
  const bool soundCard = Source() == SourceKind::SoundCard;
  for (QWidget* widget :
       std::initializer_list<QWidget*>{sound_->fraBits, sound_->fraApo, sound_->FraRate, sound_->fraIQ,
                                       source_->cboSDR, source_->lblSDR, display_->chkPriority}) {
    widget->setVisible(soundCard);
  }
  display_->chkBandMode->setEnabled(soundCard);
  if (!soundCard) {
    const QSignalBlocker silent(display_->chkPriority);
    display_->chkPriority->setChecked(false);
    display_->chkBandMode->setChecked(true);
  }
  HideEmptyPages();
}

void frmSetupPan::ShowSoundCardLayout() {
  for (QWidget* widget :
       std::initializer_list<QWidget*>{source_->fraK4, tuning_->fraSpanK4, source_->fraICOM, source_->fraCIV,
                                       source_->fraTRXM, source_->fraMiscK4, display_->chkAUTOREF}) {
    widget->hide();
  }
  source_->cboControl->setEnabled(!world_.Running);
  if (!SetupLoading_) display_->cboSoft->setCurrentIndex(kSoftSoundCard);
  ComposeCat();
}

void frmSetupPan::ShowK4Layout(bool isK4D) {
  for (QWidget* widget : {source_->fraK4, tuning_->fraSpanK4, source_->fraTRXM, source_->fraMiscK4})
    widget->show();
  source_->lblTRX->setText("Fill in IP Address, CAT Port (9200 default), PAN Port (9201 default)");
  for (QWidget* widget :
       std::initializer_list<QWidget*>{source_->fraICOM, source_->fraCIV, display_->chkAUTOREF}) {
    widget->hide();
  }
  ShowOffsetFrame(OffsetFrame::None);
  source_->cboControl->setEnabled(!world_.Running);
  if (!SetupLoading_) display_->cboSoft->setCurrentIndex(kSoftK4);
  source_->chkMinipan->setEnabled(isK4D);
  if (!isK4D) source_->chkMinipan->setChecked(false);
}

void frmSetupPan::ShowIcomLayout() {
  source_->fraICOM->show();
  display_->chkAUTOREF->show();
  for (QWidget* widget : {source_->fraK4, tuning_->fraSpanK4, source_->fraMiscK4}) widget->hide();
  const bool serial = WaveformData() == IcomData::SerialPort;
  for (QWidget* widget :
       std::initializer_list<QWidget*>{source_->cboPort, source_->lblPort, source_->cboPortDevice,
                                       source_->lblPortDevice, source_->fraCIV}) {
    widget->setVisible(serial);
  }
  source_->fraTRXM->setVisible(!serial);
  source_->lblTRX->setText(
      "Configure your ICOM and Castelon for a CAT rate of 115200bds. Launch Castelon first.");
  {
    const QSignalBlocker silent(source_->cboControl);
    source_->cboControl->setCurrentIndex(
        static_cast<int>(serial ? CatSoftware::Icom : CatSoftware::Castelon));
  }
  source_->cboControl->setEnabled(serial && !world_.Running);
  if (!SetupLoading_) display_->cboSoft->setCurrentIndex(kSoftIcom);
  ComposeCat();
  ShowOffsetFrame(OffsetFrame::None);
}

void frmSetupPan::ComposeCat() {
  const CatChoice choice{static_cast<CatSoftware>(source_->cboControl->currentIndex()),
                         static_cast<SdrKind>(source_->cboSDR->currentIndex())};
  SetupCatControl_ = ComposeCatControl(choice, Source(), WaveformData());
  const CatCorrection correction = CheckCompatible(SetupCatControl_, Source(), WaveformData());
  if (!SetupLoading_ && correction.Message != nullptr) {
    SetupCatControl_ = correction.Control;
    const QSignalBlocker silent(source_->cboControl);
    source_->cboControl->setCurrentIndex(static_cast<int>(correction.Software));
    if (world_.ShowMessage) world_.ShowMessage(correction.Message);
  }
  ShowOffsetFrame(OffsetFrameFor(SetupCatControl_, Source()));
  HideEmptyPages();
}

void frmSetupPan::ShowOffsetFrame(OffsetFrame frame) {
  tuning_->fraModeOffset->setVisible(frame == OffsetFrame::ModeOffset);
  tuning_->fraCenterFrequencies->setVisible(frame == OffsetFrame::CenterFrequencies);
  tuning_->fraGlobalOffset->setVisible(frame == OffsetFrame::GlobalOffset);
}

void frmSetupPan::HideEmptyPages() {
  pages_->setTabVisible(1, Source() == SourceKind::SoundCard);
}

void frmSetupPan::Enable() {
  for (QLineEdit* text : sound_->txtFlipFreq) text->setEnabled(sound_->chkFlip6->isChecked());
  display_->cmdColor[static_cast<std::size_t>(ColourIndex::Fill)]->setEnabled(display_->chkFill->isChecked());
  display_->cmdColor[static_cast<std::size_t>(ColourIndex::SubDivision)]->setEnabled(
      display_->chkSubD->isChecked());
  for (QLineEdit* text : tuning_->txtStep) text->setEnabled(tuning_->chkMouse->isChecked());
  tuning_->chkInverted->setEnabled(tuning_->chkMouse->isChecked());
  tuning_->txtCorr->setEnabled(tuning_->cboSM->currentIndex() == 1);
  display_->ShowColours(SetupColors_);
}

void frmSetupPan::chkPriority_Click() {
  if (SetupLoading_ || !display_->chkPriority->isChecked() || !world_.AskOkCancel) return;
  const QString text = Source() == SourceKind::Icom
                           ? "If this option is checked, Spectrino is running in background\n"
                             "whatever the status of Castelon. This may slow down Castelon"
                           : "If this option is checked, Spectrino takes the\n"
                             "priority over all other applications during the capture.\n"
                             "Other applications or the system may hang up.";
  if (!world_.AskOkCancel(text)) display_->chkPriority->setChecked(false);
}

void frmSetupPan::ConnectColours() {
  for (std::size_t n = 0; n < kColourCount; ++n)
    connect(display_->cmdColor[n], &QPushButton::clicked, this, [this, n] { EditColour(n); });
  connect(display_->cmdDefault, &QPushButton::clicked, this,
          [this] { SetDefaultColours(kColoursSpectrino); });
  connect(display_->cmdK4Color, &QPushButton::clicked, this, [this] { SetDefaultColours(kColoursK4); });
}

void frmSetupPan::EditColour(std::size_t n) {
  QColorDialog dialog(ToColour(SetupColors_[n]), this);
  dialog.setObjectName("dlgcolor");
  // The desktop's own dialog may lack the window's dark look, and cannot be driven without a desktop.
  dialog.setOption(QColorDialog::DontUseNativeDialog);
  if (dialog.exec() != QDialog::Accepted) return;
  SetupColors_[n] = ToBgr(dialog.currentColor());
  display_->ShowColours(SetupColors_);
}

void frmSetupPan::SetDefaultColours(const ColourTable& colours) {
  display_->chkSubD->setChecked(false);
  display_->chkFill->setChecked(true);
  SetupColors_ = colours;
  display_->ShowColours(SetupColors_);
}

void frmSetupPan::OpenChapter(const char* chapter) {
  if (!world_.OpenManual) return;
  if (const std::string problem = world_.OpenManual(chapter); !problem.empty())
    world_.ShowMessage(QString::fromStdString(problem));
}

}  // namespace spectrino
