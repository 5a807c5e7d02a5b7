#include "app/Radios.h"

#include "adapters/dbus/DbusBridgePort.h"
#include "adapters/qt/QtByteSocket.h"
#include "adapters/qt/QtDatagramSocket.h"
#include "adapters/qt/QtSerialPort.h"
#include "civ/ui/IcomKit.h"
#include "demo/DemoKit.h"
#include "host/BridgeKit.h"
#include "host/PanKit.h"
#include "host/ui/HostKit.h"
#include "k4/ui/K4Kit.h"

namespace spectrino {

Radios::Radios(const KitParts& parts) {
  // Goes after the Icom that it carries.
  auto host = std::make_unique<HostKit>(parts, std::make_unique<QtByteSocket>(),
                                        std::make_unique<QtDatagramSocket>());
  kits_.push_back(std::make_unique<IcomKit>(parts, std::make_unique<QtSerialPort>(), &host->Icom()));
  kits_.push_back(
      std::make_unique<K4Kit>(parts, std::make_unique<QtByteSocket>(), std::make_unique<QtByteSocket>()));
  kits_.push_back(std::move(host));
  kits_.push_back(std::make_unique<PanKit>(parts));
  kits_.push_back(std::make_unique<DemoKit>(parts));
  kits_.push_back(std::make_unique<BridgeKit>(parts, std::make_unique<DbusBridgePort>()));

  std::vector<RadioKit*> kits;
  for (const auto& kit : kits_) {
    kits.push_back(kit.get());
    for (const RadioSource& source : kit->Sources()) sources_.push_back(source);
  }
  router_ = RigRouter(std::move(kits));
}

Radios::~Radios() = default;

}  // namespace spectrino
