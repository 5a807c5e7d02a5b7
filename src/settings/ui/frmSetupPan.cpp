#include "settings/ui/frmSetupPan.h"

#include <QHBoxLayout>
#include <QMessageBox>
#include <QScrollArea>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "settings/Keys.h"

namespace spectrino {

using namespace setup;

namespace {
constexpr int kSourcePage = 0;
constexpr int kSoundPage = 1;

/// A page that scrolls where the screen is small.
QScrollArea* Scrolling(QWidget* page) {
  auto* area = new QScrollArea;
  area->setWidget(page);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  return area;
}
}  // namespace

frmSetupPan::frmSetupPan(SetupWorld world, QWidget* parent)
    : QDialog(parent), world_(std::move(world)), setup_(world_.Store) {
  setObjectName("frmSetupPan");
  setWindowTitle(tr("Setup"));
  FillWorld();
  MakePages();
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(lblLocked_);
  rows->addWidget(pages_, 1);
  rows->addLayout(MakeButtons());
  resize(680, 500);
  ListFields();
  ConnectRules();
  LoadControls();
  if (world_.Running) LockForRun();
}

void frmSetupPan::FillWorld() {
  if (!world_.ShowMessage)
    world_.ShowMessage = [this](const QString& text) { QMessageBox::information(this, "Spectrino", text); };
  if (!world_.AskOkCancel) {
    world_.AskOkCancel = [this](const QString& text) {
      return QMessageBox::question(this, "Spectrino", text, QMessageBox::Ok | QMessageBox::Cancel) ==
             QMessageBox::Ok;
    };
  }
}

void frmSetupPan::MakePages() {
  source_ = new SourcePage(world_.Store, world_.Ports, world_.AskRigs, world_.LookForServer);
  source_->CatServer->ShowPlace(world_.CatServerPlace);
  sound_ = new SoundPage;
  tuning_ = new TuningPage;
  display_ = new DisplayPage;
  pages_ = new QTabWidget(this);
  pages_->setObjectName("Pages");
  pages_->addTab(Scrolling(source_), tr("S&ource"));
  pages_->addTab(Scrolling(sound_), tr("Sou&nd card"));
  pages_->addTab(Scrolling(tuning_), tr("Fre&quencies"));
  pages_->addTab(Scrolling(display_), tr("&Display"));
  // Lists take Ctrl+Tab for a letter to look for: it is not left to what has the focus.
  const auto turn = [this](const QKeySequence& keys, int direction) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this,
            [this, direction] { TurnPage(direction); });
  };
  turn(Qt::CTRL | Qt::Key_Tab, +1);
  turn(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab, -1);
  lblLocked_ = new QLabel(this);
  lblLocked_->setObjectName("lblLocked");
  lblLocked_->setWordWrap(true);
  lblLocked_->hide();
}

void frmSetupPan::TurnPage(int direction) {
  const int count = pages_->count();
  int page = pages_->currentIndex();
  do {
    page = (page + direction + count) % count;
  } while (!pages_->isTabVisible(page));
  pages_->setCurrentIndex(page);
}

QLayout* frmSetupPan::MakeButtons() {
  auto* buttons = new QHBoxLayout;
  const auto add = [&](const char* name, const QString& caption, const QString& toolTip) {
    QPushButton* button = MakeButton(name, caption, toolTip, this);
    buttons->addWidget(button);
    return button;
  };
  connect(add("cmdHelp", tr("&Help"), {}), &QPushButton::clicked, this, [this] { OpenChapter(""); });
  connect(add("cmdTRX", tr("Ca&stelon web site"), {}), &QPushButton::clicked, this,
          [this] { OpenChapter("castelon"); });
  connect(add("cmdTelepost", tr("&Telepost web site"), {}), &QPushButton::clicked, this,
          [this] { OpenChapter("telepost"); });
  connect(add("cmdFirstSteps", tr("First steps..."), tr("Choose a source with its level or port beside it")),
          &QPushButton::clicked, this, [this] {
            reject();
            emit FirstStepsWanted();
          });
  buttons->addStretch(1);
  QPushButton* ok = add("cmdOK", tr("O&K"), tr("Apply all changes and exit"));
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &frmSetupPan::cmdOK_Click);
  connect(add("cmdCancel", tr("Canc&el"), tr("Cancel changes")), &QPushButton::clicked, this,
          &QDialog::reject);
  return buttons;
}

void frmSetupPan::ListFields() {
  fields_ = {{std::string(key::kDevice.Name.Text()),
              [this](const SetupSection& setup) { chosen_ = ReadSource(setup, {}, sources_.Radios()); },
              [this](SetupBatch& batch) { PutSource(batch, sources_, Chosen()); }},
             {std::string(key::kCatControl.Name.Text()),
              [this](const SetupSection& setup) {
                source_->ShowCat(ChoiceOf(static_cast<CatControl>(setup.Read(key::kCatControl))));
              },
              [this](SetupBatch& batch) { batch.Put(key::kCatControl, static_cast<int>(SetupCatControl_)); }},
             {kRadioFlags, [](const SetupSection&) {},
              [this](SetupBatch& batch) { PutRadioFlags(batch, Chosen().Id, sources_.Radios()); }}};
  source_->AddFields(fields_);
  sound_->AddFields(fields_);
  tuning_->AddFields(fields_);
  display_->AddFields(fields_);
  SortAsWritten(fields_);
}

