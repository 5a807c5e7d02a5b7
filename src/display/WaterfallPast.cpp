#include "display/WaterfallPast.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>

#include "display/Colours.h"
#include "display/Overlays.h"

namespace spectrino {
namespace {

// Logical pixels.
constexpr double kPlaceWidth = 2;
constexpr double kLeastPlace = 6;
constexpr double kLabelTop = 8;

/// "4 min 10 s"
std::string DurationText(std::chrono::seconds time) {
  const auto count = std::max<std::chrono::seconds::rep>(0, time.count());
  const std::string seconds = std::to_string(count % 60) + " s";
  return count < 60 ? seconds : std::to_string(count / 60) + " min " + seconds;
}

}  // namespace

bool InTimeColumn(const PlotLayout& layout, QPointF at) {
  return layout.WaterfallHeight > 0 && at.x() >= layout.PlotWidth && at.x() < layout.Width &&
         at.y() >= layout.WaterfallTop && at.y() < layout.Height;
}

void WaterfallPast::LayOut(const PlotBasis& basis) {
  const DisplayOptions& options = basis.Options;
  join_.Set(options.WFSpeed, options.WFAverage);
  image_.SetEmptyColour(ColourAt(options.Colours, ColourIndex::Background));
  image_.SetFollow(options.WFFollow);
  image_.SetLook(options.Waterfall);
  image_.Resize(basis.Layout.PlotWidth, basis.Layout.WaterfallHeight);
}

void WaterfallPast::Clear() {
  past_.Clear();
  image_.Clear();
  join_.Restart();
  changed_ = true;
}

std::span<const float> WaterfallPast::RowLevels(const Frame& frame, const FrameGeometry& geometry,
                                                const DisplayOptions& options) {
  const bool newest = options.WFLive && !frame.NewestLevel.empty();
  FrameGeometry placed = geometry;
  placed.PlotWidth = geometry_.PlotWidth;  // a row goes on in a wider window
  if (!(placed == geometry_)) join_.Restart();
  geometry_ = geometry;
  row_ = join_.Add(newest ? frame.NewestLevel : frame.DisplayLevel);
  return row_;
}

void WaterfallPast::Take(const Frame& frame, std::span<const float> columns, float unitsPerDb) {
  const SpectrumLine& line = frame.Line;
  const LevelRange colours = frame.Colours.value_or(LevelRange{line.BottomLevel, line.TopLevel});
  WaterfallRow row{.LeftMHz = geometry_.LeftMHz,
                   .RightMHz = geometry_.RightMHz,
                   .TakenUtc = line.TakenUtc,
                   .BottomLevel = colours.Bottom,
                   .TopLevel = colours.Top,
                   .UnitsPerDb = unitsPerDb,
                   .Dimmed = transmitting_};
  const int end = std::min(line.EndIndex(), static_cast<int>(row_.size()));
  const int first = std::min(line.FirstIndex, end);
  PastLine kept{.ViewLeftMHz = row.LeftMHz,
                .ViewRightMHz = row.RightMHz,
                .TakenUtc = row.TakenUtc,
                .BottomLevel = row.BottomLevel,
                .TopLevel = row.TopLevel,
                .UnitsPerDb = row.UnitsPerDb,
                .Dimmed = row.Dimmed};
  if (geometry_.Valid() && end > first) {
    kept.FirstMHz = geometry_.FrequencyAt(geometry_.PointX(first));
    kept.LastMHz = geometry_.FrequencyAt(geometry_.PointX(end - 1));
  }
  const auto points = row_.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first));
  if (join_.Began())
    past_.Add(points, kept);
  else
    past_.Replace(points, kept);
  row.Number = past_.At(0)->Line.Number;
  image_.AddLine(columns, row);
  lineAdded_ = true;
}

void WaterfallPast::SetRange(const FrameGeometry& geometry) {
  image_.SetRange(geometry.LeftMHz, geometry.RightMHz);
}

void WaterfallPast::ScrollBy(int rows) {
  if (image_.ScrollBy(rows)) changed_ = true;
}

void WaterfallPast::ShowNow() {
  if (Live()) return;
  image_.ShowNow();
  changed_ = true;
}

std::optional<std::chrono::system_clock::time_point> WaterfallPast::NewestUtc() const {
  const auto newest = past_.At(0);
  return newest ? std::optional(newest->Line.TakenUtc) : std::nullopt;
}

