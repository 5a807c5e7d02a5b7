#include "app/frmPan.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

#include "app/Manual.h"

namespace spectrino {

namespace {
constexpr int kStoreRangeMs = 700;
constexpr int kIdleShowMs = 100;  // how old header and markers may get without a new frame
}  // namespace

frmPan::frmPan(const Parts& parts) : parts_(parts) {
  setObjectName("frmPan");
  setWindowTitle(QString("Spectrino V%1").arg(QCoreApplication::applicationVersion()));
  setMinimumSize(727, 345);
  Compose();
  ConnectHeader();
  ConnectStrip();
  ConnectCalibration();
  tuning_ = std::make_unique<TuningInput>(TuningInput::Parts{.State = parts_.State,
                                                             .Cycle = parts_.Cycle,
                                                             .Display = parts_.Display,
                                                             .Time = parts_.Time,
                                                             .Window = *this,
                                                             .Scope = scope_,
                                                             .Strip = range_,
                                                             .Header = header_,
                                                             .ZoomChanged = [this] { ShowScaleChange(); }});
  connect(deck_, &Deck::Retuning, this, [this] { tuning_->Retuning(); });
  passTimer_.setSingleShot(true);
  passTimer_.setTimerType(Qt::PreciseTimer);
  connect(&passTimer_, &QTimer::timeout, this, &frmPan::RunPass);
  rangeTimer_.setSingleShot(true);
  rangeTimer_.setInterval(kStoreRangeMs);
  connect(&rangeTimer_, &QTimer::timeout, this, &frmPan::StoreRange);
  parts_.Cycle.RunningChanged = [this] { ShowRunState(); };
  parts_.User.SetWindow(this);
  parts_.K4.Attach(deck_->K4(), this, [this](bool allow) { AllowOnTop(allow); });
  parts_.Icom.Attach({.Panel = deck_->Icom(), .Window = this, .Commands = this});
  connect(&parts_.User, &QtNotifier::StatusChanged, scope_, &ScopeWidget::ShowStatus);
}

frmPan::~frmPan() {
  tuning_.reset();
  parts_.K4.Detach();
  parts_.Icom.Detach();
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
  range_ = new RangePanel(body);
  middle->addWidget(scope_, 1);
  middle->addWidget(cmdFold_);
  middle->addWidget(range_);
  rows->addLayout(middle, 1);

  deck_ =
      new Deck({.State = parts_.State, .Store = parts_.Store, .Cycle = parts_.Cycle, .Window = *this}, body);
  rows->addWidget(deck_);
  setCentralWidget(body);

  connect(cmdFold_, &QToolButton::clicked, this, [this] { FoldStrip(!stripFolded_); });
  connect(scope_, &ScopeWidget::ResizeBegun, this, [this] {
    if (!std::exchange(parts_.State.ResizeInProgress, true)) parts_.Icom.Link().BeforeLayout();
  });
  connect(scope_, &ScopeWidget::Resized, this, [this] {
    if (std::exchange(parts_.State.ResizeInProgress, false)) parts_.Icom.Link().AfterLayout(isMinimized());
    parts_.Cycle.UpdateScale();
  });
  auto* escape = new QShortcut(Qt::Key_Escape, this);
  connect(escape, &QShortcut::activated, this, &frmPan::ToggleFullScreen);
  FoldStrip(false);
}

void frmPan::ConnectHeader() {
  connect(header_, &HeaderPanel::StartButton_Click, this, &frmPan::StartButton_Click);
  connect(header_, &HeaderPanel::StopButton_Click, this, &frmPan::StopButton_Click);
  connect(header_, &HeaderPanel::DevicesWanted, this, [this] {
    parts_.Devices.InitDevices();
    ShowDevices();
  });
  connect(header_, &HeaderPanel::DevicesBox_Click, this, &frmPan::DevicesBox_Click);
  connect(header_, &HeaderPanel::cmdFullScreen_Click, this, &frmPan::ToggleFullScreen);
  connect(header_, &HeaderPanel::cmdSetup_Click, this, &frmPan::cmdSetup_Click);
  connect(header_, &HeaderPanel::cmdHelp_Click, this, [this] {
    if (const std::string problem = OpenManual({}); !problem.empty())
      parts_.User.ShowMessage("Spectrino", problem, Severity::Exclamation);
  });
  connect(header_, &HeaderPanel::chkTop_Click, this, &frmPan::AlwaysOnTop);
}

void frmPan::ConnectStrip() {
  RunCycle& cycle = parts_.Cycle;
  const auto thenShow = [this](void (RunCycle::*action)()) {
    return [this, action] {
      (parts_.Cycle.*action)();
      RangeChanged();
      ShowScaleChange();
    };
  };
  connect(range_, &RangePanel::Command1_Click, this, thenShow(&RunCycle::ReferenceUp));
  connect(range_, &RangePanel::Command18_Click, this, thenShow(&RunCycle::ReferenceDown));
  connect(range_, &RangePanel::Command3_Click, this, thenShow(&RunCycle::RangeUp));
  connect(range_, &RangePanel::Command2_Click, this, thenShow(&RunCycle::RangeDown));
  connect(range_, &RangePanel::optDisp_Click, this, [&cycle](int index) { cycle.SetDisplayMode(index); });
  connect(range_, &RangePanel::optZoom_Click, this, [this, &cycle](int index) {
    cycle.SetZoom(index);
    ShowScaleChange();
  });
  connect(range_, &RangePanel::optWaterfall_Click, this, [this](int index) {
    parts_.State.Settings.WaterfallSel = index;
    ApplyDisplayOptions();
  });
  connect(range_, &RangePanel::chkBPH_Click, this,
          [this](bool on) { parts_.State.Settings.BackgroundPeakHold = on; });
  connect(range_, &RangePanel::cmdIQ_Click, deck_, &Deck::ShowCalibration);
}

void frmPan::ConnectCalibration() {
  PanSettings& settings = parts_.State.Settings;
  CalibrationPanel* calibration = deck_->Calibration();
  connect(calibration, &CalibrationPanel::sldAmplitude_Change, this,
          [&settings](int value) { settings.DeAmp = value; });
  connect(calibration, &CalibrationPanel::sldPhase_Change, this,
          [&settings](int value) { settings.DePhase = value; });
  connect(calibration, &CalibrationPanel::slddbm_Change, this,
          [&settings](int value) { settings.BandLevelDb = value; });
}

void frmPan::StartButton_Click() {
  header_->ShowRunning(false, true);
  parts_.Cycle.Start();
}

void frmPan::StopButton_Click() {
  parts_.Cycle.Stop();
  ShowRunState();
}

void frmPan::RunPass() {
  const auto wait = parts_.Cycle.Step();
  tuning_->AfterPass();
  // The pass may have ended the run, or a nested Start may have armed the timer already.
  if (parts_.Cycle.Running()) passTimer_.start(wait);
  // Most passes only look for a block; what they leave unchanged is not put together again.
  const bool newFrame = parts_.Times.Frames != shownFrames_;
  if (!newFrame && sinceShown_.isValid() && sinceShown_.elapsed() < kIdleShowMs) return;
  shownFrames_ = parts_.Times.Frames;
  ShowRadioPanel();
  sinceShown_.restart();
  ShowHeader();
  ShowOverlays();
  ShowWarning();
  // A band change brings the band's own reference and range.
  const PanSettings& settings = parts_.State.Settings;
  if (std::pair(settings.RefLevel, settings.RangeDivisor) != shownRange_) ShowStrip();
  scope_->ShowNew(parts_.Cycle.LastArrival());
}

void frmPan::closeEvent(QCloseEvent* event) {
  parts_.Cycle.Stop();
  passTimer_.stop();
  SaveWindow();
  event->accept();
}

void frmPan::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() != QEvent::WindowStateChange) return;
  if (std::exchange(parts_.State.WindowMinimized, isMinimized()) != isMinimized()) {
    // Nobody looks: the scope's lines stay off the bus.
    parts_.Icom.Link().BeforeLayout();
    parts_.Icom.Link().AfterLayout(isMinimized());
  }
  ShowFullScreen();
}

