// ByteSocket on QTcpSocket: no delay, and a peer that vanished without a word is noticed.
// Each connection has a QTcpSocket of its own, so nothing of an old one can arrive late.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/ByteSocket.h"

class QTcpSocket;

namespace spectrino {

class QtByteSocket final : public ByteSocket {
 public:
  QtByteSocket();
  /// Of a connection that a server took; takes it over. Reads little at a time: whoever sends without end
  /// does not hold the event loop up.
  explicit QtByteSocket(QTcpSocket* accepted);
  ~QtByteSocket() override;

  void Connect(const std::string& host, std::uint16_t port) override;
  void Close() override;
  void Send(std::string_view bytes) override;
  [[nodiscard]] std::size_t Unsent() const override;

 private:
  struct Later {
    void operator()(QTcpSocket* socket) const;
  };

  void Attend(QTcpSocket* socket);
  void SetUp();
  void SetOptions();
  void Deliver();
  void Fail();
  void End();

  std::unique_ptr<QTcpSocket, Later> socket_;
  bool wasConnected_ = false;
  bool visitor_ = false;  ///< a server took it
  std::pair<std::string, std::uint16_t> peer_;
  std::pair<std::string, std::uint16_t> reached_;  ///< the peer that took a connection last
};

}  // namespace spectrino
