#include "display/ui/SMeterBar.h"

#include <QLinearGradient>
#include <QPainter>
#include <algorithm>

namespace spectrino {
namespace {

constexpr double kS9Share = 0.55;
constexpr float kS9Dbm = -73;
constexpr float kS0Dbm = kS9Dbm - 9 * 6;
constexpr float kFullDbm = kS9Dbm + 60;

struct Tick {
  float levelDbm;
  const char* text;
};
constexpr Tick kTicks[] = {{kS9Dbm - 48, "S1"}, {kS9Dbm - 36, "3"},   {kS9Dbm - 24, "5"},  {kS9Dbm - 12, "7"},
                           {kS9Dbm, "9"},       {kS9Dbm + 20, "+20"}, {kS9Dbm + 40, "+40"}};

}  // namespace

SMeterBar::SMeterBar(QWidget* parent) : QWidget(parent) {
  setObjectName("SMeterBar");
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

double SMeterBar::Share(float levelDbm) {
  const double share = levelDbm <= kS9Dbm
                           ? kS9Share * (levelDbm - kS0Dbm) / (kS9Dbm - kS0Dbm)
                           : kS9Share + (1 - kS9Share) * (levelDbm - kS9Dbm) / (kFullDbm - kS9Dbm);
  return std::clamp(share, 0.0, 1.0);
}

void SMeterBar::SetLevels(float levelDbm, float heldDbm, bool known) {
  const double share = known ? Share(levelDbm) : 0;
  const double held = known ? Share(heldDbm) : 0;
  if (share == share_ && held == heldShare_) return;
  share_ = share;
  heldShare_ = held;
  update();
}

void SMeterBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRectF bar(0, 2, width() - 1, 7);
  painter.fillRect(bar, QColor(0x1d, 0x23, 0x2b));
  QLinearGradient gradient(bar.topLeft(), bar.topRight());
  gradient.setColorAt(0, QColor(0x00, 0xc8, 0xc8));
  gradient.setColorAt(kS9Share, QColor(0x00, 0xc8, 0xc8));
  gradient.setColorAt(1, QColor(0xff, 0x7a, 0x3c));
  painter.fillRect(QRectF(bar.left(), bar.top(), bar.width() * share_, bar.height()), gradient);
  if (heldShare_ > 0) {
    painter.fillRect(QRectF(bar.left() + bar.width() * heldShare_ - 1, bar.top() - 1, 2, bar.height() + 2),
                     QColor(0xff, 0xd2, 0x7a));
  }
  const double ratio = devicePixelRatioF();
  if (ticks_.size() != size() * ratio) ticks_ = DrawTicks(bar.width(), ratio);
  painter.drawPixmap(0, 0, ticks_);
}

/// The scale below the bar; as long as the size stays it does.
QPixmap SMeterBar::DrawTicks(double barWidth, double ratio) const {
  QPixmap picture(size() * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  QFont small = font();
  small.setPixelSize(9);
  painter.setFont(small);
  painter.setPen(QColor(0x9a, 0xa8, 0xb8));
  const QFontMetricsF metrics(small);
  double freeFrom = -1;
  for (const Tick& tick : kTicks) {
    const double textWidth = metrics.horizontalAdvance(tick.text);
    const double x = std::clamp(barWidth * Share(tick.levelDbm) - textWidth / 2, 0.0, barWidth - textWidth);
    if (x < freeFrom) continue;
    painter.drawText(QPointF(x, height() - 3), tick.text);
    freeFrom = x + textWidth + 4;
  }
  return picture;
}

}  // namespace spectrino
