#include "app/frmPan.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

#include "app/KeyTips.h"
#include "app/Manual.h"
#include "app/SetupVisit.h"
#include "app/WindowPlace.h"
#include "settings/FirstRun.h"
#include "settings/SetupSection.h"

namespace spectrino {

frmPan::frmPan(const Parts& parts)
    : parts_(parts),
      kits_(parts.Router),
      links_(parts.Cycle, parts.State, parts.Time, [&server = parts.Server] { return server.Trouble(); }),
      range_(parts.State, parts.Store),
      sources_(parts.State, parts.Devices, parts.Store),
      bandPlan_(parts.User),
      change_({.Cycle = parts.Cycle,
               .Sources = sources_,
               .Chosen = [this] { ShowSettings(), TakeChosenWay(); },
               .Start = [this] { StartButton_Click(); }}) {
  setObjectName("frmPan");
  setWindowTitle(QString("Spectrino V%1").arg(QCoreApplication::applicationVersion()));
  setMinimumSize(727, 345);
  Compose();
  ConnectHeader();
  ConnectStrip();
  tuning_ = std::make_unique<TuningInput>(
      TuningInput::Parts{.State = parts_.State,
                         .Cycle = parts_.Cycle,
                         .Links = links_,
                         .Display = parts_.Display,
                         .Time = parts_.Time,
                         .Window = *this,
                         .Scope = scope_,
                         .Strip = strip_,
                         .Header = header_,
                         .ZoomChanged = [this] { view_->ShowScaleChange(); },
                         .LevelsChanged =
                             [this] {
                               range_.Changed();
                               view_->ShowScaleChange();
                             },
                         .AutoLevel =
                             [this] {
                               if (!parts_.State.Settings.AutoLevel) strip_->ToggleAutoLevel();
                             },
                         .InsetPlaced = [this](InsetPlace place) { PlaceInset(place); }});
  view_ = std::make_unique<PanView>(PanView::Parts{.State = parts_.State,
                                                   .Cycle = parts_.Cycle,
                                                   .Links = links_,
                                                   .Display = parts_.Display,
                                                   .Times = parts_.Times,
                                                   .Time = parts_.Time,
                                                   .Tuning = *tuning_,
                                                   .Header = header_,
                                                   .Scope = scope_,
                                                   .Strip = strip_,
                                                   .Rows = deck_});
  ConnectPast();
  connect(deck_, &Deck::Retuning, this, [this] { tuning_->Retuning(); });
  passTimer_.setSingleShot(true);
  passTimer_.setTimerType(Qt::PreciseTimer);
  connect(&passTimer_, &QTimer::timeout, this, &frmPan::RunPass);
  parts_.Cycle.RunningChanged = [this] { RunningChanged(); };
  parts_.User.SetWindow(this);
  kits_.WindowIs(this);
  connect(&parts_.User, &QtNotifier::StatusChanged, scope_,
          [this](const QString& text) { scope_->Status().Show(StatusLine::Rank::Status, text); });
  parts_.Cat.Show = [this](const std::string& text) {
    scope_->Status().Show(StatusLine::Rank::Programs, QString::fromStdString(text));
  };
}

frmPan::~frmPan() {
  parts_.Cycle.RunningChanged = nullptr;
  parts_.Cat.Show = nullptr;
  kits_.WindowIs(nullptr);
  past_.reset();
  pictures_.reset();
  view_.reset();
  tuning_.reset();
}

void frmPan::Compose() {
  auto* body = new QWidget(this);
  auto* rows = new QVBoxLayout(body);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  header_ = new HeaderPanel(body);
  rows->addWidget(header_);

  auto* middle = new QHBoxLayout;
  middle->setSpacing(0);
  scope_ = new ScopeWidget(parts_.Display, parts_.Times, body);
  cmdFold_ = new QToolButton(body);
  cmdFold_->setObjectName("cmdFold");
  cmdFold_->setToolTip(tr("Fold the controls away"));
  cmdFold_->setAccessibleName(tr("Fold the controls away"));
  cmdFold_->setFixedWidth(10);
  cmdFold_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  strip_ = new RangePanel(body);
  middle->addWidget(scope_, 1);
  middle->addWidget(cmdFold_);
  middle->addWidget(strip_);
  rows->addLayout(middle, 1);

  deck_ = new Deck({.State = parts_.State,
                    .Store = parts_.Store,
                    .Cycle = parts_.Cycle,
                    .Links = links_,
                    .Router = parts_.Router,
                    .Window = *this},
                   body);
  rows->addWidget(deck_);
  setCentralWidget(body);

  connect(cmdFold_, &QToolButton::clicked, this, [this] { stance_->FoldStrip(!stance_->StripFolded()); });
  connect(scope_, &ScopeWidget::ResizeBegun, this, [this] {
    if (!std::exchange(parts_.State.ResizeInProgress, true)) kits_.PauseLines(true, isMinimized());
  });
  connect(scope_, &ScopeWidget::Resized, this, [this] {
    if (std::exchange(parts_.State.ResizeInProgress, false)) kits_.PauseLines(false, isMinimized());
    parts_.Cycle.UpdateScale();
  });
  stance_ = std::make_unique<WindowStance>(*this, *header_, *strip_, *cmdFold_);
  new KeyTips(*this);
}

void frmPan::ConnectHeader() {
  connect(header_, &HeaderPanel::StartButton_Click, this, &frmPan::StartButton_Click);
  connect(header_, &HeaderPanel::StopButton_Click, this, &frmPan::StopButton_Click);
  connect(header_, &HeaderPanel::DevicesWanted, this, [this] {
    parts_.Devices.InitDevices();
    ShowDevices();
  });
  connect(header_, &HeaderPanel::DevicesBox_Click, &change_, &SourceChange::Choose);
  connect(header_, &HeaderPanel::cmdFullScreen_Click, this, &frmPan::ToggleFullScreen);
  connect(header_, &HeaderPanel::cmdSetup_Click, this, &frmPan::cmdSetup_Click);
  connect(header_, &HeaderPanel::cmdHelp_Click, this, [this] {
    if (const std::string problem = OpenManual({}); !problem.empty())
      parts_.User.ShowMessage("Spectrino", problem, Severity::Exclamation, ManualCure(problem));
  });
  connect(header_, &HeaderPanel::chkTop_Click, this, &frmPan::AlwaysOnTop);
}

void frmPan::ConnectStrip() {
  RunCycle& cycle = parts_.Cycle;
  const auto change = [this](auto signal, void (PlotScale::*action)()) {
    connect(strip_, signal, this, [this, action] {
      (parts_.Cycle.Scale().*action)();
      range_.Changed();
      view_->ShowScaleChange();
    });
  };
  connect(strip_, &RangePanel::chkAutoLevel_Click, this, [this](bool on) {
    parts_.Cycle.Scale().SetAutoLevel(on);
    range_.Changed();
    view_->ShowScaleChange();
  });
  change(&RangePanel::Command1_Click, &PlotScale::ReferenceUp);
  change(&RangePanel::Command18_Click, &PlotScale::ReferenceDown);
  change(&RangePanel::Command3_Click, &PlotScale::RangeUp);
  change(&RangePanel::Command2_Click, &PlotScale::RangeDown);
  connect(strip_, &RangePanel::optDisp_Click, this,
          [&cycle](int index) { cycle.Frames().SetDisplayMode(index); });
  connect(strip_, &RangePanel::optZoom_Click, this, [this, &cycle](int index) {
    cycle.SetZoom(index);
    view_->ShowScaleChange();
  });
  connect(strip_, &RangePanel::optWaterfall_Click, this, [this](int index) {
    parts_.State.Settings.WaterfallSel = index;
    view_->ApplyOptions();
    parts_.Cycle.UpdateScale();
    scope_->update();
  });
  connect(strip_, &RangePanel::WaterfallColours_Change, this, [this](int floorDb, int contrastPercent) {
    parts_.State.Settings.WFFloorDb = floorDb;
    parts_.State.Settings.WFContrast = contrastPercent;
    view_->ApplyOptions();
    range_.Changed();
    scope_->update();
  });
  connect(strip_, &RangePanel::chkBPH_Click, this,
          [this](bool on) { parts_.State.Settings.BackgroundPeakHold = on; });
  connect(strip_, &RangePanel::cmdIQ_Click, deck_, &Deck::ShowCalibration);
}

void frmPan::ConnectPast() {
  pictures_ = std::make_unique<PictureFile>(parts_.Display, parts_.User, this);
  past_ = std::make_unique<PastInput>(
      PastInput::Parts{.Display = parts_.Display,
                       .Scope = scope_,
                       .Pictures = *pictures_,
                       .Changed = [this] { scope_->ShowNew(parts_.Cycle.View().Line.Arrived); },
                       .FullScreen = [this] { ToggleFullScreen(); }});
  connect(pictures_.get(), &PictureFile::Saved, this, [this](const QString& path) {
    scope_->Status().Show(StatusLine::Rank::Passing, tr("Picture saved: %1").arg(path));
  });
  auto* save = new QShortcut(QKeySequence::Save, this);
  connect(save, &QShortcut::activated, this, [this] { pictures_->Save(); });
}

void frmPan::LoadWindow() {
  SetupSection setup(parts_.Store);
  if (parts_.State.FirstRun) WriteFirstRun(setup);
  LoadStartup(setup, parts_.State.Settings);
  RestorePlace(*this, parts_.Store);
  LoadSettings();
  TakeChosenWay();
  deck_->LoadCalibration();
  const PanSettings& settings = parts_.State.Settings;
  header_->ShowOnTop(settings.OnTop);
  tuning_->AllowWheel(settings.Mouse);
  if (settings.OnTop) AlwaysOnTop(true);
}

void frmPan::LoadSettings() {
  PanSettings& settings = parts_.State.Settings;
  spectrino::LoadSettings(SetupSection(parts_.Store), settings, parts_.Devices.Sources().Radios());
  sources_.Loaded();
  parts_.Cat.Load();
  ShowSettings();
}

void frmPan::ShowSettings() {
  if (SettingsChosen) SettingsChosen(parts_.State.Settings);
  ShowDevices();
  parts_.Display.SetBandPlan(bandPlan_.Load(parts_.State.Settings.BandPlanRegion));
  view_->ApplyOptions();
  parts_.Cycle.UpdateScale();
  view_->ShowAll();
}

void frmPan::PlaceInset(InsetPlace place) {
  parts_.State.Settings.InsetPlace = static_cast<int>(place);
  SetupSection(parts_.Store).Write(key::kInsetPlace, static_cast<int>(place));
  view_->ApplyOptions();
  parts_.Cycle.UpdateScale();
  scope_->update();
}

// The links that live beside runs are those that the settings name.
void frmPan::TakeChosenWay() {
  kits_.WayChosen(RowOf(parts_.State.Settings.Control).Way);
}

void frmPan::cmdSetup_Click() {
  range_.StoreWaiting();
  frmSetupPan* dialog = OpenSetup({.Store = parts_.Store,
                                   .Devices = parts_.Devices,
                                   .Ports = parts_.Ports,
                                   .User = parts_.User,
                                   .Server = parts_.Server,
                                   .Cat = parts_.Cat},
                                  parts_.Cycle.Running() || parts_.Cycle.Starting(), this);
  connect(dialog, &frmSetupPan::WayChosen, this, [this](CatWay way) { kits_.WayChosen(way); });
  connect(dialog, &frmSetupPan::FirstStepsWanted, this, &frmPan::FirstStepsWanted, Qt::QueuedConnection);
  // The input of a demo or a recording stays for this run unless another source was chosen.
  connect(dialog, &QDialog::finished, this, [this, dialog](int result) {
    if (result == QDialog::Accepted && dialog->SourceChanged()) sources_.Stored();
    LoadSettings();
  });
  dialog->open();
}

void frmPan::ShowDevices() {
  deck_->ShowSource();
  const SourceList::Shown shown = sources_.Show();
  QStringList names;
  for (const std::string& name : shown.Names) names.append(QString::fromStdString(name));
  header_->ShowDevices(names, shown.Current);
}

void frmPan::StartButton_Click() {
  change_.Forget();
  // A dialog that was cancelled left that of a choice which was not stored.
  TakeChosenWay();
  header_->ShowRunning(false, true);
  parts_.Cycle.Start();
}

void frmPan::StopButton_Click() {
  change_.Forget();
  parts_.Cycle.Stop();
  RunningChanged();
}

void frmPan::RunPass() {
  const auto wait = parts_.Cycle.Step();
  tuning_->AfterPass();
  // The pass may have ended the run, or a nested Start may have armed the timer already.
  if (parts_.Cycle.Running()) passTimer_.start(wait);
  view_->AfterPass();
}

void frmPan::RunningChanged() {
  const bool running = parts_.Cycle.Running();
  kits_.RunChanged(running, parts_.Cycle.View().Way.Source);
  tuning_->RunChanged(running);
  if (running && !passTimer_.isActive()) passTimer_.start(0);
  change_.RunChanged();
  view_->ShowRunState();
}

void frmPan::closeEvent(QCloseEvent* event) {
  change_.Forget();
  parts_.Cycle.Stop();
  passTimer_.stop();
  SavePlace(*this, parts_.Store);
  SetupSection setup(parts_.Store);
  SaveMainKeys(setup, parts_.State.Settings, CurrentRefBand(parts_.State));
  event->accept();
}

void frmPan::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() != QEvent::WindowStateChange) return;
  if (std::exchange(parts_.State.WindowMinimized, isMinimized()) != isMinimized()) {
    kits_.PauseLines(true, isMinimized());
    kits_.PauseLines(false, isMinimized());
  }
  stance_->ShowFullScreen();
}

// What no control wanted.
void frmPan::keyPressEvent(QKeyEvent* event) {
  if (!tuning_->KeyPressed(*event)) QMainWindow::keyPressEvent(event);
}

void frmPan::AllowOnTop(bool allow) {
  const bool on = allow && parts_.State.Settings.OnTop;
  if (stance_->IsOnTop() != on) stance_->KeepOnTop(on);
}

void frmPan::AlwaysOnTop(bool on) {
  parts_.State.Settings.OnTop = on;
  stance_->KeepOnTop(on);
}

}  // namespace spectrino
