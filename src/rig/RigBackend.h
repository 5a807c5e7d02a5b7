// One way of reaching a radio, as the program sees it: one method per thing an operator wants.
// Not a spectrum source: a radio that also delivers spectrum implements RadioLink beside it.
#pragma once

#include <string_view>

#include "state/RadioState.h"

namespace spectrino {

enum class Vfo { A, B };

/// What a requested frequency is.
enum class Aim {
  Dial,    ///< where the dial shall stand: a wheel's step, a typed frequency, a way back
  Signal,  ///< where a signal stands that was pointed at: links that tell another dial than the signal
           ///< correct
};

/// A mode button (0..9) as it was pressed.
struct ModeRequest {
  int Button = 0;
  bool Reverse = false;  ///< the other sideband of CW or FSK, by its stored toggle
};

/// A mode as programs name it.
struct ExactMode {
  int RadioMode = mode::kUnknown;
  bool Teletype = false;  ///< of DATA: radio teletype is meant

  bool operator==(const ExactMode&) const = default;
};

/// What of a receiver's filter a radio lets be set.
struct FilterReach {
  bool Width = false;
  bool Shift = false;
  bool MiddleStays = false;  ///< when the width changes, beside the dial too; else the edge at the dial stays
};

class RigBackend {
 public:
  virtual ~RigBackend() = default;
  RigBackend() = default;
  RigBackend(const RigBackend&) = delete;
  RigBackend& operator=(const RigBackend&) = delete;

  /// Called by Start for a way that delivers no lines; a radio that does opens and closes with its RadioLink.
  /// False when the other end is not there; the run goes on without a radio then.
  virtual bool Open() { return true; }
  /// Called by Stop, and by a Start that fails after Open.
  virtual void Close() {}
  /// Brings frequency, mode and what else is known into the state. Once per pass of the run cycle: reads what
  /// a poll or a parser keeps fresh, never waits for the radio.
  virtual void Refresh(RadioState& radio) = 0;
  /// What the link adds to the global IF offset, kHz.
  [[nodiscard]] virtual double LinkOffsetKHz() const { return 0; }

  /// Asks the radio for a frequency, MHz, above 0. Never waits; a newer one may overtake one that has not
  /// left yet. Where there is no VFO B either request tunes the one there is.
  virtual void SetFrequency(Vfo vfo, double freqMHz, Aim aim) = 0;
  /// The operator is about to leave by typing a frequency: where the radio is now is kept in its band's
  /// record, where the back-end has such.
  virtual void RememberBand() {}
  /// Band button 0..13, by this back-end's layout; what it has no band for is ignored.
  virtual void SelectBand(int button) = 0;
  /// False when this radio has no mode command.
  virtual bool SelectMode(const ModeRequest& request) = 0;
  /// What other programs ask for, which press no buttons: false where this radio cannot be asked for it.
  /// What comes of it shows in the state.
  virtual bool SetMode(Vfo /*receiver*/, const ExactMode& /*exact*/) { return false; }
  /// VFO B transmits (true), or A does.
  virtual bool SetSplit(bool /*on*/) { return false; }
  virtual bool Transmit(bool /*on*/) { return false; }
  /// A user's macro text, as it was typed. Nothing where there is no command channel.
  virtual void SendMacro(std::string_view text) = 0;

  /// What of a receiver's filter can be set now, in its mode and from what is known of it.
  [[nodiscard]] virtual FilterReach FilterReachOf(Vfo /*receiver*/) const { return {}; }
  /// Width and place of a receiver's filter, by so many hertz. Nothing where it cannot be set.
  virtual void ChangeBandwidth(Vfo /*receiver*/, int /*deltaHz*/) {}
  virtual void ShiftPassband(Vfo /*receiver*/, int /*deltaHz*/) {}
  /// Of the radio's own span (RadioTraits::OwnSpan): wider (+1) or narrower (-1).
  virtual void StepSpan(int /*direction*/) {}
  /// The cmdUpDn buttons where RadioTraits::StepMHz is 0: up (+1) or down (-1). centreMHz: of the plot, for
  /// radios that move from there.
  virtual void StepFrequency(int /*direction*/, double /*centreMHz*/) {}
};

}  // namespace spectrino
