// The machine's serial ports, as Qt and udev know them.
#pragma once

#include "platform/SerialPorts.h"

namespace spectrino {

class QtSerialPorts final : public SerialPorts {
 public:
  [[nodiscard]] std::vector<SerialPortEntry> List() const override;
  [[nodiscard]] bool SameDevice(const std::string& one, const std::string& other) const override;
  [[nodiscard]] bool Exists(const std::string& path) const override;
};

}  // namespace spectrino
