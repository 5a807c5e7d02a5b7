// What arrives at the sound inputs now, for choosing one: the peaks of both channels of each.
// Opens them all on a thread of its own, since a server that hangs takes seconds; shows nothing.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "capture/DeviceList.h"

namespace spectrino {

struct InputReading {
  std::string StableId{};
  bool Heard = false;   ///< samples came since the last Read
  float LeftDb = -100;  ///< peaks, dB below full scale; -100 is silence
  float RightDb = -100;
  std::string Trouble{};  ///< why it cannot be heard, or what is wrong with its levels; empty: nothing
};

class InputLevels {
 public:
  InputLevels() = default;
  /// Waits for an input that is being opened: as long as the input itself waits.
  ~InputLevels();
  InputLevels(const InputLevels&) = delete;
  InputLevels& operator=(const InputLevels&) = delete;

  /// Listens to these from now on, one reading each; their inputs outlive this. Never waits.
  void Begin(std::vector<DeviceList::Entry> inputs);
  /// The peaks since the last call.
  [[nodiscard]] std::vector<InputReading> Read();
  /// Closes them all. Never waits.
  void End();

 private:
  struct Watch {
    std::vector<DeviceList::Entry> Inputs;
    std::mutex Mutex;
    std::vector<InputReading> Readings;  ///< under the mutex
    std::atomic<bool> Stop = false;
    std::atomic<bool> Ended = false;
  };
  struct Listener {
    std::shared_ptr<Watch> Shared;
    std::thread Thread;
  };
  class Ears;

  std::vector<Listener> listeners_;  ///< the last one is heard; those before are on their way out
};

}  // namespace spectrino
