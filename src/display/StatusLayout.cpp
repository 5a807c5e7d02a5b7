#include "display/StatusLayout.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "display/Colours.h"

namespace spectrino {
namespace {

// Logical pixels.
constexpr double kWidestPx = 460;
constexpr double kTallestPx = 190;
constexpr double kLeastWidthPx = 120;
constexpr double kLeastPanPx = 40;
constexpr double kLabelledPanPx = 84;
constexpr double kEdgePx = 4;
constexpr double kWordGapPx = 7;
constexpr double kAboveInsetPx = 20;  // the information line
constexpr double kBelowInsetPx = 16;  // the span's ends
constexpr double kWaterfallEdgePx = 2;
constexpr double kInsetGripPx = 12;
constexpr double kColumnPanPx = 170;
constexpr double kLeastRowTextPx = 190;
constexpr double kMostRowTextPx = 400;

constexpr double kShareOfPlot = 0.44;
constexpr double kColumnPanShare = 0.28;
constexpr double kRowTextShare = 0.32;

/// Words one after another; one that does not fit begins a row.
class RowFiller {
 public:
  RowFiller(const PlotLayout& layout, TextCache& texts, const QFont& font, int width)
      : layout_(layout), texts_(texts), font_(font), width_(width) {}

  void BeginLine() {
    if (!rows_.empty() && rows_.back().empty()) return;
    rows_.emplace_back();
    x_ = layout_.Px(kEdgePx);
  }
  void Add(const std::string& text, QRgb colour) {
    if (text.empty()) return;
    const int textWidth = texts_.Get(text, font_).Size.width();
    if (x_ + textWidth > width_ && !rows_.back().empty()) {
      BeginLine();
      x_ += layout_.Px(kEdgePx);
    }
    rows_.back().push_back({text, colour, x_});
    x_ += textWidth + layout_.Px(kWordGapPx);
  }
  [[nodiscard]] std::vector<StatusRow> Take() { return std::move(rows_); }

 private:
  const PlotLayout& layout_;
  TextCache& texts_;
  const QFont& font_;
  int width_;
  int x_ = 0;
  std::vector<StatusRow> rows_;
};

/// The words of a receiver line, so that it may break between them.
void AddWords(RowFiller& rows, const std::string& line, QRgb colour) {
  std::size_t begin = 0;
  while (begin < line.size()) {
    const std::size_t end = std::min(line.find(' ', begin), line.size());
    rows.Add(line.substr(begin, end - begin), colour);
    begin = end + 1;
  }
}

std::vector<StatusRow> FillRows(RowFiller rows, const StatusArea& area) {
  // First: in a low window the last rows find no room.
  if (area.NeedsDualPanOff) {
    for (const char* text : {"Operation requires", "DUAL Pan to be OFF"}) {
      rows.BeginLine();
      rows.Add(text, status_colour::kAmber);
    }
  }
  rows.BeginLine();
  rows.Add(area.Transmitting ? "TX" : "", status_colour::kRed);
  rows.Add(area.Test ? "TEST" : "", status_colour::kRed);
  rows.Add("VOX", area.VoxOn ? status_colour::kAmber : status_colour::kQuiet);
  rows.Add(area.Antenna, status_colour::kBright);
  const QRgb splitColour = area.SplitOn ? status_colour::kAmber : status_colour::kQuiet;
  rows.Add(area.Split, splitColour);
  rows.Add(area.SplitOffset, splitColour);
  rows.Add(area.RitXit, status_colour::kAmber);
  rows.Add(area.Receivers, status_colour::kBright);
  rows.Add(area.Bset ? "BSET" : "", status_colour::kAmber);
  rows.BeginLine();
  rows.Add("A", status_colour::kBright);
  rows.Add(area.MainFreq, status_colour::kBright);
  rows.Add(area.MainFilter, status_colour::kAmber);
  rows.Add(area.FilterText, status_colour::kQuiet);
  AddWords(rows, area.MainLine, status_colour::kBright);
  rows.BeginLine();
  rows.Add("B", status_colour::kBright);
  rows.Add(area.SubFreq, status_colour::kBright);
  rows.Add(area.SubFilter, status_colour::kAmber);
  AddWords(rows, area.SubLine, status_colour::kBright);
  return rows.Take();
}

MiniPanPlace PlacePan(const PlotLayout& layout, const QRect& box, int textHeight) {
  MiniPanPlace place;
  place.Box = box;
  place.Meter = {box.left() + layout.Px(14), box.top() + layout.Px(2), box.width() - layout.Px(18),
                 layout.Px(5)};
  place.Labelled = box.height() >= layout.Px(kLabelledPanPx);
  const int meterHeight = layout.Px(place.Labelled ? 8 : 11) + (place.Labelled ? textHeight : 0);
  const int historyHeight = std::min(MiniPan::kHistory * std::max(1, layout.Px(1)), box.height() / 3);
  place.Trace = box.adjusted(0, meterHeight, 0, -textHeight - historyHeight);
  if (place.Trace.height() < layout.Px(10)) {
    place.Trace = box.adjusted(0, meterHeight, 0, 0);
    return place;
  }
  place.History = {place.Trace.left(), place.Trace.bottom() + 1, place.Trace.width(), historyHeight};
  return place;
}

/// Side by side.
void PlacePans(StatusPlaces& places, const PlotLayout& layout, const QRect& room, const StatusArea& area,
               int textHeight) {
  QRect main = room.adjusted(layout.Px(3), layout.Px(3), -layout.Px(3), 0);
  if (area.Sub.Shown) {
    main.setWidth(room.width() / 2 - layout.Px(6));
    places.Sub = PlacePan(layout, main.translated(main.width() + layout.Px(6), 0), textHeight);
  }
  places.Main = PlacePan(layout, main, textHeight);
}

bool ShowsPans(const StatusArea& area) {
  return area.Main.Shown && !area.NeedsDualPanOff;
}

/// As many rows as fit, from the top left corner of a room, and the grip at its top right one.
void PlaceTexts(StatusPlaces& places, const PlotLayout& layout, const QRect& room, RowFiller rows,
                const StatusArea& area, int textHeight) {
  places.Rows = FillRows(std::move(rows), area);
  const int most = std::max(0, room.height() / textHeight);
  if (static_cast<int>(places.Rows.size()) > most) places.Rows.resize(static_cast<std::size_t>(most));
  places.Texts = {room.left(), room.top(), room.width(), static_cast<int>(places.Rows.size()) * textHeight};
  const int grip = layout.Px(kInsetGripPx);
  places.Grip = {room.left() + room.width() - grip, room.top(), grip, grip};
}

/// Pixels of the tuned signal.
struct StatusSpan {
  double LowPixel = 0;
  double HighPixel = 0;
};

/// What the texts of one room are made with.
struct StatusLayoutParts {
  const PlotLayout& Layout;
  const StatusArea& Area;
  TextCache& Texts;
  const QFont& Font;
  int TextHeight;

