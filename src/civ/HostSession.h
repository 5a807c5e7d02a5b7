// A run's session with an Icom behind the host program: what the host tells goes into the state, its scope is
// set up when the host is found, and again when it is found again or sends no lines.
#pragma once

#include <chrono>
#include <string>

#include "civ/HostCivSender.h"
#include "civ/IcomCarrier.h"
#include "civ/IcomParts.h"
#include "civ/ScopeWatch.h"
#include "rig/HostIcom.h"
#include "state/Pacer.h"

namespace spectrino {

class HostSession final : public IcomCarrier {
 public:
  /// All outlive it; takes the host's events.
  HostSession(const IcomParts& parts, HostIcom& host);
  ~HostSession() override;

  // IcomCarrier
  [[nodiscard]] bool Open() override;
  void Close() override;
  [[nodiscard]] bool Closing() const override { return false; }
  void FinishClosing() override {}
  void Pump() override;
  [[nodiscard]] CivSender& Sender() override { return sender_; }
  [[nodiscard]] LinkHealth Health() const override;
  [[nodiscard]] bool Answers() const override { return setUp_ && Health().State == LinkState::Live; }
  [[nodiscard]] bool LinesDue() const override { return ScopeWanted() && !parts_.State.Transmitting; }
  [[nodiscard]] int SetUps() const override { return setUps_; }
  [[nodiscard]] std::chrono::steady_clock::time_point LineArrived() const override { return lineArrived_; }
  void BeforeLayout() override;
  void AfterLayout(bool hidden) override;

 private:
  void TakeLine(const HostScopeLine& line);
  /// False while another reply is being parsed.
  bool TakeReply(std::string_view hex);
  void ForgetLine();
  void ReadHostIcom();
  void SetUpRadio();
  void SwitchScopeOn();
  [[nodiscard]] bool ScopeWanted() const;
  [[nodiscard]] std::string Advice() const;
  void Tell(std::string text);

  IcomParts parts_;
  HostIcom& host_;
  HostCivSender sender_;
  ScopeWatch scope_;
  Pacer look_{std::chrono::milliseconds(20)};
  bool hidden_ = false;
  bool setUp_ = false;
  bool everSetUp_ = false;  ///< in this run: what the operator changed since is kept
  int findings_ = 0;        ///< of the host, when the radio was set up
  int setUps_ = 0;
  std::string model_;  ///< by the host
  std::string mode_;   ///< mode byte that the state has
  std::string told_;   ///< stands in the status text
  std::chrono::steady_clock::time_point lineArrived_{};
};

}  // namespace spectrino
