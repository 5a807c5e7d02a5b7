#include "display/InsetPlace.h"

#include <algorithm>

namespace spectrino {
namespace {

// Logical pixels.
constexpr double kNarrowestColumn = 220;
constexpr double kWidestColumn = 380;
constexpr double kLowestRow = 64;
constexpr double kTallestRow = 170;
constexpr double kLeastPlotWidth = 240;
constexpr double kLeastBelowRow = 100;
constexpr double kLeastWaterfall = 72;
// What is left of the picture where nobody asked for the place.
constexpr double kGoodPlotWidth = 600;
constexpr double kGoodBelowRow = 300;
constexpr double kWide = 1.2;  // width to height

constexpr double kColumnShare = 0.24;
constexpr double kRowShare = 0.28;
constexpr double kOutlineShare = 0.2;

int Sized(const PlotLayout& layout, int whole, double share, double least, double most) {
  return std::clamp(static_cast<int>(whole * share), layout.Px(least), layout.Px(most));
}

int ColumnOf(const PlotLayout& layout) {
  return Sized(layout, layout.PictureWidth, kColumnShare, kNarrowestColumn, kWidestColumn);
}

int RowOf(const PlotLayout& layout) {
  return Sized(layout, layout.Height, kRowShare, kLowestRow, kTallestRow);
}

bool HasColumn(const PlotLayout& bare, double leastPlot) {
  return bare.PictureWidth - bare.LabelMargin - ColumnOf(bare) >= bare.Px(leastPlot);
}

bool HasRow(const PlotLayout& bare, double leastBelow) {
  return bare.Height - RowOf(bare) >= bare.Px(leastBelow);
}

InsetPlace Resolved(InsetPlace wanted, const PlotLayout& bare) {
  if (wanted == InsetPlace::OverPlot) return wanted;
  if (wanted == InsetPlace::Beside && HasColumn(bare, kLeastPlotWidth)) return wanted;
  if (wanted == InsetPlace::Above && HasRow(bare, kLeastBelowRow)) return wanted;
  if (wanted == InsetPlace::Automatic) {
    const bool wide = bare.PictureWidth >= kWide * bare.Height;
    const bool beside = HasColumn(bare, kGoodPlotWidth);
    if (beside && wide) return InsetPlace::Beside;
    if (HasRow(bare, kGoodBelowRow)) return InsetPlace::Above;
    if (beside) return InsetPlace::Beside;
  }
  return bare.WaterfallHeight >= bare.Px(kLeastWaterfall) ? InsetPlace::OverWaterfall : InsetPlace::OverPlot;
}

}  // namespace

InsetRoom RoomForInset(InsetPlace wanted, const PlotLayout& bare) {
  const InsetPlace place = Resolved(wanted, bare);
  return {place, place == InsetPlace::Beside ? ColumnOf(bare) : 0,
          place == InsetPlace::Above ? RowOf(bare) : 0};
}

InsetPlace InsetPlaceAt(QPointF at, const PlotLayout& layout) {
  if (at.x() >= layout.PictureWidth * (1 - kOutlineShare)) return InsetPlace::Beside;
  if (at.y() < layout.Height * kOutlineShare) return InsetPlace::Above;
  return at.y() >= layout.WaterfallTop ? InsetPlace::OverWaterfall : InsetPlace::OverPlot;
}

QRect InsetOutline(InsetPlace place, const PlotLayout& layout) {
  const int width = layout.PictureWidth;
  const int column = static_cast<int>(width * kOutlineShare);
  switch (place) {
    case InsetPlace::Beside:
      return {width - column, 0, column, layout.Height};
    case InsetPlace::Above:
      return {0, 0, width, static_cast<int>(layout.Height * kOutlineShare)};
    case InsetPlace::OverWaterfall:
      return {0, layout.WaterfallTop, layout.PlotWidth, layout.WaterfallHeight};
    default:
      return {0, layout.TopMargin, layout.PlotWidth, layout.PlotHeight};
  }
}

InsetPlace NextInsetPlace(InsetPlace place, const PlotLayout& bare) {
  constexpr int kFirst = static_cast<int>(InsetPlace::OverPlot);
  constexpr int kCount = static_cast<int>(InsetPlace::OverWaterfall) - kFirst + 1;
  int next = static_cast<int>(place);
  do {
    next = kFirst + (next - kFirst + 1) % kCount;
  } while (Resolved(static_cast<InsetPlace>(next), bare) != static_cast<InsetPlace>(next));
  return static_cast<InsetPlace>(next);
}

}  // namespace spectrino
