// The one way a command leaves for an Icom. Implemented by the link that holds the port.
#pragma once

#include <string_view>

namespace spectrino {

class CivSender {
 public:
  virtual ~CivSender() = default;
  /// All three are hex text. command: one byte ("03"). subCommand: none to two bytes, or a whole BCD
  /// frequency. data: hex text, or "?" for a read request. Failures are silent; frames leave in order, 10 ms
  /// apart.
  virtual void SendCiv(std::string_view command, std::string_view subCommand, std::string_view data) = 0;
  /// SendCiv with a frequency to be set: replaces one that has not left yet, so that the radio never lags
  /// behind.
  virtual void SendFrequency(std::string_view bcd) = 0;
  /// Reads what the port holds and parses every complete frame.
  virtual void ReceiveCiv() = 0;
  /// Asks for frequency, mode, levels and scope settings.
  virtual void RequestIcomStatus() = 0;
};

}  // namespace spectrino
