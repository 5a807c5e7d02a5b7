// Datagrams that other programs of this machine send to one port.
// Receives only; knows no protocol.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace spectrino {

class DatagramSocket {
 public:
  /// A longer packet is dropped whole.
  static constexpr std::size_t kMostBytes = 32 * 1024;

  virtual ~DatagramSocket() = default;
  DatagramSocket() = default;
  DatagramSocket(const DatagramSocket&) = delete;
  DatagramSocket& operator=(const DatagramSocket&) = delete;

  /// Listens at the loopback address, and nowhere else. Empty when it does now, otherwise why not, in the
  /// user's terms, without a full stop.
  [[nodiscard]] virtual std::string Open(std::uint16_t port) = 0;
  /// No event after it. Harmless while closed.
  virtual void Close() = 0;

  /// One packet, whole; holds until the call returns. From the event loop; may close or destroy the socket.
  std::function<void(std::span<const std::uint8_t> packet)> Received;
};

}  // namespace spectrino
