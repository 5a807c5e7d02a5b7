// How the links of a run do, as the window tells it: one text, and what of the picture and of the header is
// no longer true. Looks; opens, closes and sends nothing.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/Clock.h"
#include "run/RunCycle.h"
#include "run/Session.h"

namespace spectrino {

/// One link: what it is called, how it does, whether it was heard in this run.
struct WatchedLink {
  LinkHealth Health;
  std::string Name;
  bool Heard = false;

  /// What it told is no longer so.
  [[nodiscard]] bool Bad() const {
    return Health.State == LinkState::Silent || Health.State == LinkState::Lost ||
           (Health.State == LinkState::Connecting && Heard);
  }
  [[nodiscard]] std::string Text(LinkHealth::Time now) const;
};

class LinkView {
 public:
  /// All outlive it. serverTrouble: what is wrong with the CAT server that the program runs itself, in a run
  /// and beside it; empty while nothing is.
  LinkView(
      const RunCycle& cycle, const Session& state, const Clock& time,
      std::function<std::string()> serverTrouble = [] { return std::string(); })
      : cycle_(cycle), state_(state), time_(time), serverTrouble_(std::move(serverTrouble)) {}

  /// Looks at the links; a few times a second at least.
  void Look();
  /// A run began or ended: nothing of an earlier one counts, but what it left dimmed and dashed stays so
  /// until something is heard again.
  void RunChanged();

  /// What is wrong, a line for each link, counting its seconds; empty while all is well.
  [[nodiscard]] const std::string& Text() const { return text_; }
  /// The text says no more than that lines stay away: whoever knows why says more.
  [[nodiscard]] bool OnlyLinesMissing() const {
    return linesMissing_ && !(control_ && control_->Bad()) && server_.empty();
  }
  /// What is worth saying aloud, once: something went wrong in another way than before, or is well again.
  [[nodiscard]] std::string TakeNews() { return std::exchange(news_, {}); }
  /// When the newest line of a picture that has stopped was taken; nothing while the picture is live, and
  /// before the first line.
  [[nodiscard]] const std::optional<std::chrono::system_clock::time_point>& StoppedAt() const {
    return stoppedAt_;
  }
  /// Frequency, mode and split are those of a radio that is no longer heard.
  [[nodiscard]] bool RadioStale() const { return radioStale_; }
  /// What the operator's requests go to: null where there is no radio, and while it is not heard.
  [[nodiscard]] RigBackend* Backend() const { return radioStale_ ? nullptr : cycle_.Backend(); }
  /// What a filter that is gripped belongs to: the source's radio where it is one, whoever tells the
  /// frequency.
  [[nodiscard]] RigBackend* FilterBackend() const;

 private:
  void LookAtLinks();
  void LookAtRadio();
  void LookAtLines(LinkHealth::Time now);
  [[nodiscard]] bool CommandsStale() const;
  [[nodiscard]] bool LinesStopped(LinkHealth::Time now) const;
  void TellNews();

  const RunCycle& cycle_;
  const Session& state_;
  const Clock& time_;
  std::function<std::string()> serverTrouble_;
  WatchedLink source_;
  std::optional<WatchedLink> control_;  ///< where another kit than the source's tells the frequency
  LinkHealth::Time hiddenUntil_{};      ///< no line is taken while nobody can look at it
  LinkHealth::Time deafUntil_{};        ///< the link was not heard till then
  bool linesMissing_ = false;           ///< the link is heard, and brings none
  bool radioStale_ = false;
  std::optional<std::chrono::system_clock::time_point> stoppedAt_;
  std::string server_;  ///< what is wrong with our own server
  std::string text_;
  std::string news_;
  std::string told_;      ///< the kind of trouble that was told last
  std::string troubled_;  ///< whose it was
};

}  // namespace spectrino
