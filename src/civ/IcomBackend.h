// The Icom as tuning, bands, modes and macros see it.
// Its spectrum is IcomLink's, opening its link its carrier's.
#pragma once

#include "bandplan/BandMemory.h"
#include "civ/CivState.h"
#include "civ/IcomCarrier.h"
#include "civ/IcomCommands.h"
#include "rig/RigBackend.h"
#include "settings/SettingsStore.h"

namespace spectrino {

class IcomBackend final : public RigBackend {
 public:
  /// All outlive it.
  IcomBackend(CivState& state, IcomCarrier& carrier, IcomCommands& commands, SettingsStore& store,
              BandMemory& memory)
      : state_(state), carrier_(carrier), commands_(commands), store_(store), memory_(memory) {}

  /// Also sends what is due.
  void Refresh(RadioState& radio) override;

  /// The scope shows one VFO, and CI-V sets the one in use: either request tunes it.
  void SetFrequency(Vfo vfo, double freqMHz, Aim aim) override;
  /// SelectIcomBand: back to where the radio was on that band, scope in centre mode. Nothing on the band that
  /// it is on already.
  void SelectBand(int button) override;
  void RememberBand() override;
  bool SelectMode(const ModeRequest& request) override;
  /// No data modes of the sidebands, and none of the other VFO.
  bool SetMode(Vfo receiver, const ExactMode& exact) override;
  bool Transmit(bool on) override;
  /// Command, sub-command and data as hexadecimal digits; blanks between them are skipped.
  void SendMacro(std::string_view text) override;
  /// The width, once the radio told it.
  [[nodiscard]] FilterReach FilterReachOf(Vfo receiver) const override;
  void ChangeBandwidth(Vfo receiver, int deltaHz) override;
  /// A third of the scope's span from the plot's centre.
  void StepFrequency(int direction, double centreMHz) override;

 private:
  CivState& state_;
  IcomCarrier& carrier_;
  IcomCommands& commands_;
  SettingsStore& store_;
  BandMemory& memory_;
  double askedHz_ = 0;  ///< width that steps count on from: the radio's own are coarser
  int askedNumber_ = -1;
};

}  // namespace spectrino
