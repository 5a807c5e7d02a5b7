#include "display/Blit.h"

#include <QPaintEngine>
#include <QRegion>
#include <cstddef>
#include <cstring>

namespace spectrino {
namespace {

/// The picture behind the painter when its pixels may be written directly; null for any other device.
QImage* MemoryOf(const QPainter& painter) {
  const QTransform& transform = painter.deviceTransform();
  const bool oneToOne = transform.m11() == 1 && transform.m22() == 1 &&
                        transform.type() <= QTransform::TxTranslate &&
                        transform.dx() == static_cast<int>(transform.dx()) &&
                        transform.dy() == static_cast<int>(transform.dy());
  QPaintEngine* const engine = painter.paintEngine();
  if (!oneToOne || engine == nullptr || painter.hasClipping()) return nullptr;
  QPaintDevice* const device = engine->paintDevice();
  if (device == nullptr || device->devType() != QInternal::Image) return nullptr;
  auto* const image = static_cast<QImage*>(device);
  const bool sameLayout =
      image->format() == QImage::Format_RGB32 || image->format() == QImage::Format_ARGB32_Premultiplied;
  return sameLayout && image->isDetached() ? image : nullptr;
}

}  // namespace

void BlitImage(QPainter& painter, QPoint at, const QImage& source, const QRect& part) {
  QImage* const target = MemoryOf(painter);
  if (target == nullptr) {
    painter.drawImage(at, source, part);
    return;
  }
  const QTransform& transform = painter.deviceTransform();
  const QPoint origin = at + QPoint(static_cast<int>(transform.dx()), static_cast<int>(transform.dy()));
  const QRect wanted = QRect(origin, part.intersected(source.rect()).size()).intersected(target->rect());
  const QRegion clip = painter.paintEngine()->systemClip();
  const QRegion visible = clip.isEmpty() ? QRegion(wanted) : clip.intersected(wanted);
  for (const QRect& rect : visible) {
    const auto rowBytes = static_cast<std::size_t>(rect.width()) * sizeof(QRgb);
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
      const QPoint from = QPoint(rect.left(), y) - origin + part.topLeft();
      std::memcpy(reinterpret_cast<QRgb*>(target->scanLine(y)) + rect.left(),
                  reinterpret_cast<const QRgb*>(source.constScanLine(from.y())) + from.x(), rowBytes);
    }
  }
}

}  // namespace spectrino
