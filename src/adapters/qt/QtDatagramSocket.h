// DatagramSocket on QUdpSocket.
#pragma once

#include <memory>
#include <vector>

#include "platform/DatagramSocket.h"

class QUdpSocket;

namespace spectrino {

class QtDatagramSocket final : public DatagramSocket {
 public:
  QtDatagramSocket();
  ~QtDatagramSocket() override;

  [[nodiscard]] std::string Open(std::uint16_t port) override;
  void Close() override;

 private:
  struct Later {
    void operator()(QUdpSocket* socket) const;
  };

  void Deliver();

  std::unique_ptr<QUdpSocket, Later> socket_;
  std::vector<std::uint8_t> packet_;
  std::shared_ptr<int> alive_ = std::make_shared<int>();  ///< what is queued looks whether we are gone
};

}  // namespace spectrino
