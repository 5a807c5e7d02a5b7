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
  /// Whether two paths lead to the same device now; one that leads nowhere equals only itself.
  [[nodiscard]] virtual bool SameDevice(const std::string& one, const std::string& other) const = 0;
  [[nodiscard]] virtual bool Exists(const std::string& path) const = 0;
};

}  // namespace spectrino
