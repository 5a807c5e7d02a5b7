// ByteSocket on QTcpSocket: no delay, and a peer that vanished without a word is noticed.
// Each connection has a QTcpSocket of its own, so nothing of an old one can arrive late.
#pragma once

#include <memory>

#include "platform/ByteSocket.h"

class QTcpSocket;

namespace spectrino {

class QtByteSocket final : public ByteSocket {
 public:
  QtByteSocket();
  ~QtByteSocket() override;

  void Connect(const std::string& host, std::uint16_t port) override;
  void Close() override;
  void Send(std::string_view bytes) override;

 private:
  struct Later {
    void operator()(QTcpSocket* socket) const;
  };

  void SetUp();
  void Deliver();
  void Fail();
  void End();

  std::unique_ptr<QTcpSocket, Later> socket_;
  bool wasConnected_ = false;
};

}  // namespace spectrino
