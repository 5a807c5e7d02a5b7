// ServerSocket on QTcpServer.
#pragma once

#include <QTcpServer>

#include "platform/ServerSocket.h"

namespace spectrino {

class QtServerSocket final : public ServerSocket {
 public:
  QtServerSocket();

  [[nodiscard]] std::string Listen(const std::string& address, std::uint16_t port) override;
  void Close() override { server_.close(); }

 private:
  void TakeAll();

  QTcpServer server_;
};

}  // namespace spectrino
