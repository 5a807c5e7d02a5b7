// The three sliders of the Icom's panel in the operator's hand: how often a moving one is sent, and when its
// level is read back. Holds no widget.
#pragma once

#include <array>
#include <chrono>

#include "civ/HeldPanel.h"
#include "civ/IcomCommands.h"
#include "platform/Clock.h"
#include "state/Pacer.h"

namespace spectrino {

class IcomSliders {
 public:
  /// A drag tells a value for every pixel; the line carries a hundred frames a second.
  static constexpr std::chrono::milliseconds kSendPace{30};
  /// A value stands when it has not changed for so long, or when the slider is let go.
  static constexpr std::chrono::milliseconds kCommitTime{150};

  /// All outlive it.
  IcomSliders(IcomCommands& commands, HeldPanel& panel, const Clock& clock)
      : commands_(commands), panel_(panel), clock_(clock) {}

  /// slider: AfLevel, Squelch or RefLevel. value: as its handler takes it.
  void Move(PanelControl slider, int value);
  void Release(PanelControl slider);
  /// Sends what is due. Call it every few milliseconds while true comes back.
  bool Pump();

 private:
  struct Slider {
    PanelControl Control;
    void (IcomCommands::*Send)(int);
    void (IcomCommands::*ReadBack)();
    PacedValue<int> Value{kSendPace};
    Pacer Still{kCommitTime};  ///< ready when the value stands
    bool Moved = false;        ///< since it was read back
  };

  [[nodiscard]] Slider& At(PanelControl control);
  void Commit(Slider& slider);

  IcomCommands& commands_;
  HeldPanel& panel_;
  const Clock& clock_;
  std::array<Slider, 3> sliders_{
      Slider{PanelControl::AfLevel, &IcomCommands::sldVol_Change, &IcomCommands::ReadAfLevel},
      Slider{PanelControl::Squelch, &IcomCommands::sldSQL_Change, &IcomCommands::ReadSquelch},
      Slider{PanelControl::RefLevel, &IcomCommands::sldRFLevel_Change, &IcomCommands::ReadRefLevel}};
};

}  // namespace spectrino