std::string WaterfallPast::Ago() const {
  if (Live()) return {};
  const auto top = image_.RowAt(0);
  const auto newest = NewestUtc();
  if (!top || !newest) return {};
  const auto ago = std::chrono::duration_cast<std::chrono::seconds>(*newest - top->TakenUtc);
  return SecondText(top->TakenUtc) + " UTC, " + DurationText(ago) + " ago";
}

bool WaterfallPast::TakeChanged() {
  std::string ago = Ago();
  const bool other = ago != shownAgo_;
  shownAgo_ = std::move(ago);
  return std::exchange(changed_, false) || other;
}

bool WaterfallPast::TakeLineAdded() {
  return std::exchange(lineAdded_, false) && Live();
}

void WaterfallPast::Paint(QPainter& painter, const PlotLayout& layout, QColor background) const {
  if (layout.WaterfallHeight <= 0) return;
  image_.Draw(painter, 0, layout.WaterfallTop);
  painter.fillRect(layout.PlotWidth, layout.WaterfallTop, layout.LabelMargin, layout.WaterfallHeight,
                   background);
}

void WaterfallPast::PaintOverlays(const OverlayPen& pen, const QFont& timeFont, const QFont& labelFont) {
  if (pen.Layout.WaterfallHeight <= 0) return;
  PaintPlace(pen);
  const std::vector<TimeMark> times = TimeMarks(image_, static_cast<int>(1.3 * timeFont.pixelSize()));
  DrawTimes(pen, times, timeFont);
  if (const auto top = image_.RowAt(0)) legend_.Draw(pen, image_.ColourRange(*top), times, timeFont);
  if (!Live() && !labelHidden_) PaintLabel(pen, labelFont);
}

/// At the column's outer edge, as a scroll bar: all of it is the past, the bright piece what is shown.
void WaterfallPast::PaintPlace(const OverlayPen& pen) const {
  const PlotLayout& layout = pen.Layout;
  const int count = past_.Count();
  if (count <= image_.Height()) return;
  const int width = layout.Px(kPlaceWidth);
  const QRect all(layout.Width - width, layout.WaterfallTop, width, layout.WaterfallHeight);
  QColor colour(ColourAt(pen.Colours, ColourIndex::Frequency));
  colour.setAlphaF(0.15F);
  pen.Painter.fillRect(all, colour);
  const auto top = image_.RowAt(0);
  const int age = Live() || !top ? 0 : past_.AgeOf(top->Number).value_or(count);
  const int height =
      std::max(layout.Px(kLeastPlace), static_cast<int>(1.0 * all.height() * image_.Height() / count));
  const int room = std::max(0, all.height() - height);
  const int offset = static_cast<int>(1.0 * room * age / std::max(1, count - image_.Height()));
  colour.setAlphaF(Live() ? 0.4F : 0.9F);
  pen.Painter.fillRect(all.left(), all.top() + std::min(room, offset), width, height, colour);
}

void WaterfallPast::PaintLabel(const OverlayPen& pen, const QFont& font) {
  const PlotLayout& layout = pen.Layout;
  // Copies: the next text may move those that are kept.
  const TextCache::Entry when = pen.Texts.Get(Ago(), font);
  const TextCache::Entry back = pen.Texts.Get("\u2191 back to now", font);
  const int gap = layout.Px(6);
  const int height = when.Size.height() + gap;
  const bool both = when.Size.width() + back.Size.width() + 5 * gap <= layout.PlotWidth;
  const int width = both ? when.Size.width() + back.Size.width() + 5 * gap : when.Size.width() + 2 * gap;
  label_ = QRect((layout.PlotWidth - width) / 2,
                 layout.WaterfallTop +
                     std::min(layout.Px(kLabelTop), std::max(0, (layout.WaterfallHeight - height) / 2)),
                 width, height);
  QColor ground(ColourAt(pen.Colours, ColourIndex::Background));
  pen.Painter.setFont(font);
  pen.Painter.fillRect(
      label_.adjusted(-layout.LineWidth(), -layout.LineWidth(), layout.LineWidth(), layout.LineWidth()),
      QColor(status_colour::kAmber));
  pen.Painter.fillRect(label_, ground);
  pen.Painter.setPen(QColor(status_colour::kAmber));
  pen.Painter.drawStaticText(label_.left() + gap, label_.top() + gap / 2, when.Text);
  if (!both) return;
  const QRect button(label_.right() + 1 - back.Size.width() - 2 * gap, label_.top(),
                     back.Size.width() + 2 * gap, height);
  pen.Painter.fillRect(button, QColor(status_colour::kAmber));
  pen.Painter.setPen(ground);
  pen.Painter.drawStaticText(button.left() + gap, button.top() + gap / 2, back.Text);
}

}  // namespace spectrino
