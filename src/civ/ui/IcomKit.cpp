#include "civ/ui/IcomKit.h"

#include <utility>

namespace spectrino {

namespace {
constexpr int kStatusMs = 1000;
constexpr int kPumpMs = 5;
}  // namespace

IcomKit::IcomKit(const KitParts& parts, std::unique_ptr<SerialPort> port, HostIcom* host)
    : parts_(parts),
      port_(std::move(port)),
      panel_(std::make_unique<IcomPanel>()),
      bands_(LoadBandMemory(parts.Store)),
      held_(*panel_, state_, parts.Time),
      icom_{.Port = *port_,
            .State = state_,
            .Panel = held_,
            .Store = parts.Store,
            .Time = parts.Time,
            .Pump = parts.Pump,
            .User = parts.User},
      serial_(icom_),
      throughHost_(host != nullptr ? std::make_unique<HostSession>(icom_, *host) : nullptr),
      carriers_(state_, serial_, throughHost_.get()),
      link_(icom_, carriers_),
      commands_(state_, carriers_.Sender(), parts.Pump, parts.Time),
      backend_(state_, carriers_, commands_, parts.Store, bands_),
      hostBackend_(host != nullptr ? std::make_unique<HostIcomBackend>(host->Backend(), backend_) : nullptr),
      memory_(state_, commands_, parts.Store, bands_),
      scanWindow_([this] { return panel_->window(); }, *panel_),
      sliders_(commands_, held_, parts.Time) {
  panel_->hide();
  panel_->setEnabled(false);
  ConnectPanel();
  tmrIcomStatus_.setInterval(kStatusMs);
  QObject::connect(&tmrIcomStatus_, &QTimer::timeout, &tmrIcomStatus_, [this] { tmrIcomStatus_Timer(); });
  tmrPump_.setInterval(kPumpMs);
  QObject::connect(&tmrPump_, &QTimer::timeout, &tmrPump_, [this] { Pump(); });
}

IcomKit::~IcomKit() = default;

// What the run was opened with: the setting may be another one by now.
RigBackend& IcomKit::Backend() {
  if (state_.IcomControl == 0 || hostBackend_ == nullptr) return backend_;
  return *hostBackend_;
}

bool IcomKit::GoesThrough(CatWay way) const {
  return way == CatWay::HostAndScope && parts_.Settings.IcomControl != 0;
}

const RadioTraits& IcomKit::Traits() const {
  // The band commands count 60 m among the bands, as a K4 does.
  static const RadioTraits traits{.Deck = {BandLayout::With60m, ModeLayout::Designed},
                                  .MacrosInHex = true,
                                  .HasVfoB = false,
                                  .LevelsAreHeights = true,
                                  .ScopeThroughHost = true,
                                  .StepMHz = 0};
  return traits;
}

std::span<const RadioSource> IcomKit::Sources() const {
  static constexpr RadioSource source[] = {{SourceKind::Icom, "ICOM"}};
  return source;
}

void IcomKit::SetWindow(WindowCommands* window) {
  scan_.reset();
  if (window == nullptr) return;
  scan_.emplace(ScanCommands::Parts{.State = state_,
                                    .Sender = carriers_.Sender(),
                                    .Store = parts_.Store,
                                    .Main = *window,
                                    .Windows = scanWindow_});
}

void IcomKit::ConnectPanel() {
  IcomPanel* panel = panel_.get();
  const auto toCommands = [&](auto signal, auto handler) {
    QObject::connect(panel, signal, panel,
                     [this, handler](auto... value) { (commands_.*handler)(value...); });
  };
  QObject::connect(panel, &IcomPanel::chkFunc_Click, panel,
                   [this](int index, bool checked) { Hold(PanelControl::Function, checked ? 1 : 0, index); });
  QObject::connect(panel, &IcomPanel::chkFIX_Click, panel,
                   [this](bool checked) { Hold(PanelControl::Fixed, checked ? 1 : 0); });
  QObject::connect(panel, &IcomPanel::cboSpan_Click, panel,
                   [this](int entry) { Hold(PanelControl::Span, entry); });
  toCommands(&IcomPanel::chkFunc_Click, &IcomCommands::chkFunc_Click);
  toCommands(&IcomPanel::chkMEM_Click, &IcomCommands::chkMEM_Click);
  toCommands(&IcomPanel::chkFIX_Click, &IcomCommands::chkFIX_Click);
  toCommands(&IcomPanel::cmdAGC_Click, &IcomCommands::cmdAGC_Click);
  toCommands(&IcomPanel::cmdFil_Click, &IcomCommands::cmdFil_Click);
  toCommands(&IcomPanel::cmdSpeed_Click, &IcomCommands::cmdSpeed_Click);
  toCommands(&IcomPanel::cboSpan_Click, &IcomCommands::cboSpan_Click);
  ConnectSliders();
  QObject::connect(panel, &IcomPanel::chkScan_Click, panel, [this](bool checked) {
    if (scan_) scan_->MainChkScan_Click(checked);
  });
}

void IcomKit::ConnectSliders() {
  const auto connect = [this](auto changed, PanelControl slider) {
    QObject::connect(panel_.get(), changed, panel_.get(), [this, slider](int value) {
      if (state_.CivParserBusy) return;
      sliders_.Move(slider, value);
      tmrPump_.start();
    });
  };
  connect(&IcomPanel::sldVol_Change, PanelControl::AfLevel);
  connect(&IcomPanel::sldSQL_Change, PanelControl::Squelch);
  connect(&IcomPanel::sldRFLevel_Change, PanelControl::RefLevel);
  QObject::connect(panel_.get(), &IcomPanel::sld_MouseUp, panel_.get(),
                   [this](PanelControl slider) { sliders_.Release(slider); });
}

void IcomKit::Hold(PanelControl control, int value, int index) {
  held_.Asked(control, value, index);
  tmrPump_.start();
}

void IcomKit::Pump() {
  carriers_.Pump();
  const bool moved = sliders_.Pump();
  const bool held = held_.Pump();
  if (!moved && !held && !carriers_.Closing()) tmrPump_.stop();
}

void IcomKit::tmrIcomStatus_Timer() {
  // Behind a hidden window no pass does it.
  carriers_.Pump();
  memory_.tmrIcomStatus_Timer(parts_.Settings.AutoRef, state_.IcomActive);
  if (!carriers_.Answers()) return;
  // A radio that does not report its own knob, and one whose memories or scan move it, is asked.
  for (const char* command : {"03", "04"}) carriers_.Sender().SendCiv(command, "", "?");
  carriers_.Sender().SendCiv("1C", "00", "?");
  AskPanelState();
}

// All of it once the radio is set up, then one a second in turn: what is turned at the radio itself shows.
void IcomKit::AskPanelState() {
  if (state_.RadioId.empty()) return;
  if (std::exchange(setUps_, carriers_.SetUps()) != carriers_.SetUps()) asked_ = 0;
  const int count = asked_ == 0 ? IcomCommands::kPanelStates : 1;
  for (int i = 0; i < count; ++i) commands_.AskPanelState(asked_++);
}

void IcomKit::RunChanged(bool serving) {
  panel_->setEnabled(serving);
  if (carriers_.Closing()) tmrPump_.start();
  if (serving == tmrIcomStatus_.isActive()) return;
  if (!serving) {
    tmrIcomStatus_.stop();
    return;
  }
  memory_.Restart();
  asked_ = 0;
  AskPanelState();
  tmrIcomStatus_.start();
}

}  // namespace spectrino
