// Opens a sound input on a thread of its own, because a sound server that hangs takes seconds to be given up.
// One attempt at a time; decides neither when to try nor what a failure means.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "platform/SoundInput.h"

namespace spectrino {

class InputOpener {
 public:
  struct Wanted {
    SoundInput* Input = nullptr;  ///< outlives the opener
    std::string StableId{};
    int RateHz = 0;
    int BlockFrames = 0;
  };
  struct Outcome {
    std::unique_ptr<SoundStream> Stream{};  ///< null: it did not open
    bool Listed = false;                    ///< the input is there, whether it opened or not
    std::string Reason{};                   ///< why it did not open though it is listed
  };

  InputOpener() = default;
  /// Waits for an attempt that is under way: as long as the input itself waits.
  ~InputOpener();
  InputOpener(const InputOpener&) = delete;
  InputOpener& operator=(const InputOpener&) = delete;

  /// No attempt is under way, not even one that was abandoned.
  [[nodiscard]] bool IsFree() const { return !thread_.joinable() || attempt_->Ended; }
  /// Once free: lists the input's devices anew and opens the one with the stable id, wherever it stands now.
  /// False when there is no thread to be had.
  bool Begin(Wanted wanted);
  /// The attempt's outcome, once; nothing while it is under way.
  [[nodiscard]] std::optional<Outcome> Take();
  /// Nobody wants the outcome any more; a stream that it brings is closed. Never waits.
  void Abandon();

 private:
  struct Attempt {
    std::mutex Mutex;
    bool Abandoned = false;
    std::optional<Outcome> Done;
    std::atomic<bool> Ended = false;
  };
  static void Run(const Wanted& wanted, Attempt& attempt);

  std::shared_ptr<Attempt> attempt_;
  std::thread thread_;
};

}  // namespace spectrino
