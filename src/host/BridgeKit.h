// The bridge as one way to a radio. Wiring only; the port comes in, closed.
#pragma once

#include <memory>
#include <utility>

#include "host/BridgeBackend.h"
#include "host/BridgeLink.h"
#include "rig/RadioKit.h"

namespace spectrino {

class BridgeKit final : public RadioKit {
 public:
  BridgeKit(const KitParts& parts, std::unique_ptr<BridgePort> port)
      : port_(std::move(port)),
        link_(*port_, parts.User, parts.Time),
        backend_(link_, parts.Store, parts.Settings, parts.Time) {}

  [[nodiscard]] RigBackend& Backend() override { return backend_; }
  [[nodiscard]] const RadioTraits& Traits() const override { return traits_; }
  [[nodiscard]] LinkHealth Health() const override { return link_.Health(); }
  [[nodiscard]] bool Carries(CatWay way) const override { return way == CatWay::Bridge; }
  [[nodiscard]] std::string Model() const override { return "LP-Bridge"; }
  void WayChosen(CatWay way) override {
    if (way == CatWay::Bridge)
      link_.OpenDdeLink();
    else
      link_.CloseDdeLink();
  }

 private:
  std::unique_ptr<BridgePort> port_;
  RadioTraits traits_;
  BridgeLink link_;
  BridgeBackend backend_;
};

}  // namespace spectrino
