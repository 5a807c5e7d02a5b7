// The host program as one way to a radio: link, radio and back-end, wired. The socket comes not connected.
#pragma once

#include <QTimer>
#include <memory>

#include "host/HostBackend.h"
#include "host/HostRadio.h"
#include "platform/ByteSocket.h"
#include "rig/RadioKit.h"

namespace spectrino {

class HostKit final : public RadioKit {
 public:
  HostKit(const KitParts& parts, std::unique_ptr<ByteSocket> socket);
  ~HostKit() override;

  [[nodiscard]] RigBackend& Backend() override { return backend_; }
  [[nodiscard]] const RadioTraits& Traits() const override { return traits_; }
  [[nodiscard]] LinkHealth Health() const override { return radio_.Client().Health(); }
  [[nodiscard]] bool Carries(CatWay way) const override;
  [[nodiscard]] std::string Model() const override { return radio_.State().Model; }

 private:
  RadioTraits traits_;
  std::unique_ptr<ByteSocket> socket_;
  HostRadio radio_;
  HostBackend backend_;
  QTimer tmrHost_;
};

}  // namespace spectrino
