#include "display/ScalePainter.h"

#include <QPainter>
#include <algorithm>

namespace spectrino {
namespace {

constexpr double kGridOpacity = 0.45;
constexpr double kSubDivisionOpacity = 0.6;
/// Labels stand back behind the frequency texts of the header.
constexpr double kLabelOpacity = 0.8;

QColor WithOpacity(QRgb colour, double opacity) {
  QColor result(colour);
  result.setAlphaF(static_cast<float>(opacity));
  return result;
}

void DrawLabels(QPainter& painter, const std::vector<ScaleLabel>& labels) {
  const int ascent = painter.fontMetrics().ascent();
  for (const ScaleLabel& label : labels) {
    painter.drawText(label.Area.left(), label.Area.top() + ascent, QString::fromStdString(label.Text));
  }
}

}  // namespace

const QImage& ScalePainter::Picture(const ScaleState& scale, const PlotLayout& layout, const ScaleLook& look,
                                    const QFont& font, std::span<const PlotShade> shades) {
  const bool isSame = !picture_.isNull() && scale == scale_ && layout == layout_ && look == look_ &&
                      font == font_ && std::ranges::equal(shades, shades_);
  if (isSame) return picture_;
  scale_ = scale;
  layout_ = layout;
  look_ = look;
  font_ = font;
  shades_.assign(shades.begin(), shades.end());
  lines_ = LayOutScale(scale_, layout_, look_.ShowSubDivisions, look_.ShowMHz, font_);
  Draw();
  return picture_;
}

void ScalePainter::Draw() {
  const QSize size(layout_.Width, std::min(layout_.SpectrumHeight(), layout_.Height));
  if (picture_.size() != size) picture_ = QImage(size, QImage::Format_RGB32);
  picture_.fill(RgbOf(look_.Colours, PlotColour::Background));
  QPainter painter(&picture_);
  for (const PlotShade& shade : shades_) {
    painter.fillRect(shade.Left, layout_.TopMargin, shade.Right - shade.Left, layout_.PlotHeight,
                     WithOpacity(shade.Colour, shade.Opacity));
  }
  const int thickness = std::max(1, static_cast<int>(layout_.Scale));
  const QColor grid = WithOpacity(RgbOf(look_.Colours, PlotColour::Grid), kGridOpacity);
  const QColor subDivision = WithOpacity(RgbOf(look_.Colours, PlotColour::SubDivision), kSubDivisionOpacity);
  for (const GridLine& line : lines_.Levels) {
    painter.fillRect(0, line.Position, layout_.PlotWidth, thickness, line.IsSubDivision ? subDivision : grid);
  }
  for (const GridLine& line : lines_.Frequencies) {
    painter.fillRect(line.Position, layout_.TopMargin, thickness, layout_.PlotHeight, grid);
  }
  for (const int edge : {0, layout_.PlotWidth}) {
    painter.fillRect(edge, layout_.TopMargin, thickness, layout_.PlotHeight, grid);
  }
  painter.setFont(font_);
  painter.setPen(WithOpacity(RgbOf(look_.Colours, PlotColour::Frequency), kLabelOpacity));
  DrawLabels(painter, lines_.LevelLabels);
  DrawLabels(painter, lines_.FrequencyLabels);
}

}  // namespace spectrino
