// The demo band's dial as one way to a radio. Wiring only.
#pragma once

#include "demo/DemoDial.h"
#include "rig/RadioKit.h"

namespace spectrino {

class DemoKit final : public RadioKit {
 public:
  explicit DemoKit(const KitParts& parts) : dial_(parts.Store) {}

  [[nodiscard]] RigBackend& Backend() override { return dial_; }
  [[nodiscard]] const RadioTraits& Traits() const override { return traits_; }
  [[nodiscard]] LinkHealth Health() const override { return {.State = LinkState::Live}; }
  [[nodiscard]] bool IsDialOf(SourceKind source) const override { return source == SourceKind::Demo; }

 private:
  RadioTraits traits_{
      .Deck = {BandLayout::HostWhole, ModeLayout::Designed}, .HasVfoB = false, .StepMHz = 0.1};
  DemoDial dial_;
};

}  // namespace spectrino
