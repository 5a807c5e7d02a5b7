// Short pauses inside a command sequence that keep the window alive.
// Not for the run cycle: it never waits.
#pragma once

#include <chrono>

namespace spectrino {

class EventPump {
 public:
  virtual ~EventPump() = default;
  /// Returns after the time has passed, with every event that came meanwhile delivered.
  virtual void Wait(std::chrono::milliseconds time) = 0;
};

}  // namespace spectrino
