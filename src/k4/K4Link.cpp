#include "k4/K4Link.h"

#include <algorithm>
#include <cmath>

#include "k4/K4Backend.h"

namespace spectrino {
namespace {

constexpr int kGridStepDb = 20;

}  // namespace

bool K4Link::Open() {
  const K4ConnectOutcome outcome = session_.Start();
  if (outcome.Failed && !outcome.Message.empty()) {
    user_.ShowMessage(
        "Spectrino", outcome.Message, Severity::Critical,
        Cure::OpenSetup("Compare the K4's address and its two ports with Setup, then press Start."));
  }
  return !outcome.Failed;
}

void K4Link::Close() {
  session_.Stop();
}

void K4Link::TellBeside(RadioState& radio) const {
  TellSignal(state_, radio);
  const bool heard = session_.CatHealth().State == LinkState::Live;
  radio.SMeterTold = heard;
  radio.Transmitting = heard && radio.Transmitting;
}

LevelScale K4Link::Scale() const {
  if (state_.PanScaleDb <= 0) return {};
  const float reference = state_.K4PanChannels[kPanMain].RefLevelDb;
  LevelScale scale;
  scale.BottomLevel = std::floor(reference);
  scale.TopLevel = std::floor(static_cast<float>(state_.PanScaleDb) + reference);
  scale.RangeUnits = static_cast<int>(scale.TopLevel - scale.BottomLevel);
  scale.GridStep = kGridStepDb;
  return scale;
}

PollResult K4Link::Poll(const LineRequest&, SpectrumLine& line) {
  status_.Follow(state_);
  const K4PanChannel& channel = state_.K4PanChannels[kPanMain];
  // Without a known span (the radio has not told its own yet) or with a single point there is nothing to
  // draw.
  if (!state_.K4PanDataSeen || channel.Serial == shownSerial_ || channel.SpanMHz <= 0 || channel.Points < 2) {
    return PollResult::Pending;
  }
  shownSerial_ = channel.Serial;
  const auto points = static_cast<std::size_t>(channel.Points);
  line.Levels.resize(points + 1);
  line.Levels[0] = kKeepLevel;
  std::copy_n(channel.Levels.begin() + 1, points, line.Levels.begin() + 1);
  line.PointCount = channel.Points;
  line.FirstIndex = 1;
  line.LeftMHz = channel.LowEdgeMHz;
  line.CentreMHz = channel.CenterMHz;
  line.RightMHz = channel.HighEdgeMHz;
  const LevelScale scale = Scale();
  line.BottomLevel = scale.BottomLevel;
  line.TopLevel = scale.TopLevel;
  line.Serial = channel.Serial;
  line.Arrived = session_.LineArrived();
  line.TakenUtc = time_.UtcNow();
  return PollResult::Line;
}

}  // namespace spectrino
