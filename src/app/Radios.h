// The ways to a radio that this program has: one line each, in Radios.cpp.
#pragma once

#include <memory>
#include <vector>

#include "run/RigRouter.h"

namespace spectrino {

class Radios {
 public:
  /// The list of sources shows the radios in the order of the kits.
  explicit Radios(const KitParts& parts);
  ~Radios();

  [[nodiscard]] const RigRouter& Router() const { return router_; }
  /// As rows of the list of sources.
  [[nodiscard]] std::span<const RadioSource> Sources() const { return sources_; }

 private:
  std::vector<std::unique_ptr<RadioKit>> kits_;
  std::vector<RadioSource> sources_;
  RigRouter router_;
};

}  // namespace spectrino
