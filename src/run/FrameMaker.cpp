#include "run/FrameMaker.h"

#include <utility>

namespace spectrino {

void FrameMaker::Forget() {
  RestartHistory();
  scale_.Levels().Restart();
  run_.Line = SpectrumLine{};
  meter_.Reset();
  lastRadioMode_ = session_.Radio.RadioMode;
}

void FrameMaker::RestartHistory() {
  historyPoints_ = 0;
  spotAsked_.reset();
  lastLeftMHz_ = lastRightMHz_ = 0;
}

void FrameMaker::SetDisplayMode(int index) {
  session_.Settings.DisplayMode = index;
  history_.Restart();
}

void FrameMaker::Show(SMeter::TimePoint now) {
  const SpectrumLine& line = run_.Line;
  run_.LinePlan = run_.Plan;
  if (line.EndIndex() != historyPoints_) {
    historyPoints_ = line.EndIndex();
    history_.Reset(historyPoints_);
  }
  RestartIfMoved();
  FollowScale(now);
  // Polled under the scale of the line before it.
  if (run_.Link == nullptr) {
    run_.Line.BottomLevel = scale_.State().Levels.BottomLevel;
    run_.Line.TopLevel = scale_.State().Levels.TopLevel;
  }
  const PanSettings& settings = session_.Settings;
  {
    const StageTimer timer(times_, Stage::History);
    history_.Push(line.Levels, static_cast<DisplayMode>(settings.DisplayMode), settings.HistoryDepth,
                  settings.BackgroundPeakHold);
  }
  meter_.Update(run_, session_.Radio, settings, now);
  const bool newestShown = settings.DisplayMode == static_cast<int>(DisplayMode::Normal);
  sink_.ShowFrame({line, scale_.State().Geometry, history_.DisplayLevel(), history_.BackgroundPeak(),
                   newestShown ? std::span<const float>() : history_.NewestLevel(),
                   scale_.Levels().Colours()});
  ++times_.Frames;
  const auto asked = std::exchange(spotAsked_, std::nullopt);
  if (asked && now - *asked <= kSpotWait && SpotFrame) SpotFrame(line);
}

void FrameMaker::FollowScale(SMeter::TimePoint now) {
  const SpectrumLine& line = run_.Line;
  const ScaleState& scale = scale_.State();
  const FrameGeometry geometry = scale_.GeometryOf(line);
  scale_.Levels().Follow(geometry, now);
  const bool moved = !(geometry == scale.Geometry) || line.CentreMHz != scale.LabelCentreMHz ||
                     scale.FrequencyKnown != (session_.Radio.MainFreqMHz != 0);
  const bool otherMode = std::exchange(lastRadioMode_, session_.Radio.RadioMode) != session_.Radio.RadioMode;
  const bool otherLevels = !(scale_.Levels().Current() == scale.Levels);
  if (moved || otherMode || otherLevels) scale_.Update();
}

// With "qsy" on, averaging across a retune would smear two pieces of band into one.
void FrameMaker::RestartIfMoved() {
  const SpectrumLine& line = run_.Line;
  const bool moved = line.LeftMHz != lastLeftMHz_ || line.RightMHz != lastRightMHz_;
  const bool first = lastLeftMHz_ == 0 && lastRightMHz_ == 0;
  lastLeftMHz_ = line.LeftMHz;
  lastRightMHz_ = line.RightMHz;
  if (moved && !first && session_.Settings.Qsy) history_.Reset(historyPoints_);
}

}  // namespace spectrino
