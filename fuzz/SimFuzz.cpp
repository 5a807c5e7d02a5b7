// Any bytes to the simulated radios: what they send keeps its shape.
#include <algorithm>
#include <chrono>
#include <span>
#include <string_view>

#include "Require.h"
#include "sim/icom/IcomRadio.h"
#include "sim/k4/K4Radio.h"

namespace {

using namespace spectrino;
using fuzz::Require;

/// Frames: FE FE to from command ... FD, no FD but the last.
void RequireFrames(SimByteView sent) {
  while (!sent.empty()) {
    const auto end = std::find(sent.begin(), sent.end(), kCivEnd);
    const auto length = end - sent.begin();
    Require(end != sent.end() && length >= 5 && sent[0] == kCivPreamble && sent[1] == kCivPreamble);
    sent = sent.subspan(static_cast<std::size_t>(length) + 1);
  }
}

/// On its bus, in pieces.
void FeedIcom(IcomSimKind model, SimByteView rest, std::size_t piece) {
  using namespace std::chrono_literals;
  SimTime now{};
  IcomRadio radio({.Model = model, .BytesPerSecond = 10'000'000}, now);
  SimBytes sent;
  const auto hear = [&] {
    const SimBytes heard = radio.Transmit(now);
    sent.insert(sent.end(), heard.begin(), heard.end());
  };
  for (; !rest.empty(); rest = rest.subspan(std::min(piece, rest.size()))) {
    radio.Receive(rest.first(std::min(piece, rest.size())), now);
    now += 5ms;
    hear();
  }
  // Scope lines never end: what is on its way is let through before the look.
  now += 1ms;
  hear();
  while (!sent.empty() && sent.back() != kCivEnd) sent.pop_back();
  RequireFrames(sent);
}

/// Commands, each up to its ";".
void FeedK4(bool isK4D, std::string_view text) {
  constexpr std::size_t kFrameBytes = 4162;
  K4Radio radio(isK4D);
  radio.Changed = [](const std::string& reply) { Require(reply.ends_with(';')); };
  double seconds = 1;
  for (int commands = 0; commands < 200 && text.find(';') != std::string_view::npos; ++commands) {
    const std::string answer = radio.Answer(std::string(text.substr(0, text.find(';'))), seconds += 0.1);
    Require(answer.empty() || answer.ends_with(';'));
    text.remove_prefix(text.find(';') + 1);
  }
  for (const char display : {'A', 'Y', 'Z'}) Require(radio.Frame(display, seconds).size() == kFrameBytes);
}

}  // namespace

// data: which radio, 0 to 3 an Icom; length of an Icom's pieces; then the bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  constexpr IcomSimKind kModels[] = {IcomSimKind::Ic7300, IcomSimKind::Ic705, IcomSimKind::Ic9700,
                                     IcomSimKind::Ic7610};
  const SimByteView rest(data + 2, std::min<std::size_t>(size - 2, 4096));
  if (data[0] % 6 < 4)
    FeedIcom(kModels[data[0] % 6], rest, data[1] + std::size_t{1});
  else
    FeedK4(data[0] % 6 == 4, {reinterpret_cast<const char*>(rest.data()), rest.size()});
  return 0;
}
