// A serial port by Qt, driven by the event loop.
// Chooses no port: QtSerialPorts lists them, the settings name one.
#pragma once

#include <QSerialPort>

#include "platform/SerialPort.h"

namespace spectrino {

class QtSerialPort final : public SerialPort {
 public:
  QtSerialPort();
  ~QtSerialPort() override;

  [[nodiscard]] std::string Open(const std::string& path) override;
  void Close() override;
  [[nodiscard]] bool IsOpen() const override { return port_.isOpen(); }
  void Write(std::span<const std::uint8_t> bytes) override;

 private:
  void ReadAll();
  void HandleError(QSerialPort::SerialPortError error);

  QSerialPort port_;
  std::string path_;
  bool attending_ = false;  // between a successful Open and Close: errors and bytes are the user's business
};

}  // namespace spectrino
