// Which back-end serves which setting of CatControl. Holds the only switch over it.
// Owns nothing: the back-ends belong to the program and come and go with its links.
#pragma once

#include <string>

#include "rig/RadioLink.h"
#include "rig/RigBackend.h"
#include "state/CatControl.h"

namespace spectrino {

struct RigBackends {
  RigBackend* Host = nullptr;    ///< the host CAT program
  RigBackend* Bridge = nullptr;  ///< the bridge service
  RigBackend* Ketrel = nullptr;  ///< the outside CAT program's settings section
  RigBackend* Icom = nullptr;    ///< the radio's own line
  RigBackend* K4 = nullptr;
  RadioLink* IcomLink = nullptr;  ///< the spectrum of the same radios
  RadioLink* K4Link = nullptr;
};

class RigRouter {
 public:
  RigRouter() = default;
  explicit RigRouter(const RigBackends& backends) : backends_(backends) {}

  /// The back-end that tells and sets the frequency; null where this set-up has none.
  [[nodiscard]] RigBackend* Backend(CatControl control, const RadioState& radio) const;
  [[nodiscard]] RigBackend* Host() const { return backends_.Host; }
  /// The link that delivers the spectrum of a radio source by its name in the list; null when there is none.
  [[nodiscard]] RadioLink* Link(const std::string& sourceName) const;

 private:
  RigBackends backends_;
};

}  // namespace spectrino
