// Pauses that keep the Qt event loop turning.
#pragma once

#include "platform/EventPump.h"

namespace spectrino {

class QtEventPump final : public EventPump {
 public:
  void Wait(std::chrono::milliseconds time) override;
};

}  // namespace spectrino
