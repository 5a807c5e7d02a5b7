#include "sim/icom/IcomSimLine.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "sim/HashRandom.h"

namespace spectrino {

namespace {

constexpr std::size_t kPreambleBytes = 2;
constexpr std::size_t kFromByte = 3;
constexpr std::size_t kGarbageBytes = 5;

bool Nth(int every, int count) {
  return every > 0 && count % every == 0;
}

}  // namespace

IcomSimLine::IcomSimLine(int bytesPerSecond)
    : byteTime_(std::chrono::nanoseconds(std::chrono::seconds(1)) / bytesPerSecond) {
  assert(bytesPerSecond > 0);
}

void IcomSimLine::Queue(Kind kind, std::uint8_t to, std::uint8_t from, SimByteView command, SimTime readyAt) {
  SimBytes frame{kCivPreamble, kCivPreamble, to, from};
  frame.insert(frame.end(), command.begin(), command.end());
  frame.push_back(kCivEnd);
  if (!Spoil(kind, frame)) return;
  (kind == Kind::Scope ? scope_ : replies_).push_back({readyAt, std::move(frame)});
}

void IcomSimLine::QueueRaw(SimByteView bytes, SimTime readyAt) {
  if (faults_.Silent) return;
  replies_.push_back({readyAt, SimBytes(bytes.begin(), bytes.end())});
}

/// False when the frame never leaves.
bool IcomSimLine::Spoil(Kind kind, SimBytes& frame) {
  if (faults_.Silent) return false;
  ++frames_;
  if (kind == Kind::Scope && Nth(faults_.LostDivisionEvery, ++scopeFrames_)) return false;
  if (Nth(faults_.WrongAddressEvery, frames_)) frame[kFromByte] ^= 0x08U;
  if (Nth(faults_.HalfFrameEvery, frames_)) frame.resize(frame.size() / 2);
  if (Nth(faults_.NoiseEvery, frames_)) {
    const auto dice = [this](std::uint64_t place) { return Mix(static_cast<std::uint64_t>(frames_), place); };
    const std::size_t hit = kPreambleBytes + dice(kGarbageBytes) % (frame.size() - kPreambleBytes);
    frame[hit] = static_cast<std::uint8_t>(frame[hit] ^ (1U + dice(kGarbageBytes + 1) % 255));
    SimBytes garbage(kGarbageBytes);
    for (std::size_t i = 0; i < garbage.size(); ++i) garbage[i] = static_cast<std::uint8_t>(dice(i));
    frame.insert(frame.begin(), garbage.begin(), garbage.end());
  }
  return true;
}

bool IcomSimLine::StartNext(SimTime now) {
  const auto ready = [now](const std::deque<Waiting>& queue) {
    return !queue.empty() && queue.front().ReadyAt <= now;
  };
  const bool reply = ready(replies_);
  if (!reply && !ready(scope_)) return false;
  std::deque<Waiting>& queue = reply ? replies_ : scope_;
  wireKind_ = reply ? Kind::Reply : Kind::Scope;
  freeAt_ = std::max(freeAt_, queue.front().ReadyAt);
  wire_ = std::move(queue.front().Bytes);
  wireSent_ = 0;
  queue.pop_front();
  return true;
}

SimBytes IcomSimLine::Sent(SimTime now) {
  SimBytes sent;
  while (true) {
    // What became ready while the line was busy takes its turn when the line is free, not before.
    if (wire_.empty() && !StartNext(now)) break;
    while (wireSent_ < wire_.size() && freeAt_ + byteTime_ <= now) {
      sent.push_back(wire_[wireSent_++]);
      freeAt_ += byteTime_;
    }
    if (wireSent_ < wire_.size()) break;
    wire_.clear();
  }
  return sent;
}

}  // namespace spectrino
