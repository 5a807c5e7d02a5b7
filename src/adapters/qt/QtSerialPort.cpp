#include "adapters/qt/QtSerialPort.h"

#include <sys/ioctl.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QThread>
#include <utility>

namespace spectrino {
namespace {

constexpr int kDrainMs = 100;
constexpr int kFifoMs = 6;  // what 64 bytes in an adapter's own buffer take at 115200 baud

constexpr int kCloseLookMs = 5;

bool InDriver(QSerialPort& port) {
  int left = 0;
  return ::ioctl(port.handle(), TIOCOUTQ, &left) == 0 && left > 0;
}

// Closing puts the line's settings back as they were found: bytes still under way would leave at that speed.
void WaitUntilSent(QSerialPort& port) {
  QElapsedTimer time;
  time.start();
  if (port.bytesToWrite() > 0) port.waitForBytesWritten(kDrainMs);
  while (InDriver(port) && time.elapsed() < kDrainMs) QThread::msleep(1);
  QThread::msleep(kFifoMs);
}

}  // namespace

QtSerialPort::QtSerialPort() {
  QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] { ReadAll(); });
  QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                   [this](QSerialPort::SerialPortError error) { HandleError(error); });
  QObject::connect(&tmrClose_, &QTimer::timeout, &port_, [this] { CloseIfSent(); });
  port_.setBaudRate(QSerialPort::Baud115200);
  port_.setDataBits(QSerialPort::Data8);
  port_.setParity(QSerialPort::NoParity);
  port_.setStopBits(QSerialPort::OneStop);
  port_.setFlowControl(QSerialPort::NoFlowControl);
}

QtSerialPort::~QtSerialPort() {
  DataArrival = nullptr;
  Lost = nullptr;
  Close();
}

std::string QtSerialPort::Open(const std::string& path) {
  Close();
  if (std::exchange(path_, path) != path) holder_ = {};
  port_.setPortName(QString::fromStdString(path));
  device_ = QFileInfo(QString::fromStdString(path)).canonicalFilePath();
  if (!port_.open(QIODevice::ReadWrite)) {
    return SerialPortTrouble(path, port_.error() == QSerialPort::PermissionError,
                             port_.errorString().toStdString(), holder_);
  }
  holder_ = {};
  // The kernel raises both lines when a device is opened. A pseudo-terminal has none: that is no error.
  port_.setDataTerminalReady(false);
  port_.setRequestToSend(false);
  port_.clearError();
  attending_ = true;
  return {};
}

void QtSerialPort::Close() {
  attending_ = false;
  tmrClose_.stop();
  if (!port_.isOpen()) return;
  port_.flush();
  WaitUntilSent(port_);
  port_.close();
}

void QtSerialPort::CloseWhenSent() {
  if (!std::exchange(attending_, false)) return;
  port_.flush();
  closing_.start();
  tmrClose_.start(kCloseLookMs);
}

void QtSerialPort::CloseIfSent() {
  const bool under = port_.isOpen() && (port_.bytesToWrite() > 0 || InDriver(port_));
  if (under && closing_.elapsed() < kDrainMs) return;
  if (!under && tmrClose_.interval() != kFifoMs) {
    tmrClose_.start(kFifoMs);  // the adapter's own buffer
    return;
  }
  tmrClose_.stop();
  port_.close();
}

void QtSerialPort::Write(std::span<const std::uint8_t> bytes) {
  if (!attending_) return;
  port_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
}

void QtSerialPort::ReadAll() {
  const QByteArray bytes = port_.readAll();
  if (!attending_ || bytes.isEmpty() || !DataArrival) return;
  DataArrival(
      {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())});
}

void QtSerialPort::HandleError(QSerialPort::SerialPortError error) {
  const bool fatal = error == QSerialPort::ReadError || error == QSerialPort::WriteError ||
                     error == QSerialPort::ResourceError || error == QSerialPort::PermissionError;
  if (!attending_ || !fatal) return;
  attending_ = false;
  const std::string reason = SerialPortLoss(path_, device_.toStdString(), port_.errorString().toStdString());
  // At once: an open port whose device is gone reports the same error as fast as the event loop turns.
  port_.close();
  if (Lost) Lost(reason);
}

}  // namespace spectrino
