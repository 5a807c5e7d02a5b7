#include "settings/SerialAlias.h"

#include "settings/Keys.h"

namespace spectrino {
namespace {
constexpr std::string_view kPortsSection = "Ports";
}

std::string SerialPath(SettingsStore& store, int port) {
  const std::string path = store.GetSetting(kOwnApplication, kPortsSection, std::to_string(port), "");
  return path.empty() ? "/dev/ttyUSB" + std::to_string(port - 1) : path;
}

void SaveSerialAlias(SettingsStore& store, int port, std::string_view path) {
  store.SaveSetting(kOwnApplication, kPortsSection, std::to_string(port), path);
}

}  // namespace spectrino
