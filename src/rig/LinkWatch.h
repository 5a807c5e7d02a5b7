// Watches one link: whether it is there, when it was heard last, when it is to be tried again.
// Connects nothing; who owns the link asks TryDue and does so.
#pragma once

#include <cstddef>
#include <string>

#include "platform/Clock.h"
#include "rig/LinkHealth.h"

namespace spectrino {

class LinkWatch {
 public:
  /// So long without a byte is silence: told within 3 s of the last one. A K4 is asked each half second, an
  /// Icom each second.
  static constexpr std::chrono::milliseconds kSilence{2500};

  explicit LinkWatch(const Clock& clock) : clock_(clock) {}

  /// Opened; nothing was heard yet.
  void Begin();
  /// Closed by intention: nothing is tried any more.
  void End();
  /// Only one that is heard for a while begins its pauses anew: a peer may take a connection, say something
  /// and drop it, for ever.
  void Heard();
  /// It is gone. why: in the user's terms, without a full stop.
  void Lost(std::string why);
  /// Setting "Reconnect": off, nothing is tried by itself, and Health tells of Lost what to do.
  void TryAgain(bool again) { again_ = again; }
  /// True when it is time to try a lost link again: after 1, 2, 4, 8, then every 15 s. Each true counts as a
  /// try; Begin or Lost tells how it went.
  [[nodiscard]] bool TryDue();

  [[nodiscard]] bool IsLost() const { return state_ == LinkState::Lost; }
  /// Nothing was tried since it was last heard for a while: what goes wrong now is news.
  [[nodiscard]] bool Steady() const { return tries_ == 0; }
  [[nodiscard]] LinkHealth Health() const;

 private:
  const Clock& clock_;
  bool again_ = true;
  LinkState state_ = LinkState::Closed;
  LinkHealth::Time heard_{};
  LinkHealth::Time liveSince_{};
  LinkHealth::Time nextTry_{};
  std::size_t tries_ = 0;  ///< since it was heard for a while
  std::string why_;
};

}  // namespace spectrino
