#include "k4/PanAssembler.h"

#include <algorithm>
#include <cassert>
#include <string_view>
#include <utility>

#include "k4/PanStream.h"

namespace spectrino {
namespace {

constexpr std::size_t kLetterAt = 6;
constexpr std::size_t kNumbersAt = 7;
constexpr std::size_t kHeadBytes = 29;
/// One piece of work: more than a second of all displays, so that memory stays bounded when a read was long
/// in coming.
constexpr std::size_t kPieceBytes = 64 * kPanFrameBytes;

std::string_view Text(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Whether the bytes at a sync are the head of a frame and not levels that happen to look like the sync.
bool IsHead(std::string_view head) {
  if (std::string_view("ABYZ").find(head[kLetterAt]) == std::string_view::npos) return false;
  const std::string_view numbers = head.substr(kNumbersAt, kHeadBytes - kNumbersAt);
  return numbers.find_first_not_of("0123456789+-. ") == std::string_view::npos;
}

/// Where the next frame may begin, at or after from: at a head, at one that is not complete yet, or at the
/// end.
std::size_t FindHead(std::string_view text, std::size_t from) {
  for (std::size_t at = text.find(kPanSync[0], from); at != std::string_view::npos;
       at = text.find(kPanSync[0], at + 1)) {
    const std::string_view here = text.substr(at);
    if (here.substr(0, kPanSync.size()) != kPanSync.substr(0, here.size())) continue;
    if (here.size() < kHeadBytes || IsHead(here)) return at;
  }
  return text.size();
}

}  // namespace

K4PanAssembler::K4PanAssembler(FrameRun frameRun) : frameRun_(std::move(frameRun)) {
  pending_.reserve(kPanFrameBytes + kPieceBytes);
}

void K4PanAssembler::Reset() {
  pending_.clear();
  inStep_ = false;
}

void K4PanAssembler::Feed(std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const std::span<const std::uint8_t> piece = bytes.first(std::min(bytes.size(), kPieceBytes));
    bytes = bytes.subspan(piece.size());
    pending_.insert(pending_.end(), piece.begin(), piece.end());
    const std::size_t used = HandOn();
    pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(used));
    assert(pending_.size() < kPanFrameBytes);
  }
}

/// Hands on every whole frame of pending_; returns how many bytes are done with.
std::size_t K4PanAssembler::HandOn() {
  const std::span<const std::uint8_t> all(pending_);
  std::size_t at = 0;
  while (true) {
    if (!inStep_) {
      at = FindHead(Text(all), at);
      inStep_ = all.size() - at >= kHeadBytes;
      if (!inStep_) return at;
    }
    const std::size_t runStart = at;
    const auto startsFrame = [&] { return Text(all.subspan(at)).starts_with(kPanSync); };
    while (all.size() - at >= kPanFrameBytes && startsFrame()) at += kPanFrameBytes;
    if (at > runStart) frameRun_(all.subspan(runStart, at - runStart));
    // Fewer bytes than the sync has cannot tell yet.
    if (all.size() - at < kPanSync.size() || startsFrame()) return at;
    inStep_ = false;
  }
}

}  // namespace spectrino
