// A run's session with an Icom on a serial line: opening the port, asking the radio what it is, setting it
// up, and bringing back a line that is lost or a radio that fell silent, in the state that the operator left.
// Knows nothing of what is drawn, and handles no button: panel and tuning send through Sender().
#pragma once

#include <cstdint>
#include <string>

#include "civ/CivLink.h"
#include "civ/ScopeWatch.h"
#include "platform/EventPump.h"
#include "rig/LinkWatch.h"
#include "settings/SettingsStore.h"
#include "state/Pacer.h"

namespace spectrino {

/// What the session is made of; all of it outlives it.
struct IcomParts {
  SerialPort& Port;
  CivState& State;
  IcomPanelView& Panel;
  SettingsStore& Store;
  const Clock& Time;
  EventPump& Pump;
  Notifier& User;
};

class IcomSession {
 public:
  explicit IcomSession(const IcomParts& parts);

  /// Lets events flow while it waits for the radio. False only where the set-up is wrong; the user has been
  /// told then. A port that cannot be opened is lost, and is tried again like one that was pulled out.
  [[nodiscard]] bool Open();
  /// Switches the scope's data off and closes; nothing is tried any more. Never waits.
  void Close();
  /// Between Close and the last byte.
  [[nodiscard]] bool Closing() const { return link_.Closing(); }
  /// Sends what is due and mends what is broken: a lost port, a silent radio, a scope that was switched off.
  /// To be called every few milliseconds, while Closing() too. Never waits.
  void Pump();

  [[nodiscard]] CivSender& Sender() { return link_; }
  [[nodiscard]] LinkHealth Health() const;
  /// Whether it is worth while to ask the radio for more than what it is.
  [[nodiscard]] bool Answers() const;
  /// Whether lines should come: not where nobody can look at them, nor while the scan's dialog has the bus.
  /// A radio that transmits may send none, by its own menu.
  [[nodiscard]] bool LinesDue() const { return ScopeWanted() && !parts_.State.Transmitting; }
  /// Counts up each time that the radio was set up: what it was asked for before is to be asked again.
  [[nodiscard]] int SetUps() const { return setUps_; }
  /// When the last byte of the newest scope line came.
  [[nodiscard]] std::chrono::steady_clock::time_point LineArrived() const { return link_.LineArrived(); }

  /// As RadioLink has them.
  void BeforeLayout();
  void AfterLayout(bool hidden);

 private:
  [[nodiscard]] bool ReadAddresses();
  void WaitUntilClosed();
  [[nodiscard]] std::string OpenPort();
  void HandleLost(const std::string& reason);
  void SetUpRadio();
  void Heal();
  void FollowRadio();
  void AskAgain();
  [[nodiscard]] bool ScopeWanted() const;
  [[nodiscard]] std::string Advice() const;
  [[nodiscard]] std::string ScopeAdvice() const;
  void Tell(std::string text);

  IcomParts parts_;
  CivLink link_;
  LinkWatch watch_;
  ScopeWatch scope_;
  Pacer look_;
  Pacer ask_;
  bool reconnect_ = true;
  bool hidden_ = false;
  LinkHealth beforeLayout_;
  bool healBusy_ = false;
  bool identified_ = false;  ///< it said what it is since the port was opened, or since it was silent
  bool setUp_ = false;       ///< it was heard and set up since then
  bool everSetUp_ = false;   ///< in this run: what the operator changed since is kept
  std::uint64_t identitiesSeen_ = 0;
  int unanswered_ = 0;  ///< questions for its identity that a radio which is heard left open
  int setUps_ = 0;
  std::string told_;  ///< stands in the status text
};

}  // namespace spectrino
