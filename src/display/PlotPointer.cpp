#include "display/PlotPointer.h"

#include <cmath>
#include <cstddef>

namespace spectrino {
namespace {

constexpr double kRightStrip = 22;  // logical pixels

}  // namespace

/// Negative above the waterfall.
int PlotPointer::WaterfallRow() const {
  return static_cast<int>(std::floor(at_.y())) - basis_.Layout.WaterfallTop;
}

std::optional<int> PlotPointer::Column() const {
  const PlotLayout& layout = basis_.Layout;
  if (!basis_.Scale.Geometry.Valid() || at_.x() < 0 || at_.x() >= layout.PlotWidth ||
      at_.y() < layout.RowAbove || at_.y() >= layout.Height) {
    return std::nullopt;
  }
  return static_cast<int>(at_.x());
}

HoverLine PlotPointer::Line() const {
  const PlotLayout& layout = basis_.Layout;
  const int x = static_cast<int>(at_.x());
  const MiniPanHit hit = MiniPan();
  if (hit.Part != MiniPanPart::None) return {x, hit.Picture.top(), hit.Picture.bottom() + 1, hit.Picture};
  if (!Column()) return {x};
  return {x, layout.TopMargin, layout.WaterfallHeight > 0 ? layout.Height : layout.PlotBottom(), {}};
}

PlotFilterHit PlotPointer::Filter() const {
  if (MiniPan().Part != MiniPanPart::None) return {};
  return FilterGripAt(at_, basis_.Layout, basis_.Scale.Geometry, markers_);
}

bool PlotPointer::OnPicture() const {
  return Column().has_value() || MiniPan().Part != MiniPanPart::None;
}

float PlotPointer::Level() const {
  const MiniPanHit hit = MiniPan();
  if (hit.Part != MiniPanPart::None) return hit.Level;
  const auto column = Column();
  if (!column) return kUndrawnLevel;
  const int row = WaterfallRow();
  return row >= 0 ? waterfall_.LevelAt(*column, row)
                  : traces_.Levels().Trace[static_cast<std::size_t>(*column)];
}

std::string PlotPointer::Text() const {
  const ScaleState& scale = basis_.Scale;
  HoverPlace place{.FreqMHz = scale.Geometry.FrequencyAt(at_.x()),
                   .FrequencyKnown = scale.FrequencyKnown,
                   .Level = Level(),
                   .InDb = scale.Levels.InDb,
                   .TakenUtc = {},
                   .Segment = {}};
  const MiniPanHit hit = MiniPan();
  if (hit.Part != MiniPanPart::None) {
    place.FreqMHz = hit.FreqMHz;
    place.FrequencyKnown = true;
    return HoverText(place);
  }
  // Below the newest line another frequency may have stood here.
  const int row = WaterfallRow();
  if (const auto line = row >= 0 ? waterfall_.RowAt(row) : std::nullopt) {
    place.FreqMHz = waterfall_.FrequencyAt(at_.x(), row);
    place.TakenUtc = line->TakenUtc;
  }
  if (place.FrequencyKnown && row < 0) place.Segment = basis_.Plan.NameAt(place.FreqMHz);
  if (!place.FrequencyKnown) place.FreqMHz -= scale.LabelCentreMHz;
  return HoverText(place);
}

double PlotPointer::TuneFreqMHz() const {
  const PlotLayout& layout = basis_.Layout;
  const MiniPanHit hit = MiniPan();
  if (hit.Part != MiniPanPart::None) return hit.FreqMHz;
  if (!basis_.Scale.FrequencyKnown || at_.x() < 0 || at_.x() >= layout.PlotWidth || at_.y() < layout.RowAbove)
    return 0;
  const int row = WaterfallRow();
  if (row >= 0) return waterfall_.FrequencyAt(at_.x(), row);
  return basis_.Scale.Geometry.PixelToFrequency(at_.x(), at_.y(), layout.PlotBottom());
}

PlotAxis PlotPointer::Axis() const {
  const PlotLayout& layout = basis_.Layout;
  if (at_.x() < 0 || at_.x() >= layout.Width || at_.y() < 0) return PlotAxis::None;
  const bool beside = at_.x() >= layout.PlotWidth;
  if (at_.y() < layout.PlotBottom()) return beside ? PlotAxis::Level : PlotAxis::None;
  return beside || at_.y() >= layout.WaterfallTop ? PlotAxis::None : PlotAxis::Frequency;
}

bool PlotPointer::InRightStrip() const {
  const PlotLayout& layout = basis_.Layout;
  return at_.x() >= layout.Width - kRightStrip * layout.Scale && at_.x() < layout.Width;
}

}  // namespace spectrino
