// CivSender through the host program. What that one has a command of its own for goes there as such: it is
// not disturbed then by a reply to a frame that it knows nothing of.
#pragma once

#include "civ/CivSender.h"
#include "rig/HostIcom.h"

namespace spectrino {

class HostCivSender final : public CivSender {
 public:
  /// It outlives this.
  explicit HostCivSender(HostIcom& host) : host_(host) {}

  void SendCiv(std::string_view command, std::string_view subCommand, std::string_view data) override;
  void SendFrequency(std::string_view bcd) override;
  /// Nothing: replies come by themselves.
  void ReceiveCiv() override {}
  /// All but frequency and mode, which the host tells anyway.
  void RequestIcomStatus() override;

 private:
  HostIcom& host_;
};

}  // namespace spectrino
