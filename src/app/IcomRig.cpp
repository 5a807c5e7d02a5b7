#include "app/IcomRig.h"

namespace spectrino {

namespace {
constexpr int kStatusMs = 1000;
}

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
  toCommands(&IcomPanel::sldVol_Change, &IcomCommands::sldVol_Change);
  toCommands(&IcomPanel::sldSQL_Change, &IcomCommands::sldSQL_Change);
  toCommands(&IcomPanel::sldRFLevel_Change, &IcomCommands::sldRFLevel_Change);
  QObject::connect(panel, &IcomPanel::chkScan_Click, context,
                   [this](bool checked) { scan_->MainChkScan_Click(checked); });
}

void IcomRig::RunChanged(bool running) {
  const bool wanted = running && state_.IcomActive;
  if (wanted == tmrIcomStatus_.isActive()) return;
  if (!wanted) {
    tmrIcomStatus_.stop();
    return;
  }
  memory_.Restart();
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

void IcomRig::SetFixedMode(bool fixed) {
  if (window_.Panel != nullptr) window_.Panel->SetFixedMode(fixed);
}

}  // namespace spectrino
