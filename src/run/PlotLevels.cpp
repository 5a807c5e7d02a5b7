#include "run/PlotLevels.h"

#include <algorithm>
#include <cmath>

#include "bandplan/Bands.h"
#include "dsp/LevelScale.h"

namespace spectrino {
namespace {

// Where the buttons' steps of 3 dB end, from the usual reference.
constexpr int kHighestRef = 81;
constexpr int kLowestRef = -102;
constexpr int kMostShiftDb = 200;

}  // namespace

void PlotLevels::Follow(const FrameGeometry& shown, AutoLevel::Time now) {
  // What is heard of one's own transmitter is not the band's noise.
  if (!session_.Settings.AutoLevel || session_.Radio.Transmitting) return;
  auto_.Follow(run_.Line, shown, run_.Link == nullptr || run_.Link->Scale().InDb, now);
}

int PlotLevels::BinWidth() const {
  const ZoomPlan& plan = run_.HasLine() ? run_.LinePlan : run_.Plan;
  return BinWidthDb(plan.SampleRate, plan.FftBits);
}

LevelScale PlotLevels::Plain() {
  if (const RadioLink* link = ShownLink()) {
    LevelScale levels = link->Scale();
    levels.BottomLevel += static_cast<float>(radioShiftDb_);
    levels.TopLevel += static_cast<float>(radioShiftDb_);
    return levels;
  }
  UpdateLevelScale(byHand_, session_.Settings.RefLevel, session_.Settings.RangeDivisor, BinWidth());
  return byHand_;
}

LevelScale PlotLevels::Current() {
  const LevelScale plain = Plain();
  return AutoShown(plain.InDb) ? auto_.Scale() : plain;
}

LevelRange PlotLevels::Colours() {
  if (AutoShown(run_.Link == nullptr || run_.Link->Scale().InDb)) return auto_.Colours();
  if (run_.Link != nullptr) {
    const auto shiftDb = static_cast<float>(radioShiftDb_);
    return {run_.Line.BottomLevel + shiftDb, run_.Line.TopLevel + shiftDb};
  }
  const LevelScale plain = Plain();
  return {plain.BottomLevel, plain.TopLevel};
}

void PlotLevels::SetAuto(bool on) {
  if (on && !session_.Settings.AutoLevel) auto_.Restart();
  session_.Settings.AutoLevel = on;
}

void PlotLevels::ApplyBand() {
  const std::optional<int> band = RefBand(session_.Radio.MainFreqMHz);
  if (!band) return;
  session_.Settings.RefLevel = session_.Settings.BandRef[static_cast<std::size_t>(*band)];
  session_.Settings.RangeDivisor = session_.Settings.BandDivisor[static_cast<std::size_t>(*band)];
}

void PlotLevels::RememberBand() {
  if (!run_.Running || session_.Radio.MainFreqMHz == 0) return;
  const std::optional<int> band = RefBand(session_.Radio.MainFreqMHz);
  if (!band) return;
  session_.Settings.BandRef[static_cast<std::size_t>(*band)] = session_.Settings.RefLevel;
  session_.Settings.BandDivisor[static_cast<std::size_t>(*band)] = session_.Settings.RangeDivisor;
}

void PlotLevels::TakeOver() {
  if (!session_.Settings.AutoLevel) return;
  if (const RadioLink* link = ShownLink()) {
    const LevelScale own = link->Scale();
    if (auto_.Known(own.InDb))
      radioShiftDb_ = static_cast<int>(std::lround(auto_.Scale().BottomLevel - own.BottomLevel));
  } else if (auto_.Known(true)) {
    const LevelScale shown = auto_.Scale();
    session_.Settings.RefLevel = ReferenceOf(shown.BottomLevel, BinWidth());
    session_.Settings.RangeDivisor = NearestDivisor(shown.TopLevel - shown.BottomLevel);
  }
  session_.Settings.AutoLevel = false;
}

void PlotLevels::ChangeReference(int stepDb) {
  if (run_.Link != nullptr) return;
  TakeOver();
  int& reference = session_.Settings.RefLevel;
  // The limits are looked at before the step, so the ends are 81 and -102 when stepping from -60.
  const bool allowed = stepDb > 0 ? reference < 80 : reference > -100;
  if (allowed) reference += stepDb;
  RememberBand();
}

void PlotLevels::RangeUp() {
  if (run_.Link != nullptr) return;
  TakeOver();
  if (session_.Settings.RangeDivisor < 10'000'000) session_.Settings.RangeDivisor *= 10;
  RememberBand();
}

void PlotLevels::RangeDown() {
  if (run_.Link != nullptr) return;
  TakeOver();
  // A stored divisor may be no power of ten; below one there is no range.
  if (session_.Settings.RangeDivisor >= 10) session_.Settings.RangeDivisor /= 10;
  RememberBand();
}

int PlotLevels::MoveReference(int db) {
  TakeOver();
  const bool radio = ShownLink() != nullptr;
  int& moved = radio ? radioShiftDb_ : session_.Settings.RefLevel;
  const int before = moved;
  const int most = radio ? kMostShiftDb : kHighestRef;
  const int least = radio ? -kMostShiftDb : kLowestRef;
  // A stored reference may lie beyond: it is not thrown back, and goes no farther.
  moved = std::clamp(before + db, std::min(least, before), std::max(most, before));
  if (!radio && moved != before) RememberBand();
  return moved - before;
}

}  // namespace spectrino
