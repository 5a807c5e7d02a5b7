#include "civ/HeldPanel.h"

#include <cassert>
#include <utility>

#include "state/BusyGuard.h"

namespace spectrino {
namespace {

std::size_t Place(PanelControl control, int index) {
  return static_cast<std::size_t>(control) + static_cast<std::size_t>(index);
}

}  // namespace

void HeldPanel::Asked(PanelControl control, int value, int index) {
  assert(Place(control, index) < kControls);
  Held& held = held_[Place(control, index)];
  held.Asked.Ask(value, clock_.Now());
  held.Waiting.reset();
}

void HeldPanel::Tell(PanelControl control, int value, int index) {
  Held& held = held_[Place(control, index)];
  if (held.Asked.Told(value, clock_.Now())) {
    held.Waiting.reset();
    Show(Place(control, index), value);
  } else {
    held.Waiting = value;
  }
}

bool HeldPanel::Pump() {
  bool waits = false;
  // The handlers of the controls send nothing while the parser moves them; this is the same, a little later.
  BusyGuard busy{state_.CivParserBusy};
  for (std::size_t place = 0; place < kControls; ++place) {
    Held& held = held_[place];
    if (held.Asked.Waits(clock_.Now())) {
      waits = true;
    } else if (busy && held.Waiting) {
      Show(place, *std::exchange(held.Waiting, std::nullopt));
    }
  }
  return waits;
}

void HeldPanel::Show(std::size_t place, int value) {
  switch (static_cast<PanelControl>(place)) {
    case PanelControl::AfLevel:
      return panel_.SetAfSlider(value);
    case PanelControl::Squelch:
      return panel_.SetSquelchSlider(value);
    case PanelControl::RefLevel:
      return panel_.SetRefLevelSlider(value);
    case PanelControl::Span:
      return panel_.SelectSpan(value);
    case PanelControl::Fixed:
      return panel_.SetFixedMode(value != 0);
    case PanelControl::Function:
      break;
  }
  panel_.SetFunction(static_cast<int>(place - static_cast<std::size_t>(PanelControl::Function)), value != 0);
}

}  // namespace spectrino
