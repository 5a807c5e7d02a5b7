// A sound input whose blocks the test hands in, and which can refuse, fail, vanish and hang.
#pragma once

#include <algorithm>
#include <atomic>
#include <deque>
#include <mutex>
#include <set>

#include "platform/SoundInput.h"

namespace spectrino {

class FakeSoundInput final : public SoundInput {
 public:
  struct State {
    std::deque<std::vector<std::int16_t>> Blocks;
    std::string FailWith;
    std::string Warning;
    std::atomic<int> OpenStreams = 0;
  };

  [[nodiscard]] std::vector<SoundDevice> Devices() override {
    const std::lock_guard hung(Hang);
    ++Listings;
    return List;
  }
  [[nodiscard]] std::unique_ptr<SoundStream> Open(const SoundDevice& device, int rateHz, int blockFrames,
                                                  std::string& reason) override {
    Opened.push_back(device.StableId + "@" + std::to_string(rateHz) + "/" + std::to_string(blockFrames));
    std::unique_ptr<SoundStream> stream;
    if (RefusedRates.contains(rateHz))
      reason = RefusalReason;
    else
      stream = std::make_unique<Stream>(*Shared);
    ++Opens;
    return stream;
  }

  /// Held by the test: Devices() waits, as with a server that does not answer.
  std::mutex Hang;
  std::atomic<int> Listings = 0;
  std::atomic<int> Opens = 0;
  std::vector<SoundDevice> List{{"Card", "card", true, 0}};
  std::set<int> RefusedRates;
  std::string RefusalReason = "It runs at another rate.";
  std::vector<std::string> Opened;  // "id@rate/frames"
  std::shared_ptr<State> Shared = std::make_shared<State>();

 private:
  class Stream final : public SoundStream {
   public:
    explicit Stream(State& state) : state_(state) { ++state_.OpenStreams; }
    ~Stream() override { --state_.OpenStreams; }
    BlockState TakeBlock(std::span<std::int16_t> block) override {
      if (!state_.FailWith.empty()) return BlockState::Failed;
      if (state_.Blocks.empty()) return BlockState::Pending;
      std::vector<std::int16_t> next = std::move(state_.Blocks.front());
      state_.Blocks.pop_front();
      next.resize(block.size());
      std::copy(next.begin(), next.end(), block.begin());
      return BlockState::Done;
    }
    [[nodiscard]] std::string Cause() const override { return state_.FailWith; }
    [[nodiscard]] std::string Warning() const override { return state_.Warning; }

   private:
    State& state_;
  };
};

}  // namespace spectrino
