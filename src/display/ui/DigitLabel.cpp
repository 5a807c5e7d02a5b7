#include "display/ui/DigitLabel.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>
#include <utility>

namespace spectrino {
namespace {

constexpr QRgb kLight = 0xFF7CC4EE;
constexpr qsizetype kSmallDigits = 3;
constexpr int kLineHeight = 2;

double HertzOf(int place) {
  return std::pow(10.0, place);
}

}  // namespace

void DigitLabel::ShowFrequency(const QString& text, const QColor& colour, int smallPx) {
  text_ = text;
  smallPx_ = smallPx;
  setAccessibleDescription(text);
  if (smallPx == 0) {
    setText(text);
    return;
  }
  // The last three digits are Hz, written smaller, as on a front panel.
  const qsizetype cut = text.contains('.') ? text.size() - kSmallDigits : text.size();
  setText(QString("<span style=\"color:%1\">%2<span style=\"font-size:%5px;color:%3\">%4</span></span>")
              .arg(colour.name(), text.left(cut).toHtmlEscaped(), colour.darker(150).name(),
                   text.mid(cut).toHtmlEscaped())
              .arg(smallPx));
}

void DigitLabel::Allow(bool allowed) {
  allowed_ = allowed;
  setToolTip(allowed ? tr("Wheel or click: turns the digit up or down. Double click, or digits typed: a "
                          "frequency is entered")
                     : QString());
  setCursor(allowed ? Qt::IBeamCursor : Qt::ArrowCursor);
  ShowPlace(std::nullopt);
}

QRectF DigitLabel::CharacterBox(qsizetype index) const {
  const QFontMetricsF large(font());
  const qsizetype cut = smallPx_ > 0 ? text_.size() - kSmallDigits : text_.size();
  QFont smallFont = font();
  if (smallPx_ > 0) smallFont.setPixelSize(smallPx_);
  const QFontMetricsF metrics(index < cut ? font() : smallFont);
  double left = contentsRect().left() + large.horizontalAdvance(text_.left(std::min(index, cut)));
  if (index > cut) left += metrics.horizontalAdvance(text_.mid(cut, index - cut));
  return {left, 0.0, metrics.horizontalAdvance(text_.at(index)), static_cast<double>(height())};
}

std::optional<int> DigitLabel::PlaceAt(double x) const {
  if (!text_.contains('.')) return std::nullopt;
  int place = -1;
  for (qsizetype i = text_.size() - 1; i >= 0; --i) {
    const QRectF box = CharacterBox(i);
    if (text_.at(i).isDigit()) {
      ++place;
      if (x >= box.left() && x < box.right()) return place;
    } else if (x >= box.left() && x < box.right()) {
      return place + 1;
    }
  }
  return std::nullopt;
}

void DigitLabel::PointAt(QPointF at) {
  pointedAt_ = at;
  ShowPlace(allowed_ ? PlaceAt(at.x()) : std::nullopt);
}

void DigitLabel::ShowPlace(std::optional<int> place) {
  if (std::exchange(place_, place) == place) return;
  if (allowed_) setCursor(place ? Qt::SizeVerCursor : Qt::IBeamCursor);
  update();
}

void DigitLabel::mouseMoveEvent(QMouseEvent* event) {
  PointAt(event->position());
}

void DigitLabel::mousePressEvent(QMouseEvent* event) {
  clickedHertz_ = 0;
  if (!allowed_ || event->button() != Qt::LeftButton) return;
  PointAt(event->position());
  if (!place_) {
    emit EntryWanted(0);
    return;
  }
  const int direction = event->position().y() < height() / 2.0 ? 1 : -1;
  clickedHertz_ = direction * HertzOf(*place_);
  emit Clicked(HertzOf(*place_), direction);
}

void DigitLabel::mouseDoubleClickEvent(QMouseEvent* event) {
  if (allowed_ && event->button() == Qt::LeftButton) emit EntryWanted(std::exchange(clickedHertz_, 0));
}

void DigitLabel::wheelEvent(QWheelEvent* event) {
  event->accept();
  // What a touchpad coasts on after the fingers left is not the operator's wish.
  if (!allowed_ || event->phase() == Qt::ScrollMomentum) return;
  // At 9.999 the next step moves all digits: the one that was pointed at goes on.
  if (event->position() != pointedAt_ || !place_) PointAt(event->position());
  if (place_ && event->angleDelta().y() != 0) emit Turned(HertzOf(*place_), event->angleDelta().y());
}

void DigitLabel::leaveEvent(QEvent* event) {
  QLabel::leaveEvent(event);
  ShowPlace(std::nullopt);
}

void DigitLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!place_) return;
  int place = -1;
  for (qsizetype i = text_.size() - 1; i >= 0; --i) {
    if (!text_.at(i).isDigit() || ++place != *place_) continue;
    const QRectF box = CharacterBox(i);
    QPainter painter(this);
    painter.fillRect(QRectF(box.left(), box.bottom() - kLineHeight, box.width(), kLineHeight),
                     QColor(kLight));
    return;
  }
}

}  // namespace spectrino