// What no control wanted.
void frmPan::keyPressEvent(QKeyEvent* event) {
  if (!tuning_->KeyPressed(*event)) QMainWindow::keyPressEvent(event);
}

void frmPan::ToggleFullScreen() {
  if (isFullScreen())
    setWindowState(windowState() & ~Qt::WindowFullScreen);
  else
    showFullScreen();
  ShowFullScreen();
}

// Full screen may be left by the window manager as well.
void frmPan::ShowFullScreen() {
  const bool full = isFullScreen();
  range_->setVisible(!full && !stripFolded_);
  cmdFold_->setVisible(!full);
  header_->ShowFullScreen(full);
}

void frmPan::AllowOnTop(bool allow) {
  const bool on = allow && parts_.State.Settings.OnTop;
  if (windowFlags().testFlag(Qt::WindowStaysOnTopHint) == on) return;
  setWindowFlag(Qt::WindowStaysOnTopHint, on);
  show();
}

void frmPan::AlwaysOnTop(bool on) {
  parts_.State.Settings.OnTop = on;
  const bool shown = isVisible();
  setWindowFlag(Qt::WindowStaysOnTopHint, on);
  if (shown) show();
}

void frmPan::FoldStrip(bool folded) {
  stripFolded_ = folded;
  range_->setVisible(!folded);
  cmdFold_->setText(QString::fromUtf8(folded ? "\u25C2" : "\u25B8"));
}

}  // namespace spectrino
