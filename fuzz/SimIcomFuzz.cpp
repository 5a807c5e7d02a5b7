// Any bytes on the bus of a simulated Icom, in pieces of any length: what it sends are whole frames.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "sim/icom/IcomRadio.h"

namespace {

using namespace spectrino;

/// Frames: FE FE to from command ... FD, no FD but the last.
void RequireFrames(SimByteView sent) {
  while (!sent.empty()) {
    const auto end = std::find(sent.begin(), sent.end(), kCivEnd);
    const auto length = end - sent.begin();
    if (end == sent.end() || length < 5 || sent[0] != kCivPreamble || sent[1] != kCivPreamble) std::abort();
    sent = sent.subspan(static_cast<std::size_t>(length) + 1);
  }
}

}  // namespace

// data: model, length of the pieces, then the bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace std::chrono_literals;
  if (size < 2) return 0;
  constexpr IcomSimKind kModels[] = {IcomSimKind::Ic7300, IcomSimKind::Ic705, IcomSimKind::Ic9700,
                                     IcomSimKind::Ic7610};
  const std::size_t piece = data[1] + std::size_t{1};
  SimTime now{};
  IcomRadio radio({.Model = kModels[data[0] % 4], .BytesPerSecond = 10'000'000}, now);
  SimBytes sent;
  for (SimByteView rest(data + 2, std::min<std::size_t>(size - 2, 4096)); !rest.empty();) {
    const std::size_t length = std::min(piece, rest.size());
    radio.Receive(rest.first(length), now);
    now += 5ms;
    const SimBytes heard = radio.Transmit(now);
    sent.insert(sent.end(), heard.begin(), heard.end());
    rest = rest.subspan(length);
  }
  // Scope lines never end: what is on its way is let through before the look.
  const SimBytes last = radio.Transmit(now + 1ms);
  sent.insert(sent.end(), last.begin(), last.end());
  while (!sent.empty() && sent.back() != kCivEnd) sent.pop_back();
  RequireFrames(sent);
  return 0;
}
