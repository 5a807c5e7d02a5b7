// One way of reaching a radio, as the program sees it: one method per thing an operator wants.
// Not a spectrum source: a radio that also delivers spectrum implements RadioLink beside it.
#pragma once

#include "state/RadioState.h"

namespace spectrino {

class RigBackend {
 public:
  virtual ~RigBackend() = default;
  RigBackend() = default;
  RigBackend(const RigBackend&) = delete;
  RigBackend& operator=(const RigBackend&) = delete;

  /// Called by Start. False when the other end is not there; the run goes on without a radio then.
  virtual bool Open() = 0;
  /// Called by Stop, and by a Start that fails after Open.
  virtual void Close() = 0;
  /// Brings frequency, mode and what else is known into the state. Once per pass of the run cycle: reads what
  /// a poll or a parser keeps fresh, never waits for the radio.
  virtual void Refresh(RadioState& radio) = 0;
  /// What the link adds to the global IF offset, kHz.
  [[nodiscard]] virtual double LinkOffsetKHz() const { return 0; }
};

}  // namespace spectrino
