// A TCP port of ours that other programs connect to.
// Knows no protocol; what came in through it is a ByteSocket like any other.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/ByteSocket.h"

namespace spectrino {

/// One connection that was taken, and where it comes from.
struct Visitor {
  std::unique_ptr<ByteSocket> Socket;
  std::string Address;
  std::uint16_t Port = 0;
};

class ServerSocket {
 public:
  virtual ~ServerSocket() = default;
  ServerSocket() = default;
  ServerSocket(const ServerSocket&) = delete;
  ServerSocket& operator=(const ServerSocket&) = delete;

  /// Closes what is open and listens there. address: numeric, or "localhost". Empty when it does now,
  /// otherwise why not, in the user's terms, without a full stop.
  [[nodiscard]] virtual std::string Listen(const std::string& address, std::uint16_t port) = 0;
  /// No event after it; what was taken stays connected. Harmless while closed.
  virtual void Close() = 0;

  /// From the event loop; may close the socket. A visitor who is not wanted is let go of.
  std::function<void(Visitor visitor)> Accepted;
};

}  // namespace spectrino
