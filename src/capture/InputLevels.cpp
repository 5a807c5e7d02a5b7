#include "capture/InputLevels.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <system_error>

namespace spectrino {

using namespace std::chrono_literals;

namespace {

constexpr int kUsualRateHz = 48000;
constexpr int kBlockFrames = 1024;
constexpr auto kLook = 20ms;
constexpr float kSilenceDb = -100;

float PeakDb(int peak) {
  return peak == 0 ? kSilenceDb : 20 * std::log10(static_cast<float>(peak) / 32768);
}

int RateOf(const SoundDevice& device) {
  if (device.FixedRateHz != 0) return device.FixedRateHz;
  return device.UsualRateHz != 0 ? device.UsualRateHz : kUsualRateHz;
}

}  // namespace

/// The streams of one thread.
class InputLevels::Ears {
 public:
  explicit Ears(Watch& watch) : watch_(watch), streams_(watch.Inputs.size()) {}

  void Run() {
    // What is open already is heard while the next one is being opened.
    for (std::size_t i = 0; i < streams_.size() && !watch_.Stop; ++i) {
      Open(i);
      Listen();
    }
    while (!watch_.Stop) {
      Listen();
      std::this_thread::sleep_for(kLook);
    }
  }

 private:
  void Open(std::size_t i) {
    const DeviceList::Entry& entry = watch_.Inputs[i];
    std::string reason;
    streams_[i] = entry.Input->Open(entry.Device, RateOf(entry.Device), kBlockFrames, reason);
    const std::lock_guard lock(watch_.Mutex);
    watch_.Readings[i].Trouble = streams_[i] ? streams_[i]->Warning() : reason;
  }
  void Listen() {
    for (std::size_t i = 0; i < streams_.size(); ++i) {
      if (!streams_[i]) continue;
      BlockState state = BlockState::Pending;
      while ((state = streams_[i]->TakeBlock(block_)) == BlockState::Done && !watch_.Stop) Note(i);
      if (state != BlockState::Failed) continue;
      const std::lock_guard lock(watch_.Mutex);
      watch_.Readings[i].Trouble = streams_[i]->Failure();
      streams_[i].reset();
    }
  }
  void Note(std::size_t i) {
    int left = 0, right = 0;
    for (std::size_t n = 0; n < block_.size(); n += 2) {
      left = std::max(left, std::abs(static_cast<int>(block_[n])));
      right = std::max(right, std::abs(static_cast<int>(block_[n + 1])));
    }
    const std::lock_guard lock(watch_.Mutex);
    InputReading& reading = watch_.Readings[i];
    reading.Heard = true;
    reading.LeftDb = std::max(reading.LeftDb, PeakDb(left));
    reading.RightDb = std::max(reading.RightDb, PeakDb(right));
    reading.Trouble = streams_[i]->Warning();
  }

  Watch& watch_;
  std::vector<std::unique_ptr<SoundStream>> streams_;
  std::vector<std::int16_t> block_ = std::vector<std::int16_t>(2 * kBlockFrames);
};

InputLevels::~InputLevels() {
  End();
  for (Listener& listener : listeners_) listener.Thread.join();
}

void InputLevels::Begin(std::vector<DeviceList::Entry> inputs) {
  End();
  std::erase_if(listeners_, [](Listener& listener) {
    const bool ended = listener.Shared->Ended;
    if (ended) listener.Thread.join();
    return ended;
  });
  auto watch = std::make_shared<Watch>();
  watch->Inputs = std::move(inputs);
  for (const DeviceList::Entry& entry : watch->Inputs)
    watch->Readings.push_back({.StableId = entry.Device.StableId});
  try {
    listeners_.push_back({watch, std::thread([watch] {
                            Ears(*watch).Run();
                            watch->Ended = true;
                          })});
  } catch (const std::system_error&) {
    // Without a thread nothing is heard, and that shows.
  }
}

std::vector<InputReading> InputLevels::Read() {
  if (listeners_.empty() || listeners_.back().Shared->Stop) return {};
  Watch& watch = *listeners_.back().Shared;
  const std::lock_guard lock(watch.Mutex);
  std::vector<InputReading> readings = watch.Readings;
  for (InputReading& reading : watch.Readings) {
    reading.Heard = false;
    reading.LeftDb = reading.RightDb = kSilenceDb;
  }
  return readings;
}

void InputLevels::End() {
  if (!listeners_.empty()) listeners_.back().Shared->Stop = true;
}

}  // namespace spectrino
