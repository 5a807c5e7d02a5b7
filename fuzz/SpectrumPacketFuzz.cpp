// Any datagram at the port of the scope lines: skipped, or a line that a scope could have sent, laid out as
// the radio itself would and put together like one of its own.
#include <cstdint>
#include <cstdlib>
#include <span>

#include "civ/HostWave.h"
#include "civ/ScopeWave.h"
#include "host/SpectrumPacket.h"

namespace {

using namespace spectrino;

struct DeafPanel final : IcomPanelView {
  void SetAfSlider(int) override {}
  void SetSquelchSlider(int) override {}
  void SetRefLevelSlider(int) override {}
  void SelectSpan(int) override {}
  void SetSpanLabel(const std::string&) override {}
  void ShowSpanList(bool) override {}
  void SetFixedMode(bool) override {}
  void SetFunction(int, bool) override {}
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto line = ReadSpectrumPacket(std::span(data, size));
  if (!line) return 0;
  CivState state;
  DeafPanel panel;
  state.RadioId = "94";
  TakeHostLine(*line, state, panel);
  if (state.ScopeSerial != 1) std::abort();
  if (state.ScopeLevels.size() != static_cast<std::size_t>(line->Points) + 1) std::abort();
  return 0;
}
