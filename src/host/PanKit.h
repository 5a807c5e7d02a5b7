// A program that publishes its radio's state in a section "PAN", as one way to a radio. Wiring only.
#pragma once

#include "host/PanBackend.h"
#include "rig/RadioKit.h"

namespace spectrino {

class PanKit final : public RadioKit {
 public:
  explicit PanKit(const KitParts& parts) : backend_(parts.Store, parts.Settings, parts.Time) {}

  [[nodiscard]] RigBackend& Backend() override { return backend_; }
  [[nodiscard]] const RadioTraits& Traits() const override { return traits_; }
  [[nodiscard]] LinkHealth Health() const override { return {.State = LinkState::Live}; }
  [[nodiscard]] bool Carries(CatWay way) const override { return way == CatWay::Ketrel; }

 private:
  RadioTraits traits_;
  PanBackend backend_;
};

}  // namespace spectrino
