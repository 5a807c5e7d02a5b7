// The radio behind the host program, as tuning, bands, modes and macros see it.
// Looks for the host at Start and publishes what it tells; reading and setting are HostRadio's.
#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/HostRadio.h"
#include "host/PanKeys.h"
#include "platform/EventPump.h"
#include "rig/RigBackend.h"
#include "rig/SteppedHz.h"
#include "settings/PanSettings.h"
#include "state/Pacer.h"

namespace spectrino {

/// Where the host is: key "HostEndpoint", else an endpoint in ("Bexmora", "Setup", "AppPath"), else port 4532
/// of this machine.
[[nodiscard]] RigctldEndpoint HostEndpoint(SettingsStore& store);
/// The same with this text in place of what the key holds.
[[nodiscard]] RigctldEndpoint HostEndpoint(SettingsStore& store, std::string_view text);

class HostBackend final : public RigBackend {
 public:
  struct Parts {
    HostRadio& Radio;
    SettingsStore& Store;
    const PanSettings& Settings;
    Notifier& User;
    EventPump& Pump;
    const Clock& Time;
    std::function<bool()> Abandoned;
    std::function<void(bool on)> Ticking;  ///< Tick is wanted from now on, or no longer
  };
  /// All outlive it.
  explicit HostBackend(Parts parts) : parts_(std::move(parts)) {}

  /// Waits, with events flowing, until the host answers, is refused, or a second has passed. A host that
  /// takes the connection and says nothing is there: its radio may be off, and be switched on later.
  bool Open() override;
  void Close() override;
  /// Instead of Open, without waiting: the host is taken for found, and followed once it is.
  void FollowLater();
  /// To be called every few milliseconds while open.
  void Tick() { parts_.Radio.Tick(); }

  void Refresh(RadioState& radio) override;
  [[nodiscard]] double LinkOffsetKHz() const override { return pan_.OffsetHz / 1000; }
  void SetFrequency(Vfo vfo, double freqMHz, Aim aim) override;
  void RememberBand() override { parts_.Radio.RememberBand(); }
  void SelectBand(int button) override { parts_.Radio.HostSetBand(button); }
  bool SelectMode(const ModeRequest& request) override;
  /// VFO A's.
  bool SetMode(Vfo receiver, const ExactMode& exact) override;
  bool SetSplit(bool on) override;
  bool Transmit(bool on) override;
  /// For an Icom hexadecimal digits, for others text; "FA" or "FB" with 11 digits for any.
  void SendMacro(std::string_view text) override;
  /// As the radio behind the host can: the width of either VFO, the IF shift of VFO A.
  [[nodiscard]] FilterReach FilterReachOf(Vfo receiver) const override;
  void ChangeBandwidth(Vfo receiver, int deltaHz) override;
  void ShiftPassband(Vfo receiver, int deltaHz) override;

 private:
  void Begin();
  void Publish();

  Parts parts_;
  CatControl control_ = CatControl::HostIf;
  PanValues pan_;
  bool told_ = false;  ///< a frequency, in this run
  Pacer read_{std::chrono::milliseconds(100)};
  std::vector<KeyValue> published_;
  std::uint64_t publishedSerial_ = 0;
  double publishedSubMHz_ = 0;
  int publishedMode_ = 0;
  static constexpr std::chrono::milliseconds kOwnCount{2000};
  std::array<SteppedHz, 2> ownWidth_{SteppedHz{kOwnCount}, SteppedHz{kOwnCount}};
  SteppedHz ownShift_{kOwnCount};
};

}  // namespace spectrino
