#include "civ/ui/IcomKit.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {
constexpr int kStatusMs = 1000;
constexpr int kPumpMs = 5;
// A drag tells a value for every pixel; the line carries a hundred frames a second.
constexpr auto kSliderPace = 30ms;
}  // namespace

IcomKit::IcomKit(const KitParts& parts, std::unique_ptr<SerialPort> port)
    : parts_(parts),
      port_(std::move(port)),
      panel_(std::make_unique<IcomPanel>()),
      bands_(LoadBandMemory(parts.Store)),
      link_({.Port = *port_,
             .State = state_,
             .Panel = *panel_,
             .Store = parts.Store,
             .Time = parts.Time,
             .Pump = parts.Pump,
             .User = parts.User}),
      commands_(state_, link_.Sender(), parts.Pump),
      backend_(state_, link_, commands_, parts.Store, bands_),
      memory_(state_, commands_, parts.Store, bands_),
      scanWindow_([this] { return panel_->window(); }, *panel_),
      sliders_{
          PacedSlider{&IcomPanel::sldVol_Change, &IcomCommands::sldVol_Change, PacedValue<int>(kSliderPace)},
          PacedSlider{&IcomPanel::sldSQL_Change, &IcomCommands::sldSQL_Change, PacedValue<int>(kSliderPace)},
          PacedSlider{&IcomPanel::sldRFLevel_Change, &IcomCommands::sldRFLevel_Change,
                      PacedValue<int>(kSliderPace)}} {
  panel_->hide();
  panel_->setEnabled(false);
  ConnectPanel();
  tmrIcomStatus_.setInterval(kStatusMs);
  QObject::connect(&tmrIcomStatus_, &QTimer::timeout, &tmrIcomStatus_, [this] { tmrIcomStatus_Timer(); });
  tmrPump_.setInterval(kPumpMs);
  QObject::connect(&tmrPump_, &QTimer::timeout, &tmrPump_, [this] { Pump(); });
}

IcomKit::~IcomKit() = default;

const RadioTraits& IcomKit::Traits() const {
  // The band commands count 60 m among the bands, as a K4 does.
  static const RadioTraits traits{.Deck = {BandLayout::With60m, ModeLayout::Designed},
                                  .MacrosInHex = true,
                                  .HasVfoB = false,
                                  .LevelsAreHeights = true,
                                  .ScopeThroughHost = true};
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
                                    .Sender = link_.Sender(),
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
  toCommands(&IcomPanel::chkFunc_Click, &IcomCommands::chkFunc_Click);
  toCommands(&IcomPanel::chkMEM_Click, &IcomCommands::chkMEM_Click);
  toCommands(&IcomPanel::chkFIX_Click, &IcomCommands::chkFIX_Click);
  toCommands(&IcomPanel::cmdAGC_Click, &IcomCommands::cmdAGC_Click);
  toCommands(&IcomPanel::cmdFil_Click, &IcomCommands::cmdFil_Click);
  toCommands(&IcomPanel::cmdSpeed_Click, &IcomCommands::cmdSpeed_Click);
  toCommands(&IcomPanel::cboSpan_Click, &IcomCommands::cboSpan_Click);
  for (PacedSlider& slider : sliders_) ConnectSlider(slider);
  QObject::connect(panel, &IcomPanel::chkScan_Click, panel, [this](bool checked) {
    if (scan_) scan_->MainChkScan_Click(checked);
  });
}

void IcomKit::ConnectSlider(PacedSlider& slider) {
  QObject::connect(panel_.get(), slider.Changed, panel_.get(), [this, &slider](int value) {
    // The radio's own news ends what waited.
    if (state_.CivParserBusy) {
      slider.Value.Drop();
      return;
    }
    slider.Value.Put(value);
    SendSliders();
    if (slider.Value.Waits()) tmrPump_.start();
  });
}

void IcomKit::SendSliders() {
  for (PacedSlider& slider : sliders_) {
    if (const auto value = slider.Value.Due(parts_.Time.Now())) (commands_.*slider.Handler)(*value);
  }
}

void IcomKit::Pump() {
  SendSliders();
  link_.Pump();
  bool waits = link_.Closing();
  for (const PacedSlider& slider : sliders_) waits = waits || slider.Value.Waits();
  if (!waits) tmrPump_.stop();
}

void IcomKit::tmrIcomStatus_Timer() {
  memory_.tmrIcomStatus_Timer(parts_.Settings.AutoRef, state_.IcomActive);
  // A radio that does not report its own knob, and one whose memories or scan move it, is asked.
  link_.Sender().SendCiv("03", "", "?");
  link_.Sender().SendCiv("04", "", "?");
  link_.tmrAnswer_Timer();
  AskPanelState();
}

// All of it once the radio is known, then one a second in turn: what is turned at the radio itself shows.
void IcomKit::AskPanelState() {
  if (state_.RadioId.empty()) return;
  const int count = asked_ == 0 ? IcomCommands::kPanelStates : 1;
  for (int i = 0; i < count; ++i) commands_.AskPanelState(asked_++);
}

void IcomKit::RunChanged(bool serving) {
  panel_->setEnabled(serving);
  if (link_.Closing()) tmrPump_.start();
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
