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
constexpr double kShareOfPlot = 0.44;

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

void PlacePans(StatusPlaces& places, const PlotLayout& layout, const QRect& room, const StatusArea& area,
               int textHeight) {
  QRect main = room.adjusted(layout.Px(3), layout.Px(3), -layout.Px(3), 0);
  if (area.Sub.Shown) {
    main.setWidth(room.width() / 2 - layout.Px(6));
    places.Sub = PlacePan(layout, main.translated(main.width() + layout.Px(6), 0), textHeight);
  }
  places.Main = PlacePan(layout, main, textHeight);
}

}  // namespace

StatusPlaces PlaceStatus(const PlotLayout& layout, const FrameGeometry& geometry, double lowMHz,
                         double highMHz, const StatusArea& area, TextCache& texts, const QFont& font,
                         InsetSide last) {
  StatusPlaces places;
  if (!area.Shown || !geometry.Valid()) return places;
  const int textHeight = texts.Get("A", font).Size.height();
  const int top = layout.TopMargin + layout.Px(kAboveInsetPx);
  const int height = std::min(layout.Px(kTallestPx), layout.PlotBottom() - top - layout.Px(kBelowInsetPx));
  const double plotWidth = layout.PlotWidth;
  const int wanted = std::min(layout.Px(kWidestPx), static_cast<int>(plotWidth * kShareOfPlot));
  const auto widthOf = [&](double room) { return std::min(wanted, static_cast<int>(room) - layout.Px(8)); };
  const double roomLeft = std::clamp(geometry.FrequencyToPixel(lowMHz), 0.0, plotWidth);
  const double roomRight = plotWidth - std::clamp(geometry.FrequencyToPixel(highMHz), 0.0, plotWidth);
  const bool stays =
      last != InsetSide::None && widthOf(last == InsetSide::Left ? roomLeft : roomRight) == wanted;
  const bool onLeft = stays ? last == InsetSide::Left : roomLeft >= roomRight;
  const auto boxOn = [&](bool left, double room) {
    const int width = widthOf(room);
    const int x = left ? layout.Px(kEdgePx) : layout.PlotWidth - width - layout.Px(kEdgePx);
    return QRect(x, top, width, height);
  };
  const QRect box = boxOn(onLeft, onLeft ? roomLeft : roomRight);
  if (height < 2 * textHeight || box.width() < layout.Px(kLeastWidthPx)) return places;

  places.Side = onLeft ? InsetSide::Left : InsetSide::Right;
  places.Rows = FillRows(RowFiller(layout, texts, font, box.width()), area);
  const int most = height / textHeight;
  if (static_cast<int>(places.Rows.size()) > most) places.Rows.resize(static_cast<std::size_t>(most));
  const int rowsHeight = static_cast<int>(places.Rows.size()) * textHeight;
  places.Texts = {box.left(), box.top(), box.width(), rowsHeight};
  if (area.NeedsDualPanOff || !area.Main.Shown) return places;

  const QRect below = box.adjusted(0, rowsHeight, 0, 0);
  const QRect beside = boxOn(!onLeft, onLeft ? roomRight : roomLeft);
  const int least = layout.Px(kLeastPanPx);
  if (below.height() >= least)
    PlacePans(places, layout, below, area, textHeight);
  else if (beside.width() >= layout.Px(kLeastWidthPx) && beside.height() >= least)
    PlacePans(places, layout, beside, area, textHeight);
  return places;
}

double MiniPanX(const QRect& trace, const MiniPan& pan, double mhz) {
  const double span = pan.HighMHz - pan.LowMHz;
  if (!(span > 0)) return trace.left();
  return std::clamp(trace.left() + (mhz - pan.LowMHz) / span * trace.width(),
                    static_cast<double>(trace.left()), static_cast<double>(trace.right()));
}

}  // namespace spectrino
