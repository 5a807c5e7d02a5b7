// Between the parser and the panel: a control that the operator has just moved stays where it is until the
// radio answered that, or refused it. Shows nothing itself.
#pragma once

#include <array>
#include <optional>

#include "civ/AskedValue.h"
#include "civ/CivState.h"
#include "civ/IcomPanelView.h"
#include "platform/Clock.h"

namespace spectrino {

class HeldPanel final : public IcomPanelView {
 public:
  /// All outlive it.
  HeldPanel(IcomPanelView& panel, CivState& state, const Clock& clock)
      : panel_(panel), state_(state), clock_(clock) {}

  /// The operator moved a control to a value: level, entry, or 0 and 1. index: of Function.
  void Asked(PanelControl control, int value, int index = 0);
  /// Shows what the radio told meanwhile where it has refused. Call it every few milliseconds while true
  /// comes back.
  bool Pump();

  // IcomPanelView
  void SetAfSlider(int value) override { Tell(PanelControl::AfLevel, value); }
  void SetSquelchSlider(int value) override { Tell(PanelControl::Squelch, value); }
  void SetRefLevelSlider(int value) override { Tell(PanelControl::RefLevel, value); }
  void SelectSpan(int entry) override { Tell(PanelControl::Span, entry); }
  void SetSpanLabel(const std::string& text) override { panel_.SetSpanLabel(text); }
  void ShowSpanList(bool list) override { panel_.ShowSpanList(list); }
  void SetFixedMode(bool fixed) override { Tell(PanelControl::Fixed, fixed ? 1 : 0); }
  void SetFunction(int index, bool on) override { Tell(PanelControl::Function, on ? 1 : 0, index); }

 private:
  static constexpr std::size_t kFunctions = 6;
  static constexpr std::size_t kControls = static_cast<std::size_t>(PanelControl::Function) + kFunctions;

  struct Held {
    AskedValue Asked;
    std::optional<int> Waiting;  ///< what the radio told meanwhile
  };

  void Tell(PanelControl control, int value, int index = 0);
  void Show(std::size_t place, int value);

  IcomPanelView& panel_;
  CivState& state_;
  const Clock& clock_;
  std::array<Held, kControls> held_;
};

}  // namespace spectrino
