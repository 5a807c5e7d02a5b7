#include "display/StatusInset.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "display/StatusPainter.h"

namespace spectrino {
namespace {

// Logical pixels.
constexpr double kEdgeReach = 4;
constexpr double kGripReach = 2;

MiniPanPart PartAt(double x, double low, double high, double scale) {
  const double outside = kEdgeReach * scale;
  const double inside = std::min(outside, (high - low) / 4);
  if (x < low - outside || x > high + outside) return MiniPanPart::Beside;
  if (x < low + inside) return MiniPanPart::LowEdge;
  return x > high - inside ? MiniPanPart::HighEdge : MiniPanPart::Passband;
}

MiniPanHit HitOf(QPointF at, const MiniPanPlace& place, const MiniPan& pan, double scale) {
  const double spanMHz = pan.HighMHz - pan.LowMHz;
  if (!place.Box.contains(at.toPoint()) || !(pan.LowMHz > 0) || !(spanMHz > 0)) return {};
  const QRect& trace = place.Trace;
  const double share = std::clamp((at.x() - trace.left()) / trace.width(), 0.0, 1.0);
  MiniPanHit hit{.Part = MiniPanPart::Beside,
                 .FreqMHz = pan.LowMHz + share * spanMHz,
                 .HzPerPixel = spanMHz * 1e6 / trace.width(),
                 .Picture = trace.united(place.History)};
  if (!pan.History.empty() && !pan.History.front().empty()) {
    const std::vector<float>& levels = pan.History.front();
    const auto count = static_cast<double>(levels.size());
    hit.Level = levels[static_cast<std::size_t>(std::min(share * count, count - 1))];
  }
  if (trace.contains(at.toPoint()) && pan.PassbandHighMHz > pan.PassbandLowMHz)
    hit.Part = PartAt(at.x(), MiniPanX(trace, pan, pan.PassbandLowMHz),
                      MiniPanX(trace, pan, pan.PassbandHighMHz), scale);
  return hit;
}

}  // namespace

bool StatusInset::Set(StatusArea area, double lowMHz, double highMHz) {
  if (!area.Shown && !area_.Shown) return false;
  const bool outside = area.Shown != area_.Shown || area.ScaleLeft != area_.ScaleLeft;
  area_ = std::move(area);
  tunedLowMHz_ = lowMHz;
  tunedHighMHz_ = highMHz;
  changed_ = pictureStale_ = placesStale_ = true;
  return outside;
}

const StatusPlaces& StatusInset::Places(PlotBasis& basis) {
  if (std::exchange(placesStale_, false)) {
    places_ = PlaceStatus(basis.Layout, basis.Scale.Geometry, tunedLowMHz_, tunedHighMHz_, area_, basis.Texts,
                          basis.LabelFont, places_.Side);
    pictureStale_ = true;
  }
  return places_;
}

/// It changes less often than the trace beneath it: it is kept as a picture.
void StatusInset::Paint(QPainter& painter, PlotBasis& basis) {
  if (!area_.Shown) return;
  const QRect box = Places(basis).Bounds();
  drawn_ += box;
  if (!box.isEmpty()) {
    if (std::exchange(pictureStale_, false) || picture_.size() != box.size()) {
      if (picture_.size() != box.size()) picture_ = QImage(box.size(), QImage::Format_ARGB32_Premultiplied);
      picture_.fill(Qt::transparent);
      QPainter inset(&picture_);
      inset.translate(-box.topLeft());
      DrawStatus(basis.PenOf(inset), places_, area_, basis.LabelFont);
    }
    painter.drawImage(box.topLeft(), picture_);
  }
  DrawScaleEnds(basis.PenOf(painter), area_, basis.LabelFont);
}

QRegion StatusInset::TakeChanged(PlotBasis& basis) {
  const QRect box = area_.Shown ? Places(basis).Bounds() : QRect();
  QRegion changed = std::exchange(drawn_, box);
  if (!std::exchange(changed_, false) && changed == drawn_) return {};
  return changed += box;
}

bool StatusInset::GripAt(QPointF at, PlotBasis& basis) {
  if (!area_.Shown) return false;
  const int reach = basis.Layout.Px(kGripReach);
  const QRect& grip = Places(basis).Grip;
  return !grip.isEmpty() && grip.adjusted(-reach, -reach, reach, reach).contains(at.toPoint());
}

MiniPanHit StatusInset::MiniPanAt(QPointF at, PlotBasis& basis) {
  if (!area_.Shown) return {};
  const StatusPlaces& places = Places(basis);
  MiniPanHit hit = HitOf(at, places.Main, area_.Main, basis.Layout.Scale);
  if (hit.Part != MiniPanPart::None) return hit;
  hit = HitOf(at, places.Sub, area_.Sub, basis.Layout.Scale);
  hit.Sub = true;
  return hit;
}

}  // namespace spectrino
