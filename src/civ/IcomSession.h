// A run's session with an Icom on a serial line: opening the port, asking the radio what it is, setting it
// up, and bringing back a line that is lost or a radio that fell silent, in the state that the operator left.
// Knows nothing of what is drawn, and handles no button: panel and tuning send through Sender().
#pragma once

#include <cstdint>
#include <string>

#include "civ/CivLink.h"
#include "civ/IcomCarrier.h"
#include "civ/IcomParts.h"
#include "civ/ScopeWatch.h"
#include "rig/LinkWatch.h"
#include "state/Pacer.h"

namespace spectrino {

class IcomSession final : public IcomCarrier {
 public:
  explicit IcomSession(const IcomParts& parts);

  // IcomCarrier
  [[nodiscard]] bool Open() override;
  void Close() override;
  [[nodiscard]] bool Closing() const override { return link_.Closing(); }
  void FinishClosing() override;
  void Pump() override;
  [[nodiscard]] CivSender& Sender() override { return link_; }
  [[nodiscard]] LinkHealth Health() const override;
  [[nodiscard]] bool Answers() const override;
  [[nodiscard]] bool LinesDue() const override { return ScopeWanted() && !parts_.State.Transmitting; }
  [[nodiscard]] int SetUps() const override { return setUps_; }
  [[nodiscard]] std::chrono::steady_clock::time_point LineArrived() const override {
    return link_.LineArrived();
  }
  void BeforeLayout() override;
  void AfterLayout(bool hidden) override;

 private:
  [[nodiscard]] bool ReadAddresses();
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
