// Why a serial device cannot be opened, or no longer is, in words that help its user.
// Asks the file system; opens nothing.
#pragma once

#include <string>

namespace spectrino {

/// Who holds a device. Looking through all processes takes long enough to be seen in the window: it is kept
/// from try to try, while that process runs.
struct SerialPortHolder {
  std::string Text;     ///< "name (process 123)"
  std::string Process;  ///< its folder below /proc; empty: none is seen
  bool Sought = false;
};

/// One sentence without a full stop: that the device is not there, which group owns it, which program holds
/// it, or what the system said. refused: the open failed for want of permission or because it is held.
/// holder: what an earlier try for the same path found.
[[nodiscard]] std::string SerialPortTrouble(const std::string& path, bool refused,
                                            const std::string& systemText, SerialPortHolder& holder);

/// What became of a port that was open: "/dev/radio was unplugged". path: as it was opened, and as
/// SerialPortTrouble names it next; device: the node that it led to.
[[nodiscard]] std::string SerialPortLoss(const std::string& path, const std::string& device,
                                         const std::string& systemText);

}  // namespace spectrino
