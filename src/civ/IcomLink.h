// An Icom on a serial line: radio link and source of spectrum in one.
// Handles no button: panel and tuning send through Sender().
#pragma once

#include <cstdint>

#include "civ/CivLink.h"
#include "platform/EventPump.h"
#include "rig/LinkHealth.h"
#include "rig/RadioLink.h"
#include "settings/SettingsStore.h"

namespace spectrino {

/// What the link is made of; all of it outlives the link.
struct IcomParts {
  SerialPort& Port;
  CivState& State;
  IcomPanelView& Panel;
  SettingsStore& Store;
  const Clock& Time;
  EventPump& Pump;
  Notifier& User;
};

class IcomLink final : public RadioLink, public SpectrumSource {
 public:
  explicit IcomLink(const IcomParts& parts);

  // RadioLink
  /// False only where the set-up is wrong; the user has been told then. A port that cannot be opened is told
  /// in the status text and the run goes on without lines, as it does after an unplugged one.
  bool Open(RadioState& radio) override;
  void Close() override;
  [[nodiscard]] SpectrumSource& Source() override { return *this; }
  [[nodiscard]] LevelScale Scale() const override { return {0, 160, 160, 20, false}; }
  [[nodiscard]] std::array<double, 21> GridHz() const override { return parts_.State.ScopeGridHz; }
  /// The scope tells heights, not powers: about what half a decibel a step makes of them.
  [[nodiscard]] float AntennaDbm(float level) const override;
  /// Keeps the scope's lines off the bus while the window is laid out anew, and parses nothing meanwhile.
  void BeforeLayout() override;
  void AfterLayout(bool hidden) override;

  // SpectrumSource
  PollResult Poll(const LineRequest& request, SpectrumLine& line) override;
  [[nodiscard]] std::string Failure() const override { return {}; }

  /// Every second of a run: asks a radio that has not told what it is again, says so, and switches its scope
  /// on when it answers at last.
  void tmrAnswer_Timer();

  [[nodiscard]] CivSender& Sender() { return link_; }
  /// Sends what is due. Each pass of a run does so by itself; while Closing() it has to be called.
  void Pump() { link_.Pump(); }
  [[nodiscard]] bool Closing() const { return link_.Closing(); }
  [[nodiscard]] LinkHealth Health() const;

 private:
  void DetectIcomModel();
  void SwitchScopeOn();

  IcomParts parts_;
  CivLink link_;
  std::uint64_t polledSerial_ = 0;
  bool answered_ = false;
  int silentTicks_ = 0;
  std::string trouble_;  ///< why the port did not open
};

}  // namespace spectrino
