// The serial ports of this machine, for choosing one. Opens none.
#pragma once

#include <string>
#include <vector>

namespace spectrino {

struct SerialPortEntry {
  std::string Label;  ///< "description (serial number) - ttyUSB0"
  std::string Path;   ///< the most lasting name there is: below /dev/serial/by-id when udev made one
};

class SerialPorts {
 public:
  virtual ~SerialPorts() = default;
  /// Those with a lasting name first.
  [[nodiscard]] virtual std::vector<SerialPortEntry> List() const = 0;
};

}  // namespace spectrino
