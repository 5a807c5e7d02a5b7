#include "rig/LinkWatch.h"

#include <algorithm>
#include <array>
#include <utility>

namespace spectrino {
namespace {

using namespace std::chrono_literals;

constexpr std::array kPauses{1s, 2s, 4s, 8s, 15s};
constexpr auto kSteady = 5s;

}  // namespace

void LinkWatch::Begin() {
  state_ = LinkState::Connecting;
  heard_ = clock_.Now();
}

void LinkWatch::End() {
  state_ = LinkState::Closed;
  tries_ = 0;
  why_.clear();
}

void LinkWatch::Heard() {
  heard_ = clock_.Now();
  if (std::exchange(state_, LinkState::Live) != LinkState::Live) liveSince_ = heard_;
  if (heard_ - liveSince_ >= kSteady) tries_ = 0;
}

void LinkWatch::Lost(std::string why) {
  if (state_ == LinkState::Closed) return;
  state_ = LinkState::Lost;
  why_ = std::move(why);
  nextTry_ = clock_.Now() + kPauses[tries_];
}

bool LinkWatch::TryDue() {
  const auto now = clock_.Now();
  if (state_ != LinkState::Lost || !again_ || now < nextTry_) return false;
  // If nothing is ever told of this try, it has failed.
  tries_ = std::min(tries_ + 1, kPauses.size() - 1);
  nextTry_ = now + kPauses[tries_];
  return true;
}

LinkHealth LinkWatch::Health() const {
  LinkHealth health{.State = state_, .Since = heard_};
  const bool waits = state_ == LinkState::Live || state_ == LinkState::Connecting;
  if (waits && clock_.Now() - heard_ > kSilence) health.State = LinkState::Silent;
  if (state_ == LinkState::Lost) {
    health.Why = why_;
    if (again_)
      health.NextTry = nextTry_;
    else
      health.Why +=
          (why_.ends_with('?') ? "" : ".") + std::string(" Press Stop, then Start to connect again");
  }
  return health;
}

}  // namespace spectrino
