// A serial port by Qt, driven by the event loop.
// Chooses no port: QtSerialPorts lists them, the settings name one.
#pragma once

#include <QElapsedTimer>
#include <QSerialPort>
#include <QTimer>

#include "adapters/qt/QtSerialPortTrouble.h"
#include "platform/SerialPort.h"

namespace spectrino {

class QtSerialPort final : public SerialPort {
 public:
  QtSerialPort();
  ~QtSerialPort() override;

  [[nodiscard]] std::string Open(const std::string& path) override;
  void Close() override;
  void CloseWhenSent() override;
  [[nodiscard]] bool Closing() const override { return tmrClose_.isActive(); }
  [[nodiscard]] bool IsOpen() const override { return attending_; }
  void Write(std::span<const std::uint8_t> bytes) override;

 private:
  void ReadAll();
  void CloseIfSent();
  void HandleError(QSerialPort::SerialPortError error);

  QSerialPort port_;
  QTimer tmrClose_;  // while bytes leave behind CloseWhenSent
  QElapsedTimer closing_;
  std::string path_;
  SerialPortHolder holder_;  // of that path
  QString device_;           // what the path led to when it was opened
  bool attending_ = false;   // between a successful Open and Close: errors and bytes are the user's business
};

}  // namespace spectrino