// Silent while the dialog fills itself.
void frmSetupPan::ConnectRules() {
  connect(source_->DevicesBox, &FreshList::AboutToShow, this, &frmSetupPan::InitDevices);
  const auto follow = [this](QComboBox* list, SetupChange change) {
    connect(list, &QComboBox::currentIndexChanged, this, [this, change] {
      if (SetupLoading_) return;
      sourceChanged_ = sourceChanged_ || change == SetupChange::Source;
      Apply(change);
    });
  };
  follow(source_->DevicesBox, SetupChange::Source);
  follow(source_->Icom->cboICOM, SetupChange::Waveform);
  follow(source_->cboControl, SetupChange::Cat);
  follow(source_->cboSDR, SetupChange::Cat);
  connect(tuning_->chkMouse, &QAbstractButton::toggled, this, &frmSetupPan::chkMouse_Click);
  connect(display_->chkPriority, &QAbstractButton::toggled, this, &frmSetupPan::chkPriority_Click);
}

void frmSetupPan::LoadControls() {
  SetupLoading_ = true;
  sources_ = world_.ListSources();
  for (const SetupField& field : fields_) field.Load(setup_);
  ShowSources();
  Apply(SetupChange::Loading);
  SetupLoading_ = false;
}

void frmSetupPan::Apply(SetupChange change) {
  const SetupView view = ViewFor({Chosen().Id.Kind, source_->Icom->Waveform(), source_->Cat()}, change);
  SetupCatControl_ = view.Control;
  source_->Show(view, world_.Running);
  sound_->Show(view.SoundCard);
  tuning_->Show(view);
  display_->Show(view);
  pages_->setTabVisible(kSoundPage, view.SoundCard);
  if (view.Message != nullptr) world_.ShowMessage(view.Message);
}

void frmSetupPan::InitDevices() {
  chosen_ = Chosen();
  sources_ = world_.ListSources();
  ShowSources();
}

void frmSetupPan::ShowSources() {
  chosen_ = sources_.Current(chosen_);
  const SourceList::Shown shown = sources_.Show(chosen_);
  const QSignalBlocker silent(source_->DevicesBox);
  source_->DevicesBox->clear();
  for (const std::string& name : shown.Names) source_->DevicesBox->addItem(QString::fromStdString(name));
  source_->DevicesBox->setCurrentIndex(shown.Current);
}

/// One that is missing stands behind the list and stays the choice.
ChosenSource frmSetupPan::Chosen() const {
  return sources_.At(source_->DevicesBox->currentIndex()).value_or(chosen_);
}

void frmSetupPan::LockForRun() {
  const QString why = tr("A run is on. Press Stop to change this.");
  for (QWidget* widget :
       std::initializer_list<QWidget*>{source_->DevicesBox, source_->optbits[0], source_->optbits[1],
                                       source_->cboControl, source_->cboSDR, source_->Icom->cboICOM,
                                       sound_->cboBits, sound_->cboSampleRate, sound_->chkZoom}) {
    widget->setEnabled(false);
    widget->setToolTip(why);
    widget->setAccessibleDescription(why);
  }
  lblLocked_->setText(
      tr("A run is on: source, CAT control, sample rate and FFT bins are locked until Stop. "
         "Addresses, apodization and Reverse I/Q act at the next Start."));
  lblLocked_->show();
}

// What cannot be stored as it was meant is not stored as something else.
void frmSetupPan::cmdOK_Click() {
  if (const QString problem = source_->Problem(); !problem.isEmpty()) {
    pages_->setCurrentIndex(kSourcePage);
    world_.ShowMessage(problem);
    return;
  }
  SaveControls();
  accept();
}

void frmSetupPan::SaveControls() {
  SetupBatch batch(setup_);
  for (const SetupField& field : fields_) field.Put(batch);
  batch.Save();
  source_->Icom->SavePorts();
}

void frmSetupPan::chkMouse_Click() {
  if (!SetupLoading_) world_.ShowMessage("Please restart Spectrino");
}

void frmSetupPan::chkPriority_Click() {
  if (SetupLoading_ || !display_->chkPriority->isChecked()) return;
  if (!world_.AskOkCancel(PriorityQuestion(Chosen().Id.Kind))) display_->chkPriority->setChecked(false);
}

void frmSetupPan::OpenChapter(const char* chapter) {
  if (!world_.OpenManual) return;
  if (const std::string problem = world_.OpenManual(chapter); !problem.empty())
    world_.ShowMessage(QString::fromStdString(problem));
}

void frmSetupPan::done(int result) {
  emit WayChosen(RowOf(SetupCatControl_).Way);
  QDialog::done(result);
}

}  // namespace spectrino
