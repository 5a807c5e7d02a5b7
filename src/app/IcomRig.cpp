#include "app/IcomRig.h"

#include <memory>
#include <utility>

namespace spectrino {

namespace {
constexpr int kStatusMs = 1000;
constexpr int kSliderMs = 30;
}  // namespace

IcomRig::IcomRig(const Parts& parts)
    : parts_(parts),
      link_({.Port = port_,
             .State = state_,
             .Panel = *this,
             .Store = parts.Store,
             .Time = parts.Time,
             .Pump = parts.Pump,
             .User = parts.User}),
      commands_(state_, link_.Sender(), parts.Pump),
      backend_(state_, link_, commands_, parts.Store, parts.Bands),
      memory_(state_, commands_, parts.Store, parts.Bands) {
  tmrIcomStatus_.setInterval(kStatusMs);
  QObject::connect(&tmrIcomStatus_, &QTimer::timeout, [this] {
    memory_.tmrIcomStatus_Timer(autoRef_, state_.IcomActive);
    // A radio that does not report its own knob, and one whose memories or scan move it, is asked.
    link_.Sender().SendCiv("03", "", "?");
    link_.Sender().SendCiv("04", "", "?");
    link_.tmrAnswer_Timer();
    AskPanelState();
  });
}

void IcomRig::Attach(const WindowSide& window) {
  window_ = window;
  scanWindow_.emplace([this] { return window_.Window; }, *window.Panel);
  scan_.emplace(ScanCommands::Parts{.State = state_,
                                    .Sender = link_.Sender(),
                                    .Store = parts_.Store,
                                    .Main = *window.Commands,
                                    .Windows = *scanWindow_});
  ConnectPanel();
}

void IcomRig::Detach() {
  window_ = {};
}

// A drag tells a value for every pixel; the line carries a hundred frames a second. The last one always goes.
void IcomRig::ConnectSlider(void (IcomPanel::*changed)(int), void (IcomCommands::*handler)(int)) {
  auto* pace = new QTimer(window_.Panel);
  pace->setSingleShot(true);
  pace->setInterval(kSliderMs);
  auto waiting = std::make_shared<std::optional<int>>();
  QObject::connect(pace, &QTimer::timeout, pace, [this, pace, waiting, handler] {
    if (!*waiting) return;
    (commands_.*handler)(*std::exchange(*waiting, std::nullopt));
    pace->start();
  });
  QObject::connect(window_.Panel, changed, pace, [this, pace, waiting, handler](int value) {
    if (state_.CivParserBusy) {
      // The radio's own news ends what waited.
      waiting->reset();
    } else if (pace->isActive()) {
      *waiting = value;
    } else {
      (commands_.*handler)(value);
      pace->start();
    }
  });
}

void IcomRig::ConnectPanel() {
  IcomPanel* panel = window_.Panel;
  QWidget* context = window_.Window;
  const auto toCommands = [&](auto signal, auto handler) {
    QObject::connect(panel, signal, context,
                     [this, handler](auto... value) { (commands_.*handler)(value...); });
  };
  toCommands(&IcomPanel::chkFunc_Click, &IcomCommands::chkFunc_Click);
  toCommands(&IcomPanel::chkMEM_Click, &IcomCommands::chkMEM_Click);
  toCommands(&IcomPanel::chkFIX_Click, &IcomCommands::chkFIX_Click);
  toCommands(&IcomPanel::cmdAGC_Click, &IcomCommands::cmdAGC_Click);
  toCommands(&IcomPanel::cmdFil_Click, &IcomCommands::cmdFil_Click);
  toCommands(&IcomPanel::cmdSpeed_Click, &IcomCommands::cmdSpeed_Click);
  toCommands(&IcomPanel::cboSpan_Click, &IcomCommands::cboSpan_Click);
  ConnectSlider(&IcomPanel::sldVol_Change, &IcomCommands::sldVol_Change);
  ConnectSlider(&IcomPanel::sldSQL_Change, &IcomCommands::sldSQL_Change);
  ConnectSlider(&IcomPanel::sldRFLevel_Change, &IcomCommands::sldRFLevel_Change);
  QObject::connect(panel, &IcomPanel::chkScan_Click, context,
                   [this](bool checked) { scan_->MainChkScan_Click(checked); });
}

// All of it once the radio is known, then one a second in turn: what is turned at the radio itself shows.
void IcomRig::AskPanelState() {
  if (state_.RadioId.empty()) return;
  const int count = asked_ == 0 ? IcomCommands::kPanelStates : 1;
  for (int i = 0; i < count; ++i) commands_.AskPanelState(asked_++);
}

void IcomRig::RunChanged(bool running) {
  const bool wanted = running && state_.IcomActive;
  if (window_.Panel != nullptr) window_.Panel->setEnabled(wanted);
  if (wanted == tmrIcomStatus_.isActive()) return;
  if (!wanted) {
    tmrIcomStatus_.stop();
    return;
  }
  memory_.Restart();
  asked_ = 0;
  AskPanelState();
  tmrIcomStatus_.start();
}

void IcomRig::SetAfSlider(int value) {
  if (window_.Panel != nullptr) window_.Panel->SetAfSlider(value);
}

void IcomRig::SetSquelchSlider(int value) {
  if (window_.Panel != nullptr) window_.Panel->SetSquelchSlider(value);
}

void IcomRig::SetRefLevelSlider(int value) {
  if (window_.Panel != nullptr) window_.Panel->SetRefLevelSlider(value);
}

void IcomRig::SelectSpan(int entry) {
  if (window_.Panel != nullptr) window_.Panel->SelectSpan(entry);
}

void IcomRig::SetSpanLabel(const std::string& text) {
  if (window_.Panel != nullptr) window_.Panel->SetSpanLabel(text);
}

void IcomRig::ShowSpanList(bool list) {
  if (window_.Panel != nullptr) window_.Panel->ShowSpanList(list);
}

void IcomRig::SetFunction(int index, bool on) {
  if (window_.Panel != nullptr) window_.Panel->SetFunction(index, on);
}

void IcomRig::SetFixedMode(bool fixed) {
  if (window_.Panel != nullptr) window_.Panel->SetFixedMode(fixed);
}

}  // namespace spectrino
