#include "settings/ui/ColourPreview.h"

#include <QPainter>
#include <QPolygonF>
#include <cmath>

namespace spectrino::setup {
namespace {

/// A band with two carriers, as y from the bottom in 0..1.
double SampleLevel(double x) {
  const auto carrier = [x](double at, double height) {
    return height * std::exp(-std::pow((x - at) * 30, 2));
  };
  const double noise = 0.04 * std::sin(x * 91) + 0.03 * std::sin(x * 173);
  return 0.22 + noise + carrier(0.3, 0.5) + carrier(0.72, 0.32);
}

}  // namespace

QColor ToColour(std::uint32_t bgr) {
  return QColor(static_cast<int>(bgr & 0xff), static_cast<int>(bgr >> 8 & 0xff),
                static_cast<int>(bgr >> 16 & 0xff));
}

std::uint32_t ToBgr(const QColor& colour) {
  return static_cast<std::uint32_t>(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

ColourPreview::ColourPreview(QWidget* parent) : QWidget(parent) {
  setObjectName("picColor");
  setAccessibleName(tr("Preview of the colors"));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ColourPreview::Show(const ColourTable& colours, bool fill, bool subDivision) {
  colours_ = colours;
  fill_ = fill;
  subDivision_ = subDivision;
  update();
}

void ColourPreview::paintEvent(QPaintEvent*) {
  const auto colour = [this](ColourIndex index) { return ToColour(ColourOf(colours_, index)); };
  const double w = width();
  const double h = height();
  QPainter painter(this);
  painter.fillRect(rect(), colour(ColourIndex::Background));
  for (int i = 1; i < 4; ++i) {
    painter.fillRect(QRectF(0, h * i / 4, w, 1), colour(ColourIndex::Grid));
    painter.fillRect(QRectF(w * i / 4, 0, 1, h), colour(ColourIndex::Grid));
  }
  for (int i = 0; subDivision_ && i < 4; ++i)
    painter.fillRect(QRectF(0, h * (2 * i + 1) / 8, w, 1), colour(ColourIndex::SubDivision));
  painter.fillRect(QRectF(w * 0.52, 0, w * 0.12, h), colour(ColourIndex::Filter));
  painter.setRenderHint(QPainter::Antialiasing);
  QPolygonF line;
  for (double x = 0; x <= w; ++x) line << QPointF(x, h * (1 - SampleLevel(x / w)));
  if (fill_) {
    QPolygonF area = line;
    area << QPointF(w, h) << QPointF(0, h);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour(ColourIndex::Fill));
    painter.drawPolygon(area);
  }
  painter.setPen(colour(ColourIndex::BackgroundPeak));
  painter.drawPolyline(line.translated(0, -8));
  painter.setPen(colour(ColourIndex::Signal));
  painter.drawPolyline(line);
  painter.setRenderHint(QPainter::Antialiasing, false);
  const struct {
    double x;
    double y;
    ColourIndex index;
    const char* text;
  } labels[] = {{0.53, 0.14, ColourIndex::Mark, "M.Freq"},
                {0.78, 0.28, ColourIndex::SubReceiver, "S.Freq"},
                {0.03, 0.14, ColourIndex::Info, "INFO"},
                {0.03, 0.97, ColourIndex::Frequency, "14.074.0"},
                {0.76, 0.14, ColourIndex::SMeter, "S9+10"}};
  painter.fillRect(QRectF(w * 0.52, 0, 2, h), colour(ColourIndex::Mark));
  painter.fillRect(QRectF(w * 0.77, 0, 2, h), colour(ColourIndex::SubReceiver));
  painter.fillRect(QRectF(w * 0.3, 0, 1, h), colour(ColourIndex::Cursor));
  for (const auto& label : labels) {
    painter.setPen(colour(label.index));
    painter.drawText(QPointF(w * label.x, h * label.y), label.text);
  }
}

}  // namespace spectrino::setup
