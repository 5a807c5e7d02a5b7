// The host program as one way to a radio: link, radio and back-end, wired. The socket comes not connected.
#pragma once

#include <QTimer>
#include <memory>

#include "host/HostBackend.h"
#include "host/HostIcomLink.h"
#include "host/HostRadio.h"
#include "platform/ByteSocket.h"
#include "rig/RadioKit.h"

namespace spectrino {

class HostKit final : public RadioKit {
 public:
  /// lines: for the scope of a radio that passes it on.
  HostKit(const KitParts& parts, std::unique_ptr<ByteSocket> socket, std::unique_ptr<DatagramSocket> lines);
  ~HostKit() override;

  [[nodiscard]] RigBackend& Backend() override { return backend_; }
  [[nodiscard]] const RadioTraits& Traits() const override { return traits_; }
  [[nodiscard]] LinkHealth Health() const override { return radio_.Client().Health(); }
  /// For the kit of the radio whose scope it is.
  [[nodiscard]] HostIcom& Icom() { return icom_; }
  [[nodiscard]] bool Carries(CatWay way) const override;
  [[nodiscard]] std::string Model() const override { return radio_.State().Model; }

 private:
  RadioTraits traits_;
  QTimer tmrHost_;  ///< outlives what stops it
  std::unique_ptr<ByteSocket> socket_;
  std::unique_ptr<DatagramSocket> lines_;
  HostRadio radio_;
  HostBackend backend_;
  HostIcomLink icom_;
};

}  // namespace spectrino
