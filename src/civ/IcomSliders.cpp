#include "civ/IcomSliders.h"

#include <algorithm>
#include <cassert>

namespace spectrino {

IcomSliders::Slider& IcomSliders::At(PanelControl control) {
  const auto slider = std::ranges::find(sliders_, control, &Slider::Control);
  assert(slider != sliders_.end());
  return *slider;
}

void IcomSliders::Move(PanelControl control, int value) {
  Slider& slider = At(control);
  panel_.Asked(control, value);
  slider.Value.Put(value);
  slider.Still.Restart(clock_.Now());
  slider.Moved = true;
  Pump();
}

void IcomSliders::Release(PanelControl control) {
  Slider& slider = At(control);
  if (slider.Moved) Commit(slider);
}

bool IcomSliders::Pump() {
  bool waits = false;
  const auto now = clock_.Now();
  for (Slider& slider : sliders_) {
    if (const auto value = slider.Value.Due(now)) (commands_.*slider.Send)(*value);
    if (slider.Moved && slider.Still.Ready(now)) Commit(slider);
    waits = waits || slider.Moved;
  }
  return waits;
}

void IcomSliders::Commit(Slider& slider) {
  if (const auto value = slider.Value.TakeNow(clock_.Now())) (commands_.*slider.Send)(*value);
  slider.Moved = false;
  (commands_.*slider.ReadBack)();
}

}  // namespace spectrino
