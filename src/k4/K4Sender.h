// The ways a command leaves for the K4. Implemented by the session that holds both connections.
#pragma once

#include <string_view>

namespace spectrino {

class K4Sender {
 public:
  virtual ~K4Sender() = default;
  /// Every command of the panel, of tuning and of macros: trimmed, with ";" added where it is missing. Does
  /// nothing while not connected.
  virtual void SendK4(std::string_view command) = 0;
  /// Ready-made text on the CAT connection, as it is; dropped by a closed socket.
  virtual void SendCat(std::string_view text) = 0;
  /// One line on the panadapter connection, CR LF added; dropped by a closed socket.
  virtual void SendPan(std::string_view line) = 0;
};

}  // namespace spectrino
