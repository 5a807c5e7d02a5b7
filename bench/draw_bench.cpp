// What a frame costs to draw: our pictures against the plain way of drawing the same frame with QPainter.
// Prints "ratio draw <size> <ours / plain>", medians of frames drawn in turn in one process; fails over the
// budget. With --once it draws two frames each and judges nothing.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "display/Colours.h"
#include "display/Palettes.h"
#include "display/PanDisplay.h"

namespace spectrino {
namespace {

constexpr int kPoints = 8192;
constexpr double kCentreMHz = 14.074;
constexpr double kBudget = 0.03;
constexpr LevelScale kScale{.BottomLevel = -160, .TopLevel = -20, .RangeUnits = 140, .GridStep = 20};

using Clock = std::chrono::steady_clock;

double Median(std::vector<double> times) {
  std::ranges::nth_element(times, times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2));
  return times[times.size() / 2];
}

/// Noise with carriers, another one each call.
void FillBand(std::vector<float>& levels, std::mt19937& random) {
  std::normal_distribution<float> noise(-135, 3);
  for (float& level : levels) level = noise(random);
  for (int carrier = 0; carrier < 12; ++carrier) {
    const int centre = 300 + carrier * 640;
    for (int k = -60; k <= 60; ++k) {
      float& level = levels[static_cast<std::size_t>(centre + k)];
      level = std::max(level, -40 - 0.03F * static_cast<float>(k * k) + noise(random) / 50);
    }
  }
}

FrameGeometry BandGeometry(double plotWidth) {
  return {0, kPoints, kPoints / 2, kCentreMHz - 0.024, kCentreMHz + 0.024, plotWidth};
}

ScaleState BandScale(double plotWidth) {
  ScaleState scale;
  scale.Levels = kScale;
  scale.Geometry = BandGeometry(plotWidth);
  for (std::size_t i = 0; i < scale.GridOffsetHz.size(); ++i)
    scale.GridOffsetHz[i] = 5000.0 * static_cast<double>(i);
  scale.LabelCentreMHz = kCentreMHz;
  scale.FrequencyKnown = true;
  scale.Running = true;
  return scale;
}

/// Grid and texts anew, all points as one antialiased polygon, the waterfall by two block copies.
class PlainDisplay {
 public:
  PlainDisplay(const PlotLayout& layout, const ScaleLines& scale) : layout_(layout), scale_(scale) {
    buffer_ = QImage(layout.PlotWidth, layout.WaterfallHeight, QImage::Format_RGB32);
    buffer_.fill(Qt::black);
  }

  void Draw(const std::vector<float>& levels, QImage& image) {
    QPainter painter(&image);
    painter.fillRect(0, 0, layout_.Width, layout_.WaterfallTop, QColor(0, 0, 0x55));
    DrawGrid(painter);
    DrawTrace(painter, levels);
    DrawWaterfall(painter, levels);
    painter.end();
    QPainter(&buffer_).drawImage(0, 0, image, 0, layout_.WaterfallTop, layout_.PlotWidth,
                                 layout_.WaterfallHeight);
  }

 private:
  void DrawGrid(QPainter& painter) {
    painter.setFont(DisplayFont(9.5, layout_.Scale));
    painter.setPen(QColor(128, 128, 128, 110));
    for (const ScaleLine& line : scale_.Levels)
      painter.drawLine(0, line.Position, layout_.PlotWidth, line.Position);
    for (const ScaleLine& line : scale_.Frequencies) {
      painter.drawLine(line.Position, layout_.TopMargin, line.Position, layout_.PlotBottom());
    }
    painter.setPen(Qt::white);
    for (const auto* labels : {&scale_.LevelLabels, &scale_.FrequencyLabels}) {
      for (const ScaleLabel& label : *labels) {
        painter.drawText(label.Left, label.Top + label.Height - 2, QString::fromStdString(label.Text));
      }
    }
  }

