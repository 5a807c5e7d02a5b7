#include "display/ScalePainter.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QString>
#include <algorithm>
#include <cmath>
#include <vector>

#include "display/BandStrip.h"
#include "display/Colours.h"
#include "display/RowKernels.h"

namespace spectrino {
namespace {

// The grid stays behind the trace.
constexpr double kGridOpacity = 0.42;
constexpr double kSubDivisionOpacity = 0.7;
constexpr double kLabelOpacity = 0.82;

QColor Faded(QRgb colour, double opacity) {
  QColor faded(colour);
  faded.setAlphaF(static_cast<float>(opacity));
  return faded;
}

void DrawLines(QPainter& painter, const PlotLayout& layout, const ScaleLines& lines, const ScaleLook& look) {
  const int width = layout.LineWidth();
  const QColor grid = Faded(ColourAt(look.Colours, ColourIndex::Grid), kGridOpacity);
  const QColor sub = Faded(ColourAt(look.Colours, ColourIndex::SubDivision), kSubDivisionOpacity);
  for (const ScaleLine& line : lines.Levels) {
    painter.fillRect(0, line.Position, layout.PlotWidth, width, line.SubDivision ? sub : grid);
  }
  for (const ScaleLine& line : lines.Frequencies) {
    painter.fillRect(line.Position, layout.TopMargin, width, layout.PlotHeight, grid);
  }
  painter.fillRect(0, layout.TopMargin, width, layout.PlotHeight, grid);
  painter.fillRect(layout.PlotWidth, layout.TopMargin, width, layout.PlotHeight, grid);
}

void DrawLabels(QPainter& painter, const std::vector<ScaleLabel>& labels) {
  const int ascent = QFontMetrics(painter.font()).ascent();
  for (const ScaleLabel& label : labels) {
    painter.drawText(label.Left, label.Top + ascent, QString::fromStdString(label.Text));
  }
}

}  // namespace

QFont DisplayFont(double logicalPixels, double scale, bool bold) {
  QFont font = QGuiApplication::font();
  font.setPixelSize(static_cast<int>(std::lround(std::max(9.0, logicalPixels) * scale)));
  font.setBold(bold);
  return font;
}

PlotMargins MarginsFor(const QFont& font, double scale) {
  const QFontMetrics metrics(font);
  const auto px = [scale](double logical) { return static_cast<int>(std::lround(logical * scale)); };
  const int widest = std::max(metrics.horizontalAdvance("-160"), metrics.horizontalAdvance("00:00Z"));
  return {.Top = px(4), .Gap = metrics.height() + px(3), .Label = widest + px(6 + kLegendWidth)};
}

LabelMetrics MetricsOf(const QFont& font) {
  const QFontMetrics metrics(font);
  return {.TextWidth =
              [metrics](const std::string& text) {
                return metrics.horizontalAdvance(QString::fromStdString(text));
              },
          .TextHeight = metrics.height()};
}

void ScalePainter::Render(const PlotLayout& layout, const ScaleState& scale, const ScaleLook& look,
                          const BandPlan& plan, const QFont& font) {
  const QSize size(layout.Width, layout.WaterfallTop);
  if (picture_.size() != size) picture_ = MakePixels(size);
  lines_ = PlaceScale(layout, scale, look.SubD, look.MHz, MetricsOf(font));
  if (picture_.isNull()) return;
  picture_.fill(ColourAt(look.Colours, ColourIndex::Background));
  QPainter painter(&picture_);
  DrawLines(painter, layout, lines_, look);
  DrawBandStrip(painter, layout, scale, plan, ColourAt(look.Colours, ColourIndex::Background));
  painter.setFont(font);
  painter.setPen(Faded(ColourAt(look.Colours, ColourIndex::Frequency), kLabelOpacity));
  DrawLabels(painter, lines_.LevelLabels);
  DrawLabels(painter, lines_.FrequencyLabels);
}

}  // namespace spectrino
