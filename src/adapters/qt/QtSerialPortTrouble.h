// Why a serial device cannot be opened, or no longer is, in words that help its user.
// Asks the file system; opens nothing.
#pragma once

#include <string>

namespace spectrino {

/// One sentence without a full stop: that the device is not there, which group owns it, which program holds
/// it, or what the system said. refused: the open failed for want of permission or because it is held.
[[nodiscard]] std::string SerialPortTrouble(const std::string& path, bool refused,
                                            const std::string& systemText);

/// What became of a device that was open: "ttyUSB0 was unplugged". device: its node, not a link to it.
[[nodiscard]] std::string SerialPortLoss(const std::string& device, const std::string& systemText);

}  // namespace spectrino
