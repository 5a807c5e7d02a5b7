// The grip of the radio's status inset: a click takes it to the next place, a drag to where it is dropped.
// Decides on no room: what a place takes is the display's business.
#pragma once

#include <QPointF>
#include <functional>
#include <optional>

#include "display/PanDisplay.h"
#include "display/ui/ScopeWidget.h"

namespace spectrino {

class InsetGrip {
 public:
  /// display and scope outlive it. place: what the operator chose.
  InsetGrip(PanDisplay& display, ScopeWidget* scope, std::function<void(InsetPlace)> place)
      : display_(display), scope_(scope), place_(std::move(place)) {}

  /// True over the grip: the pointer's form and its note are shown then.
  bool Hover(QPointF at);
  /// Whether the press was on the grip. Right: the place is found by the room again.
  bool Press(QPointF at, Qt::MouseButton button);
  void Drag(QPointF from, QPointF at);
  void Release();
  [[nodiscard]] bool Holding() const { return held_; }

 private:
  PanDisplay& display_;
  ScopeWidget* scope_;
  std::function<void(InsetPlace)> place_;
  bool held_ = false;
  std::optional<InsetPlace> over_;  ///< while it is dragged
};

}  // namespace spectrino