  [[nodiscard]] RowFiller Filler(int width) const {
    return {Layout, Texts, Font, width - Layout.Px(kInsetGripPx)};
  }
};

/// The mini-pans above, one below the other; what the texts say then never moves them.
StatusPlaces PlaceInColumn(const StatusLayoutParts& with) {
  const PlotLayout& layout = with.Layout;
  StatusPlaces places;
  const int edge = layout.Px(kEdgePx);
  QRect room(layout.Width + edge, edge, layout.PictureWidth - layout.Width - 2 * edge,
             layout.Height - 2 * edge);
  const int textTop = room.top();
  if (ShowsPans(with.Area)) {
    // The grip stands above them.
    room.setTop(room.top() + layout.Px(kInsetGripPx));
    const int panHeight =
        std::min(layout.Px(kColumnPanPx), static_cast<int>(layout.Height * kColumnPanShare));
    const QRect main(room.left(), room.top(), room.width(), panHeight);
    places.Main = PlacePan(layout, main, with.TextHeight);
    room.setTop(main.bottom() + 1 + edge);
    if (with.Area.Sub.Shown) {
      const QRect sub(room.left(), room.top(), room.width(), panHeight);
      places.Sub = PlacePan(layout, sub, with.TextHeight);
      room.setTop(sub.bottom() + 1 + edge);
    }
  }
  PlaceTexts(places, layout, room, with.Filler(room.width()), with.Area, with.TextHeight);
  places.Grip.moveTop(textTop);
  places.Side = InsetSide::Right;
  return places;
}

/// The texts at the left, the mini-pans in what is left of the width.
StatusPlaces PlaceInRow(const StatusLayoutParts& with) {
  const PlotLayout& layout = with.Layout;
  StatusPlaces places;
  const int edge = layout.Px(kEdgePx);
  const QRect room(edge, edge, layout.PictureWidth - 2 * edge, layout.RowAbove - 2 * edge);
  QRect texts = room;
  if (ShowsPans(with.Area)) {
    const int share = static_cast<int>(room.width() * kRowTextShare);
    texts.setWidth(std::clamp(share, layout.Px(kLeastRowTextPx), layout.Px(kMostRowTextPx)));
    PlacePans(places, layout, room.adjusted(texts.width(), 0, 0, 0), with.Area, with.TextHeight);
  }
  PlaceTexts(places, layout, texts, with.Filler(texts.width()), with.Area, with.TextHeight);
  places.Side = InsetSide::Left;
  return places;
}

/// Top and height of an inset over the plot, or at the foot of the waterfall: its newest lines are above.
std::pair<int, int> BandOf(const PlotLayout& layout) {
  if (layout.Inset != InsetPlace::OverWaterfall) {
    const int top = layout.TopMargin + layout.Px(kAboveInsetPx);
    return {top, std::min(layout.Px(kTallestPx), layout.PlotBottom() - top - layout.Px(kBelowInsetPx))};
  }
  const int edge = layout.Px(kWaterfallEdgePx);
  const int height = std::min(layout.Px(kTallestPx), layout.WaterfallHeight - 2 * edge);
  return {layout.Height - edge - height, height};
}

/// Beside the tuned signal.
StatusPlaces PlaceOver(const StatusLayoutParts& with, const StatusSpan& tuned, InsetSide last) {
  const PlotLayout& layout = with.Layout;
  StatusPlaces places;
  const auto [top, height] = BandOf(layout);
  const double plotWidth = layout.PlotWidth;
  const int wanted = std::min(layout.Px(kWidestPx), static_cast<int>(plotWidth * kShareOfPlot));
  const auto widthOf = [&](double room) { return std::min(wanted, static_cast<int>(room) - layout.Px(8)); };
  const double roomLeft = std::clamp(tuned.LowPixel, 0.0, plotWidth);
  const double roomRight = plotWidth - std::clamp(tuned.HighPixel, 0.0, plotWidth);
  const bool stays =
      last != InsetSide::None && widthOf(last == InsetSide::Left ? roomLeft : roomRight) == wanted;
  const bool onLeft = stays ? last == InsetSide::Left : roomLeft >= roomRight;
  const auto boxOn = [&, y = top, h = height](bool left, double room) {
    const int width = widthOf(room);
    const int x = left ? layout.Px(kEdgePx) : layout.PlotWidth - width - layout.Px(kEdgePx);
    return QRect(x, y, width, h);
  };
  const QRect box = boxOn(onLeft, onLeft ? roomLeft : roomRight);
  if (height < 2 * with.TextHeight || box.width() < layout.Px(kLeastWidthPx)) return places;

  places.Side = onLeft ? InsetSide::Left : InsetSide::Right;
  PlaceTexts(places, layout, box, with.Filler(box.width()), with.Area, with.TextHeight);
  if (!ShowsPans(with.Area)) return places;

  const QRect below = box.adjusted(0, places.Texts.height(), 0, 0);
  const QRect beside = boxOn(!onLeft, onLeft ? roomRight : roomLeft);
  const int least = layout.Px(kLeastPanPx);
  if (below.height() >= least)
    PlacePans(places, layout, below, with.Area, with.TextHeight);
  else if (beside.width() >= layout.Px(kLeastWidthPx) && beside.height() >= least)
    PlacePans(places, layout, beside, with.Area, with.TextHeight);
  return places;
}

}  // namespace

StatusPlaces PlaceStatus(const PlotLayout& layout, const FrameGeometry& geometry, double lowMHz,
                         double highMHz, const StatusArea& area, TextCache& texts, const QFont& font,
                         InsetSide last) {
  if (!area.Shown || !geometry.Valid()) return {};
  const StatusLayoutParts with{layout, area, texts, font, texts.Get("A", font).Size.height()};
  switch (layout.Inset) {
    case InsetPlace::Beside:
      return PlaceInColumn(with);
    case InsetPlace::Above:
      return PlaceInRow(with);
    default:
      return PlaceOver(with, {geometry.FrequencyToPixel(lowMHz), geometry.FrequencyToPixel(highMHz)}, last);
  }
}

double MiniPanX(const QRect& trace, const MiniPan& pan, double mhz) {
  const double span = pan.HighMHz - pan.LowMHz;
  if (!(span > 0)) return trace.left();
  return std::clamp(trace.left() + (mhz - pan.LowMHz) / span * trace.width(),
                    static_cast<double>(trace.left()), static_cast<double>(trace.right()));
}

}  // namespace spectrino
