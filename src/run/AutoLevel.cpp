#include "run/AutoLevel.h"

#include <algorithm>
#include <cmath>

namespace spectrino {

using namespace std::chrono_literals;

namespace {

// In dB.
constexpr float kStep = 5;
constexpr float kBelowNoise = 8;       // of the bottom, where it is set anew
constexpr float kNearestBottom = 4;    // it stays while it is no nearer to the noise
constexpr float kFarthestBottom = 12;  // and no farther from it
constexpr float kAboveStrongest = 5;
constexpr float kNearestTop = 3;
constexpr float kFarthestTop = 18;
constexpr float kLeastRange = 50;
constexpr float kMostRange = 160;
constexpr float kColoursBelowNoise = 3;
constexpr float kColourRange = 45;  // what stands higher is as bright as it gets
constexpr float kColourRest = 0.8F;
constexpr float kHighestHeight = 80;  // of a radio's scope, whose heights begin at 0

// A keyed signal is down half the time; what falls silent may come again.
constexpr double kRiseSeconds = 0.5;
constexpr auto kHold = 12s;
constexpr float kFallDbPerSecond = 2;

/// 1-2-5 steps, eight lines at most.
int GridStepOf(int range) {
  for (const int step : {5, 10, 20}) {
    if (range <= 8 * step) return step;
  }
  return 50;
}

}  // namespace

// A dial that moves within the span shows the same noise; levels of other points are others.
bool AutoLevel::Elsewhere(const SpectrumLine& line, bool inDb) const {
  if (!known_ || inDb != inDb_ || line.PointCount != pointCount_) return true;
  return line.HasFrequencies() && (line.LeftMHz >= rightMHz_ || line.RightMHz <= leftMHz_);
}

void AutoLevel::Follow(const SpectrumLine& line, const FrameGeometry& shown, bool inDb, Time now) {
  const double columnPoints = shown.Valid() ? 1 / shown.PixelsPerPoint() : 1;
  const bool elsewhere = Elsewhere(line, inDb);
  // Magnified the same noise lies lower.
  const bool otherColumns = columnPoints != columnPoints_;
  if (!elsewhere && !otherColumns && !measure_.Ready(now)) return;
  measure_.Restart(now);
  const auto found = MeasureLine(
      std::span(line.Levels).first(std::min(line.Levels.size(), static_cast<std::size_t>(line.EndIndex()))),
      columnPoints, shown.Valid() ? shown.FirstPoint : 0,
      shown.Valid() ? shown.LastPoint + 1 : line.EndIndex());
  if (!found) return;
  fresh_ = elsewhere;
  atOnce_ = elsewhere || otherColumns;
  if (atOnce_) floor_.Restart();
  known_ = true;
  inDb_ = inDb;
  leftMHz_ = line.LeftMHz;
  rightMHz_ = line.RightMHz;
  pointCount_ = line.PointCount;
  columnPoints_ = columnPoints;
  const float unitsPerDb = UnitsPerDb();
  floor_.Add(found->Noise / unitsPerDb, now);
  if (fresh_) {
    strongest_ = found->Strongest / unitsPerDb;
    strongestSince_ = followed_ = now;
  }
  FollowStrongest(found->Strongest / unitsPerDb, now);
  MoveColours();
  if (!atOnce_ && !step_.Take(now)) return;
  MoveBottom();
  MoveTop();
}

void AutoLevel::FollowStrongest(float strongest, Time now) {
  const double seconds = std::clamp(std::chrono::duration<double>(now - followed_).count(), 0.0, 1.0);
  followed_ = now;
  if (strongest >= strongest_) {
    strongest_ += (strongest - strongest_) * static_cast<float>(1 - std::exp(-seconds / kRiseSeconds));
    strongestSince_ = now;
  } else if (now - strongestSince_ > kHold) {
    strongest_ = std::max(strongest, strongest_ - kFallDbPerSecond * static_cast<float>(seconds));
  }
}

void AutoLevel::MoveTo(float& edge, float wanted) const {
  edge = atOnce_ ? wanted : edge + std::clamp(wanted - edge, -kStep, kStep);
}

void AutoLevel::MoveBottom() {
  const float noise = floor_.Level();
  float wanted = std::round((noise - kBelowNoise) / kStep) * kStep;
  if (!inDb_) wanted = std::clamp(wanted, 0.0F, kHighestHeight - kLeastRange);
  const float below = noise - bottom_;
  if (fresh_ || below < kNearestBottom || below > kFarthestBottom) MoveTo(bottom_, wanted);
}

void AutoLevel::MoveTop() {
  const float least = bottom_ + kLeastRange;
  float wanted = std::ceil((strongest_ + kAboveStrongest) / (2 * kStep)) * 2 * kStep;
  wanted = std::clamp(wanted, least, bottom_ + kMostRange);
  if (!inDb_) wanted = std::min(wanted, kHighestHeight);
  const float above = top_ - strongest_;
  if (fresh_ || above < kNearestTop || above > kFarthestTop) MoveTo(top_, wanted);
  top_ = std::max(top_, least);
}

void AutoLevel::MoveColours() {
  const float wanted = floor_.Level() - kColoursBelowNoise;
  if (atOnce_ || std::abs(wanted - colourBottom_) >= kColourRest) colourBottom_ = std::round(wanted);
}

LevelScale AutoLevel::Scale() const {
  const float units = UnitsPerDb();
  const int range = static_cast<int>(std::lround((top_ - bottom_) * units));
  return {.BottomLevel = bottom_ * units,
          .TopLevel = top_ * units,
          .RangeUnits = range,
          .GridStep = GridStepOf(range),
          .InDb = inDb_};
}

LevelRange AutoLevel::Colours() const {
  return {colourBottom_ * UnitsPerDb(), (colourBottom_ + kColourRange) * UnitsPerDb()};
}

}  // namespace spectrino
