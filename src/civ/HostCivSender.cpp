#include "civ/HostCivSender.h"

#include <string>

#include "civ/HexText.h"

namespace spectrino {

void HostCivSender::SendCiv(std::string_view command, std::string_view subCommand, std::string_view data) {
  std::string hex(command);
  hex += subCommand;
  if (data == "?") return host_.Ask(hex);
  hex += data;
  if (hex == "271101" || hex == "271100") return host_.SwitchScope(hex.back() == '1');
  host_.SendCommand(hex);
}

void HostCivSender::SendFrequency(std::string_view bcd) {
  if (FreqDigits(bcd)) host_.Backend().SetFrequency(Vfo::A, DecodeFreq(bcd), Aim::Dial);
}

void HostCivSender::RequestIcomStatus() {
  for (const char* hex : {"1401", "1403", "271400", "271A00", "271900"}) host_.Ask(hex);
}

}  // namespace spectrino
