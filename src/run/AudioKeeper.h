// The sound input of a run. One that goes away is waited for by its stable id, so that the run goes on.
// Tells nobody: Health() says how it does, and Poll fails only where nothing is to be waited for.
#pragma once

#include <functional>
#include <string>

#include "capture/AudioSource.h"
#include "capture/DeviceList.h"
#include "capture/InputOpener.h"
#include "platform/Notifier.h"
#include "rig/LinkWatch.h"

namespace spectrino {

class AudioKeeper final : public SpectrumSource {
 public:
  AudioKeeper(const Clock& clock, StageTimes& times, Notifier& user)
      : user_(user), source_(clock, times), watch_(clock) {}

  /// Opens the input for a run. reconnect: setting "Reconnect". False with the reason, a sentence.
  bool Open(const DeviceList::Entry& entry, const CaptureSettings& settings, bool reconnect,
            std::string& reason);
  /// The same input with other settings. One that is lost is waited for with these from now on.
  bool Reopen(const CaptureSettings& settings, std::string& reason);
  /// At once, whatever is under way.
  void Close();
  /// Of this run; null while none is on.
  [[nodiscard]] const SoundDevice* Device() const {
    return entry_.Input != nullptr ? &entry_.Device : nullptr;
  }

  PollResult Poll(const LineRequest& request, SpectrumLine& line) override;
  /// AudioSource::Discard, watched.
  PollResult Discard();
  [[nodiscard]] std::string Failure() const override { return source_.Failure(); }
  [[nodiscard]] std::string Warning() const { return source_.Warning(); }
  [[nodiscard]] LinkHealth Health() const { return watch_.Health(); }
  [[nodiscard]] std::chrono::nanoseconds UntilBlock() const { return source_.UntilBlock(); }
  [[nodiscard]] AudioSource& Source() { return source_; }

  /// The first block came after the input had been lost; called before its line is handed over.
  std::function<void()> Returned;

 private:
  PollResult Watched(PollResult result);
  void Lose(std::string why);
  void TryAgain();

  Notifier& user_;
  AudioSource source_;
  LinkWatch watch_;
  DeviceList::Entry entry_;
  bool reconnect_ = true;
  std::string why_;
  bool trying_ = false;
  InputOpener opener_;
};

}  // namespace spectrino
