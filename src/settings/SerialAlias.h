// Which device stands behind the serial port number of the settings.
// A number never means the n-th of a list: that would change with plugging.
#pragma once

#include <string>
#include <string_view>

#include "settings/SettingsStore.h"

namespace spectrino {

/// The alias "n=<path>" of section "Ports", else /dev/ttyUSB(n-1). port: 1..32.
[[nodiscard]] std::string SerialPath(SettingsStore& store, int port);
void SaveSerialAlias(SettingsStore& store, int port, std::string_view path);

}  // namespace spectrino
