// One way of reaching a radio, as the program sees it: one method per thing an operator wants.
// Not a spectrum source: a radio that also delivers spectrum implements RadioLink beside it.
#pragma once

#include <string_view>

#include "state/RadioState.h"

namespace spectrino {

enum class Vfo { A, B };

/// A mode button (0..9) as it was pressed. Reverse: the other sideband of CW or FSK, by its stored toggle.
struct ModeRequest {
  int Button = 0;
  bool Reverse = false;
};

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

  /// Asks the radio for a frequency, MHz, above 0. Never waits; a newer one may overtake one that has not
  /// left yet. A back-end without a VFO B ignores requests for it.
  virtual void SetFrequency(Vfo vfo, double freqMHz) = 0;
  /// Whether SubFreqMHz is told and VFO B can be set.
  [[nodiscard]] virtual bool HasVfoB() const { return true; }
  /// The operator is about to leave by typing a frequency: where the radio is now is kept in its band's
  /// record, where the back-end has such.
  virtual void RememberBand() {}
  /// Band button 0..13, by this back-end's layout; what it has no band for is ignored.
  virtual void SelectBand(int button) = 0;
  /// False when this back-end has no mode command.
  virtual bool SelectMode(const ModeRequest& request) = 0;
  /// A user's macro text, as it was typed. Nothing where there is no command channel.
  virtual void SendMacro(std::string_view text) = 0;

  /// Of a receiver's filter, by so many hertz. Nothing where the filter cannot be set.
  virtual void ChangeBandwidth(Vfo /*receiver*/, int /*deltaHz*/) {}
  virtual void ShiftPassband(Vfo /*receiver*/, int /*deltaHz*/) {}
  /// Wider (+1) or narrower (-1). False where the span is the program's own: the zoom is stepped then.
  virtual bool StepSpan(int /*direction*/) { return false; }
  /// How far the cmdUpDn buttons move, Hz. centreMHz: of the plot, for radios that move from there.
  virtual void StepFrequency(int direction, double centreMHz) = 0;
};

}  // namespace spectrino