  void DrawTrace(QPainter& painter, const std::vector<float>& levels) {
    const FrameGeometry geometry = BandGeometry(layout_.PlotWidth);
    QPolygonF polygon;
    polygon.reserve(kPoints + 2);
    polygon << QPointF(0, layout_.PlotBottom());
    for (int i = 0; i < kPoints; ++i) {
      const double share =
          (levels[static_cast<std::size_t>(i)] - kScale.BottomLevel) / (kScale.TopLevel - kScale.BottomLevel);
      polygon << QPointF(geometry.PointX(i), layout_.PlotBottom() - share * layout_.PlotHeight);
    }
    polygon << QPointF(layout_.PlotWidth, layout_.PlotBottom());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QColor(0x80, 0xFF, 0x80));
    painter.setBrush(QColor(0, 98, 49, 190));
    painter.drawPolygon(polygon);
    painter.setRenderHint(QPainter::Antialiasing, false);
  }

  void DrawWaterfall(QPainter& painter, const std::vector<float>& levels) {
    painter.drawImage(0, layout_.WaterfallTop + 1, buffer_, 0, 0, layout_.PlotWidth,
                      layout_.WaterfallHeight - 1);
    for (int x = 0; x < layout_.PlotWidth; ++x) {
      const auto point = static_cast<std::size_t>(static_cast<long>(x) * kPoints / layout_.PlotWidth);
      const float share = (levels[point] - kScale.BottomLevel) / (kScale.TopLevel - kScale.BottomLevel);
      const int index = std::clamp(static_cast<int>(share * 256), 0, kWaterfallColours - 1);
      const QRgb colour = WaterfallPalette()[static_cast<std::size_t>(index)];
      painter.fillRect(x, layout_.WaterfallTop, 1, 1, QColor(colour));
    }
  }

  PlotLayout layout_;
  ScaleLines scale_;
  QImage buffer_;
};

/// The ratio for a picture of this size, and both medians on a line of their own.
double Compare(QSize size, int frames) {
  PanDisplay display;
  display.SetOptions({.WaterfallSel = 3});
  display.Resize(size, 1);
  const double plotWidth = display.PlotWidth();
  display.DrawScale(BandScale(plotWidth));
  display.SetMarkers(std::vector<PlotMarker>{
      {.FreqMHz = kCentreMHz, .PassbandLowMHz = 14.0742, .PassbandHighMHz = 14.0769, .Label = "A"},
      {.FreqMHz = 14.08, .ColourIndex = 8, .FilterColourIndex = 8, .Label = "B"}});
  display.SetInfoText("Span 48 kHz   8192 points   M.Wheel VFO-A Normal");
  display.SetHover(QPointF(plotWidth * 0.7, 60));
  QImage image(size, QImage::Format_RGB32);
  image.fill(Qt::black);
  {
    QPainter painter(&image);
    display.Paint(painter);  // places the labels that both draw
  }
  PlainDisplay plain(display.Layout(), display.Scale());
  SpectrumLine line;
  line.Levels.resize(kPoints);
  line.PointCount = kPoints;
  line.BottomLevel = kScale.BottomLevel;
  line.TopLevel = kScale.TopLevel;
  const FrameGeometry geometry = BandGeometry(plotWidth);
  std::mt19937 random(1);
  std::vector<double> ours;
  std::vector<double> theirs;
  for (int frame = 0; frame < frames; ++frame) {
    FillBand(line.Levels, random);
    const auto start = Clock::now();
    display.ShowFrame({line, geometry, line.Levels, {}});
    {
      QPainter painter(&image);
      display.Paint(painter);
    }
    const auto between = Clock::now();
    plain.Draw(line.Levels, image);
    const auto end = Clock::now();
    ours.push_back(std::chrono::duration<double, std::milli>(between - start).count());
    theirs.push_back(std::chrono::duration<double, std::milli>(end - between).count());
  }
  std::printf("draw %dx%d: %.3f ms, plain %.3f ms\n", size.width(), size.height(), Median(ours),
              Median(theirs));
  return Median(ours) / Median(theirs);
}

}  // namespace
}  // namespace spectrino

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const bool once = argc > 1 && std::string_view(argv[1]) == "--once";
  bool within = true;
  for (const auto& [size, frames] : {std::pair{QSize(1280, 720), 101}, std::pair{QSize(3840, 2160), 21}}) {
    const double ratio = spectrino::Compare(size, once ? 2 : frames);
    std::printf("ratio draw %dx%d %.4f\n", size.width(), size.height(), ratio);
    within = within && ratio <= spectrino::kBudget;
  }
  return within || once ? 0 : 1;
}
