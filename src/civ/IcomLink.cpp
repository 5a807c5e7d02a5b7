#include "civ/IcomLink.h"

#include "settings/Keys.h"
#include "settings/SetupSection.h"

namespace spectrino {

bool IcomLink::Open() {
  CivState& state = parts_.State;
  state.IcomControl = SetupSection(parts_.Store).Read(key::kIcomControl);
  polledSerial_ = state.ScopeSerial;
  return carrier_.Open();
}

PollResult IcomLink::Poll(const LineRequest&, SpectrumLine& line) {
  carrier_.Pump();
  const CivState& state = parts_.State;
  if (state.ScopeSerial == polledSerial_) return PollResult::Pending;
  polledSerial_ = state.ScopeSerial;
  // A line without width has no place on a plot.
  if (!(state.ScopeLineHighMHz > state.ScopeLineLowMHz)) return PollResult::Pending;
  line.Levels.assign(state.ScopeLevels.begin(), state.ScopeLevels.end());
  line.PointCount = static_cast<int>(state.ScopeLevels.size()) - 1;
  line.FirstIndex = 1;
  line.LeftMHz = state.ScopeLineLowMHz;
  line.RightMHz = state.ScopeLineHighMHz;
  line.CentreMHz = (line.LeftMHz + line.RightMHz) / 2;
  const LevelScale scale = Scale();
  line.BottomLevel = scale.BottomLevel;
  line.TopLevel = scale.TopLevel;
  line.Serial = state.ScopeSerial;
  line.Arrived = carrier_.LineArrived();
  line.TakenUtc = parts_.Time.UtcNow();
  return PollResult::Line;
}

float IcomLink::AntennaDbm(float level) const {
  return -133 + level / 2 - parts_.State.ScopeRefLevel;
}

}  // namespace spectrino
