// Whatever an Icom's line may carry, in pieces of any length: nothing crashes, no line is malformed, and the
// next good frame is understood.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

#include "civ/CivDoubles.h"
#include "civ/CivLink.h"
#include "fakes/FakeClock.h"
#include "fakes/Recorders.h"

namespace {

using namespace spectrino;

void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

// data: the length of the pieces, then what the radio sends.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t piece = data[0] + std::size_t{1};
  std::span<const std::uint8_t> rest(data + 1, size - 1);

  test::FakeSerialPort port;
  test::RecordingPanel panel;
  RecordingNotifier user;
  const FakeClock clock;
  CivState state;
  state.RadioAddress = "94";
  state.ControllerAddress = "E0";
  state.RadioId = "94";
  state.ScopeMaxLevel = 160;
  state.SpectrumPoints = state.ScopePoints = 475;
  CivLink link(port, state, panel, clock, user);
  Require(link.Open("/dev/radio").empty());
  while (!rest.empty()) {
    const std::size_t length = std::min(piece, rest.size());
    port.DataArrival(rest.first(length));
    rest = rest.subspan(length);
    const std::size_t points = state.ScopeLevels.empty() ? 0 : state.ScopeLevels.size() - 1;
    Require(state.ScopeSerial == 0 ? points == 0 : points == 475 || points == 689);
    Require(state.ScopeWaveHex.size() <= 30 + 2 * 689);
    Require(!state.CivParserBusy && !state.ScopeWaveBusy);
  }

  constexpr std::uint8_t kFrequency[] = {0xFD, 0xFD, 0xFE, 0xFE, 0xE0, 0x94, 0x03,
                                         0x00, 0x00, 0x23, 0x14, 0x00, 0xFD};
  port.DataArrival(kFrequency);
  Require(state.RadioFreqMHz == 14.23);
  return 0;
}
