// One serial line to a radio: 115200 baud, 8 data bits, no parity, one stop bit, no handshake.
// Knows no protocol and no port numbers; a path leads to it, a pseudo-terminal's too.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace spectrino {

/// DTR and RTS are low from Open to Close: radios may be set up to transmit on either.
class SerialPort {
 public:
  virtual ~SerialPort() = default;
  SerialPort() = default;
  SerialPort(const SerialPort&) = delete;
  SerialPort& operator=(const SerialPort&) = delete;

  /// Empty when the port is open now. Otherwise why not, for the user: that the device is not there, which
  /// group owns it, or which program holds it.
  [[nodiscard]] virtual std::string Open(const std::string& path) = 0;
  /// Lets what was written leave first and waits for it, for 100 ms at most. Neither callback comes
  /// afterwards.
  virtual void Close() = 0;
  /// The same without waiting: counts as closed from now on, and is when the bytes have left. An Open before
  /// that waits for it.
  virtual void CloseWhenSent() = 0;
  /// Between CloseWhenSent and the moment when the bytes have left.
  [[nodiscard]] virtual bool Closing() const = 0;
  [[nodiscard]] virtual bool IsOpen() const = 0;
  /// Queues the bytes and returns at once; dropped while the port is closed.
  virtual void Write(std::span<const std::uint8_t> bytes) = 0;

  /// Bytes as they come, in pieces of any length. The span holds until the call returns.
  std::function<void(std::span<const std::uint8_t>)> DataArrival;
  /// The device failed or was pulled out: "ttyUSB0 was unplugged". The port is closed already; it stays so
  /// until it is opened again.
  std::function<void(const std::string& reason)> Lost;
};

}  // namespace spectrino
