// The link to the bridge: linked texts that it tells, and one for commands. Open beside runs, as long
// as the bridge is the chosen way to the radio. Knows how commands are written, not when they are sent.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "platform/BridgePort.h"
#include "platform/Clock.h"
#include "platform/Notifier.h"
#include "rig/LinkHealth.h"

namespace spectrino {

class BridgeLink {
 public:
  /// All outlive it; takes the port's events.
  BridgeLink(BridgePort& port, Notifier& user, const Clock& clock);
  ~BridgeLink();
  BridgeLink(const BridgeLink&) = delete;
  BridgeLink& operator=(const BridgeLink&) = delete;

  /// Looks for the bridge. One that is not running is told once; one that comes later is followed all the
  /// same.
  void OpenDdeLink();
  void CloseDdeLink();
  [[nodiscard]] bool DdeActive() const { return active_; }
  [[nodiscard]] LinkHealth Health() const;

  /// As the bridge told it last; empty before. A number that no radio has is not taken: the one before stays.
  [[nodiscard]] const std::string& Text(BridgeItem item) const {
    return texts_[static_cast<std::size_t>(item)];
  }

  /// band: number of the band from 0. "BN" and two digits.
  void BridgeSetBand(int band);
  /// "FA", with which 2 "FB", and eleven digits of hertz.
  void BridgeSetFrequency(double freqMHz, int which);

 private:
  void Take(BridgeItem item, const std::string& text);
  void Missed(const std::string& why);
  void Poke(const std::string& txtLPB_LINK);

  BridgePort& port_;
  Notifier& user_;
  const Clock& clock_;
  std::array<std::string, kBridgeItems.size()> texts_;
  bool active_ = false;
  bool found_ = false;
  bool answered_ = false;  ///< since it was opened: it is there, or it is not
  bool logged_ = false;    ///< since it was opened: that something was not taken
  std::string why_;
  LinkHealth::Time since_{};
};

}  // namespace spectrino
