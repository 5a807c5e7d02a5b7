// The sound server's inputs (PulseAudio, and PipeWire through its PulseAudio side).
// Not a mixer: it changes no volume, no default and no profile of the server.
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "platform/Notifier.h"
#include "platform/SoundInput.h"

namespace spectrino {

/// Asks the server anew for each list and each stream, so a server that was restarted is simply found again.
/// Never starts a server. Without one every call returns at once; with one that does not answer, after
/// 2 s (Devices) or 4 s (Open).
class PulseInput final : public SoundInput {
 public:
  /// notifier: told, at most once, that real-time scheduling was refused. Outlives this object.
  explicit PulseInput(Notifier& notifier) : notifier_(notifier) {}

  /// In the server's order, the monitors of outputs behind the real inputs. StableId is "pulse:" and the
  /// source's name; inputs of the same description are told apart by that name.
  [[nodiscard]] std::vector<SoundDevice> Devices() override;

  /// Refuses what would fake a spectrum: a source of one channel, or one that the server resamples.
  [[nodiscard]] std::unique_ptr<SoundStream> Open(const SoundDevice& device, int rateHz, int blockFrames,
                                                  std::string& reason) override;

  /// Whether streams opened from now on capture with real-time scheduling, where the system allows it.
  void SetRealTimePriority(bool on) { realTime_ = on; }

 private:
  Notifier& notifier_;
  std::atomic<bool> realTime_ = false;
  std::atomic<bool> refusalLogged_ = false;
};

}  // namespace spectrino
