// Which kit delivers the lines of a run and which one carries its frequencies and commands.
// A look-up in the list of kits; the only place that knows what a CAT control means for whom.
#pragma once

#include <vector>

#include "rig/RadioKit.h"

namespace spectrino {

struct Route {
  RadioKit* Source = nullptr;   ///< delivers the lines; null for sound inputs
  RadioKit* Control = nullptr;  ///< tells and sets the frequency; null where nothing here carries this way
  RadioKit* Dial = nullptr;     ///< of the source itself: controls where Control is not there; null: has none
  RadioTraits Traits;  ///< of the way that controls, whether a kit carries it or not; steps are the source's
};

class RigRouter {
 public:
  /// The kits outlive it.
  explicit RigRouter(std::vector<RadioKit*> kits = {}) : kits_(std::move(kits)) {}

  [[nodiscard]] Route RouteOf(const SourceId& source, CatControl control) const;
  /// The kit that the host program is reached by, whatever the route; null where there is none.
  [[nodiscard]] RadioKit* Host() const { return KitFor(CatWay::Host); }
  [[nodiscard]] const std::vector<RadioKit*>& Kits() const { return kits_; }

 private:
  [[nodiscard]] RadioKit* KitFor(CatWay way) const;

  std::vector<RadioKit*> kits_;
};

}  // namespace spectrino
