#include "capture/InputOpener.h"

#include <algorithm>
#include <cassert>
#include <system_error>
#include <utility>
#include <vector>

namespace spectrino {

InputOpener::~InputOpener() {
  Abandon();
  if (thread_.joinable()) thread_.join();
}

bool InputOpener::Begin(Wanted wanted) {
  assert(IsFree());
  if (thread_.joinable()) thread_.join();
  attempt_ = std::make_shared<Attempt>();
  try {
    thread_ = std::thread([wanted = std::move(wanted), attempt = attempt_] {
      Run(wanted, *attempt);
      attempt->Ended = true;
    });
  } catch (const std::system_error&) {
    return false;
  }
  return true;
}

void InputOpener::Run(const Wanted& wanted, Attempt& attempt) {
  Outcome outcome;
  const std::vector<SoundDevice> devices = wanted.Input->Devices();
  const auto device = std::ranges::find(devices, wanted.StableId, &SoundDevice::StableId);
  outcome.Listed = device != devices.end();
  if (outcome.Listed)
    outcome.Stream = wanted.Input->Open(*device, wanted.RateHz, wanted.BlockFrames, outcome.Reason);
  const std::lock_guard lock(attempt.Mutex);
  if (!attempt.Abandoned) attempt.Done = std::move(outcome);
}

std::optional<InputOpener::Outcome> InputOpener::Take() {
  if (!attempt_) return std::nullopt;
  const std::lock_guard lock(attempt_->Mutex);
  return std::exchange(attempt_->Done, std::nullopt);
}

void InputOpener::Abandon() {
  if (!attempt_) return;
  std::optional<Outcome> unwanted;  // a stream is closed without the lock
  const std::lock_guard lock(attempt_->Mutex);
  attempt_->Abandoned = true;
  unwanted = std::exchange(attempt_->Done, std::nullopt);
}

}  // namespace spectrino
