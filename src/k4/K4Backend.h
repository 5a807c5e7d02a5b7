// The K4 as tuning, bands, modes and macros see it.
// Its spectrum, and connecting to it, are K4Link's.
#pragma once

#include <array>
#include <chrono>

#include "bandplan/BandMemory.h"
#include "k4/K4Commands.h"
#include "k4/K4Sender.h"
#include "k4/K4State.h"
#include "platform/Clock.h"
#include "rig/RigBackend.h"
#include "rig/SteppedHz.h"
#include "settings/SettingsStore.h"

namespace spectrino {

/// What of the K4's state every radio has: frequencies, modes, filters, S-meter, transmitting.
void TellRadioState(const K4State& state, RadioState& radio);
/// What belongs to the K4's lines, whoever tells its frequency: S-meter and transmitting.
void TellSignal(const K4State& state, RadioState& radio);

class K4Backend final : public RigBackend {
 public:
  /// All outlive it.
  K4Backend(K4State& state, K4Sender& sender, K4Dial& dial, K4Commands& commands, SettingsStore& store,
            BandMemory& memory, const Clock& clock)
      : state_(state),
        sender_(sender),
        dial_(dial),
        commands_(commands),
        store_(store),
        memory_(memory),
        clock_(clock) {}

  void Refresh(RadioState& radio) override;

  void SetFrequency(Vfo vfo, double freqMHz, Aim aim) override;
  /// Keeps where the radio is, then asks for the band; buttons 0 ("Gen"), 12 and 13 have none.
  void SelectBand(int button) override;
  void RememberBand() override;
  bool SelectMode(const ModeRequest& request) override;
  bool SetMode(Vfo receiver, const ExactMode& exact) override;
  bool SetSplit(bool on) override;
  bool Transmit(bool on) override;
  void SendMacro(std::string_view text) override { sender_.SendK4(text); }
  /// Both once the radio told them; a filter around an AM or FM carrier is not shifted.
  [[nodiscard]] FilterReach FilterReachOf(Vfo receiver) const override;
  void ChangeBandwidth(Vfo receiver, int deltaHz) override;
  void ShiftPassband(Vfo receiver, int deltaHz) override;
  void StepSpan(int direction) override;

 private:
  K4State& state_;
  K4Sender& sender_;
  K4Dial& dial_;
  K4Commands& commands_;
  SettingsStore& store_;
  BandMemory& memory_;
  const Clock& clock_;
  int StepOn(SteppedHz& own, int toldHz, int deltaHz);

  static constexpr std::chrono::milliseconds kOwnCount{400};
  std::array<SteppedHz, 2> ownShift_{SteppedHz{kOwnCount}, SteppedHz{kOwnCount}};  ///< by receiver
  std::array<SteppedHz, 2> ownBandwidth_{SteppedHz{kOwnCount}, SteppedHz{kOwnCount}};
};

}  // namespace spectrino
