#include "run/RigRouter.h"

#include "capture/DeviceList.h"

namespace spectrino {

RigBackend* RigRouter::Backend(CatControl control, const RadioState& radio) const {
  switch (control) {
    case CatControl::HostIf:
      // A radio that delivers the spectrum tells its own frequency.
      if (radio.K4Active) return backends_.K4;
      return radio.IcomActive ? backends_.Icom : backends_.Host;
    case CatControl::IcomViaHost:
      return radio.K4Active ? backends_.K4 : backends_.Host;
    case CatControl::FixedLo:
    case CatControl::HostK3If:
      return backends_.Host;
    case CatControl::BridgeIf:
    case CatControl::BridgeFixedLo:
      return backends_.Bridge;
    case CatControl::KetrelIf:
    case CatControl::KetrelFixedLo:
      return backends_.Ketrel;
    case CatControl::RadioDirect:
      if (radio.K4Active) return backends_.K4;
      return radio.IcomActive ? backends_.Icom : nullptr;
  }
  return nullptr;
}

RadioLink* RigRouter::Link(const std::string& sourceName) const {
  if (sourceName == kIcomSource) return backends_.IcomLink;
  if (sourceName == kK4Source || sourceName == kK4DSource) return backends_.K4Link;
  return nullptr;
}

}  // namespace spectrino
