// The machine's serial ports, as Qt and udev know them.
#pragma once

#include "platform/SerialPorts.h"

namespace spectrino {

class QtSerialPorts final : public SerialPorts {
 public:
  [[nodiscard]] std::vector<SerialPortEntry> List() const override;
};

}  // namespace spectrino
