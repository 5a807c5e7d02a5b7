// A simulated Icom on its CI-V bus: bytes in, bytes out, time handed in.
// Not a port: see IcomSimPort. Nothing of the transceivers' own sound or transmitter is simulated.
#pragma once

#include <chrono>
#include <cstdint>

#include "sim/icom/IcomSimBand.h"
#include "sim/icom/IcomSimControl.h"
#include "sim/icom/IcomSimLine.h"

namespace spectrino {

struct IcomSimSetup {
  IcomSimKind Model = IcomSimKind::Ic7300;
  bool Echo = false;            ///< the bus returns what was sent to it, as a one-wire CI-V cable does
  int Divisions = 0;            ///< frames of one scope line, 1..15; 0: the model's own
  double LinesPerSecond = 15;   ///< at the fast sweep; a half and a fifth of it at the others
  int BytesPerSecond = 11'520;  ///< 115200 baud
  std::uint8_t Identity = 0;    ///< what it says it is; 0: its model
  bool Operator = false;        ///< somebody turns the knob slowly and changes the mode now and then
  std::uint64_t BandSeed = 1;
  IcomSimFaults Faults = {};
};

class IcomRadio {
 public:
  /// The radio is switched on at start; its band counts from there.
  IcomRadio(const IcomSimSetup& setup, SimTime start);
  IcomRadio(const IcomRadio&) = delete;
  IcomRadio& operator=(const IcomRadio&) = delete;

  /// Bytes that reached the radio, in pieces of any size. Frames for other addresses are ignored.
  void Receive(SimByteView bytes, SimTime now);
  /// What the radio has put on the line by now, never faster than the line carries. now never goes back.
  [[nodiscard]] SimBytes Transmit(SimTime now);

  void SetFaults(const IcomSimFaults& faults) { line_.SetFaults(faults); }
  [[nodiscard]] const IcomSimFaults& Faults() const { return line_.Faults(); }
  /// Its own power switch. Switched off it hears and says nothing.
  void SwitchPower(bool on) { control_.SwitchPower(on); }
  /// Somebody else switches the scope's data off.
  void StopScopeData() { control_.StopScopeData(); }
  [[nodiscard]] const IcomSimState& State() const { return control_.State(); }
  [[nodiscard]] const IcomSimSettings& Settings() const { return control_.Settings(); }
  [[nodiscard]] const IcomSimModel& Model() const { return model_; }
  [[nodiscard]] const IcomSimBand& Band() const { return band_; }

 private:
  [[nodiscard]] double SecondsAt(SimTime now) const;
  void Obey(SimByteView frame, SimTime now);
  [[nodiscard]] SimBytes Execute(SimByteView command, SimTime now);
  void QueueScopeLine(SimTime now);
  void TurnKnob(SimTime now);
  void Announce(SimByteView command, SimTime now);
  [[nodiscard]] std::chrono::nanoseconds LineTime() const;

  const IcomSimModel& model_;
  IcomSimSetup setup_;
  SimTime start_;
  IcomSimBand band_;
  IcomSimControl control_;
  IcomSimSplitter splitter_;
  IcomSimLine line_;
  std::uint8_t controller_ = 0xE0;  ///< whoever asked last; scope lines go there
  bool scopeRuns_ = false;
  SimTime nextLineAt_{};
  SimTime nextTurnAt_{};
  int turns_ = 0;
  std::uint64_t noise_ = 0;
};

}  // namespace spectrino
