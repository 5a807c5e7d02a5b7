#include "app/InsetGrip.h"

#include <utility>

namespace spectrino {
namespace {
constexpr double kDragBegins = 6;  // logical pixels
}

bool InsetGrip::Hover(QPointF at) {
  if (!display_.At(at).OnInsetGrip()) return false;
  if (scope_->cursor().shape() != Qt::SizeAllCursor) scope_->setCursor(Qt::SizeAllCursor);
  display_.SetPointerNote("drag or click: another place, right click: automatic");
  return true;
}

bool InsetGrip::Press(QPointF at, Qt::MouseButton button) {
  if (!display_.At(at).OnInsetGrip()) return false;
  held_ = button == Qt::LeftButton;
  if (button == Qt::RightButton) place_(InsetPlace::Automatic);
  return true;
}

void InsetGrip::Drag(QPointF from, QPointF at) {
  if (!held_ || (!over_ && (at - from).manhattanLength() < kDragBegins)) return;
  const PlotLayout& layout = display_.Layout();
  over_ = InsetPlaceAt(at * layout.Scale, layout);
  display_.ShowInsetTarget(over_);
}

void InsetGrip::Release() {
  if (!std::exchange(held_, false)) return;
  const auto dropped = std::exchange(over_, std::nullopt);
  display_.ShowInsetTarget(std::nullopt);
  display_.SetPointerNote({});
  place_(dropped.value_or(NextInsetPlace(display_.Layout().Inset, display_.BareLayout())));
}

}  // namespace spectrino
