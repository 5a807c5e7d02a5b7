// Everything that an Icom on its own serial line needs, wired: port, link, and the panel's side of the
// parser. Ownership and wiring only.
#pragma once

#include "civ/IcomLink.h"
#include "platform/qt/QtSerialPort.h"

namespace spectrino {

class IcomRig final : private IcomPanelView {
 public:
  IcomRig(SettingsStore& store, Notifier& user, EventPump& pump, const Clock& time)
      : link_({.Port = port_,
               .State = state_,
               .Panel = *this,
               .Store = store,
               .Time = time,
               .Pump = pump,
               .User = user}) {}

  [[nodiscard]] IcomLink& Link() { return link_; }
  [[nodiscard]] const CivState& State() const { return state_; }

 private:
  // There is no panel for these yet: what the radio tells is in the state.
  void SetAfSlider(int) override {}
  void SetSquelchSlider(int) override {}
  void SetRefLevelSlider(int) override {}
  void SelectSpan(int) override {}
  void SetSpanLabel(const std::string&) override {}
  void ShowSpanList(bool) override {}
  void SetFixedMode(bool) override {}

  CivState state_;
  QtSerialPort port_;
  IcomLink link_;
};

}  // namespace spectrino
