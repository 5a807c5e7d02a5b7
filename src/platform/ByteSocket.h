// One TCP connection to a radio, events on the thread of the event loop.
// Not a protocol: bytes out, bytes in, in whatever pieces the network made of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace spectrino {

/// Events may call any method of the socket, and may destroy it. After Close no event of the old connection
/// arrives. A connection that ends by itself says so exactly once, by Closed or by Error, and is closed then.
class ByteSocket {
 public:
  virtual ~ByteSocket() = default;
  ByteSocket() = default;
  ByteSocket(const ByteSocket&) = delete;
  ByteSocket& operator=(const ByteSocket&) = delete;

  /// Closes what is open and begins to connect; Connected or Error follows from the event loop.
  /// host: name or address. port: 1..65535.
  virtual void Connect(const std::string& host, std::uint16_t port) = 0;
  /// Hands on what was sent and closes, without an event. Harmless while closed or connecting.
  virtual void Close() = 0;
  /// Queues the bytes; they leave without waiting for more. Dropped while not connected.
  virtual void Send(std::string_view bytes) = 0;
  /// Bytes that wait in this program because the other end does not read.
  [[nodiscard]] virtual std::size_t Unsent() const { return 0; }

  std::function<void()> Connected;
  /// The other end closed the connection, after everything it sent was delivered.
  std::function<void()> Closed;
  /// Connecting failed or the connection broke; the text says why, in the user's terms, without a full stop.
  std::function<void(std::string_view text)> Error;
  /// What arrived since the last call; holds until the call returns.
  std::function<void(std::span<const std::uint8_t> bytes)> DataArrival;
};

}  // namespace spectrino
