#include "adapters/qt/QtEventPump.h"

#include <QEventLoop>
#include <QTimer>

namespace spectrino {

void QtEventPump::Wait(std::chrono::milliseconds time) {
  QEventLoop loop;
  QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

}  // namespace spectrino
