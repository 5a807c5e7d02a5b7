// The inside of a simulated Icom: what it is set to, and what it answers to one CI-V command.
// Not the bus: addresses, echo, line rate and faults are in IcomRadio.
#pragma once

#include "sim/icom/IcomSimBand.h"
#include "sim/icom/IcomSimScopeControl.h"
#include "sim/icom/IcomSimVfo.h"

namespace spectrino {

class IcomSimControl {
 public:
  /// model and band must outlive the control.
  IcomSimControl(const IcomSimModel& model, const IcomSimBand& band) : model_(model), band_(band) {}
  IcomSimControl(const IcomSimControl&) = delete;
  IcomSimControl& operator=(const IcomSimControl&) = delete;

  /// Carries out what stands after the addresses of a frame: command, sub-command, data.
  /// Returns the same part of the answer: FB, FA, or command and data; empty when a radio keeps quiet.
  /// seconds: since the radio was switched on, for the meter.
  [[nodiscard]] SimBytes Execute(SimByteView command, double seconds);

  [[nodiscard]] const IcomSimState& State() const { return state_; }
  [[nodiscard]] const IcomSimModel& Model() const { return model_; }
  [[nodiscard]] const IcomSimSettings& Settings() const { return settings_; }
  /// The edge set that the fixed-mode scope shows.
  [[nodiscard]] SimHzRange FixedEdges() const { return scope_.FixedEdges(); }
  /// The operator's own hand on the radio. False, and nothing done, where it does not receive.
  bool TuneTo(std::int64_t hz) { return vfo_.TuneTo(hz); }
  void SwitchTo(std::uint8_t mode) { state_.Active().Mode = mode; }
  /// A radio that is switched off forgets that it was to send its scope's data.
  void SwitchPower(bool on);
  /// Somebody else switches the scope's data off.
  void StopScopeData() { settings_.Reset({0x27, 0x11}); }

 private:
  [[nodiscard]] SimAnswer Dispatch(SimByteView command);
  [[nodiscard]] std::optional<SimAnswer> ExecuteOwn(SimByteView command);
  SimAnswer Scan(SimByteView data);
  SimAnswer Attenuator(SimByteView data);
  SimAnswer Accept(SimByteView data);
  SimAnswer SquelchOpen(SimByteView data);
  SimAnswer SignalMeter(SimByteView data);
  SimAnswer QuietMeter(SimByteView data);
  SimAnswer Power(SimByteView data);
  SimAnswer Identify(SimByteView data);
  SimAnswer MenuItem(SimByteView data);

  const IcomSimModel& model_;
  const IcomSimBand& band_;
  IcomSimState state_;
  IcomSimSettings settings_{model_, state_};
  IcomSimVfo vfo_{model_, state_, settings_};
  IcomSimScopeControl scope_{state_, settings_};
  double seconds_ = 0;
};

}  // namespace spectrino
