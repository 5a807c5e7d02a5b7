#include "run/RunCycle.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "capture/IqSign.h"
#include "run/IfOffset.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {
constexpr std::chrono::milliseconds kPendingWait = 1ms;  // while a capture block is due
constexpr std::chrono::milliseconds kFrameWait = 5ms;    // at the bottom of a frame, and the longest wait
}  // namespace

std::chrono::milliseconds RunCycle::Step() {
  if (!running_) return kFrameWait;
  const bool hidden = session_.WindowMinimized || session_.ResizeInProgress;
  if (hidden) {
    // An input that is pulled out ends the run behind a minimised window too.
    if (link_ == nullptr && audio_.Discard() == PollResult::Failed) EndLostRun();
    RefreshRadio();
    return kFrameWait;
  }
  switch (PollSource()) {
    case PollResult::Failed:
      EndLostRun();
      return kFrameWait;
    case PollResult::Line:
      ++parts_.Times.Lines;
      FinishFrame();
      RefreshRadio();
      return kFrameWait;
    case PollResult::Pending:
      RefreshRadio();
      return link_ == nullptr ? UntilBlock() : kFrameWait;
  }
  return kFrameWait;
}

void RunCycle::EndLostRun() {
  const std::string failure = source_->Failure();
  Stop();
  parts_.User.ShowMessage("Spectrino", failure, Severity::Exclamation);
}

// A look each millisecond for blocks 40 ms apart costs as much as drawing them.
std::chrono::milliseconds RunCycle::UntilBlock() const {
  return std::clamp(std::chrono::floor<std::chrono::milliseconds>(audio_.UntilBlock()), kPendingWait,
                    kFrameWait);
}

PollResult RunCycle::PollSource() {
  const PanSettings& settings = session_.Settings;
  audio_.Balance = {settings.DeAmp / 1000, settings.DePhase / 1000};
  audio_.SmoothZeroHz = settings.SmoothZeroHz;
  audio_.FlipIqCw = settings.IqCw;
  audio_.FlipIqUsb = settings.IqUsb;

  LineRequest request;
  request.RadioFreqMHz = session_.Radio.MainFreqMHz;
  request.IfOffsetKHz = OffsetKHz();
  request.RadioMode = session_.Radio.RadioMode;
  request.BandFlip = bandFlip_;
  request.LevelCorrectionDb =
      static_cast<float>(settings.BandLevelDb - session_.Radio.PreampDb + session_.Radio.AttenuatorDb);
  request.BottomLevel = scale_.Levels.BottomLevel;
  request.TopLevel = scale_.Levels.TopLevel;
  return source_->Poll(request, line_);
}

void RunCycle::FinishFrame() {
  if (line_.EndIndex() != historyPoints_) {
    historyPoints_ = line_.EndIndex();
    history_.Reset(historyPoints_);
  }
  RestartIfMoved();
  const bool moved = !(GeometryOf(line_) == scale_.Geometry) || line_.CentreMHz != scale_.LabelCentreMHz ||
                     scale_.FrequencyKnown != (session_.Radio.MainFreqMHz != 0);
  if (moved || session_.Radio.RadioMode != lastRadioMode_ ||
      (link_ != nullptr && !(link_->Scale() == scale_.Levels))) {
    lastRadioMode_ = session_.Radio.RadioMode;
    UpdateScale();
  }
  const PanSettings& settings = session_.Settings;
  {
    const StageTimer timer(parts_.Times, Stage::History);
    history_.Push(line_.Levels, static_cast<DisplayMode>(settings.DisplayMode), settings.HistoryDepth,
                  settings.BackgroundPeakHold);
  }
  UpdateMeter();
  parts_.Sink.ShowFrame({line_, scale_.Geometry, history_.DisplayLevel(), history_.BackgroundPeak()});
  ++parts_.Times.Frames;
  if (std::exchange(spotRequested_, false) && SpotFrame) SpotFrame(line_);
}

// With "qsy" on, averaging across a retune would smear two pieces of band into one.
void RunCycle::RestartIfMoved() {
  const bool moved = line_.LeftMHz != lastLeftMHz_ || line_.RightMHz != lastRightMHz_;
  const bool first = lastLeftMHz_ == 0 && lastRightMHz_ == 0;
  lastLeftMHz_ = line_.LeftMHz;
  lastRightMHz_ = line_.RightMHz;
  if (moved && !first && session_.Settings.Qsy) history_.Reset(historyPoints_);
}

void RunCycle::UpdateMeter() {
  if (session_.Radio.K4Active && session_.Radio.SMeterTold && session_.Settings.OptSM == 1) {
    readings_.SMeterKnown = true;
    readings_.SMeterDbm = static_cast<float>(session_.Radio.SMeterDbm + session_.Settings.SMeterCorrDb);
    readings_.SMeterHeldDbm =
        hold_.Update(readings_.SMeterDbm, session_.Settings.SMeterHoldSeconds, parts_.Time.Now());
    return;
  }
  const Passband passband = MainPassband(session_.Radio);
  const double dialMHz = session_.Radio.MainFreqMHz;
  const auto level = StrongestLevel(line_, dialMHz + passband.LowHz / 1e6, dialMHz + passband.HighHz / 1e6);
  readings_.SMeterKnown = level.has_value();
  if (!level) return;
  readings_.SMeterDbm =
      session_.Radio.IcomActive ? IcomScopeDbm(*level, session_.Radio.ScopeRefLevelDb) : *level;
  readings_.SMeterHeldDbm =
      hold_.Update(readings_.SMeterDbm, session_.Settings.SMeterHoldSeconds, parts_.Time.Now());
}

RigBackend* RunCycle::Backend() const {
  RigBackend* backend = parts_.Router.Backend(control_, session_.Radio);
  // A host that was not found at Start stays out of this run.
  return running_ && (backend != parts_.Router.Host() || hostOpen_) ? backend : nullptr;
}

void RunCycle::RefreshRadio() {
  RigBackend* backend = Backend();
  if (backend == nullptr) return;
  backend->Refresh(session_.Radio);
  bandFlip_ = BandFlip(bandFlip_, session_.Radio, control_, session_.Settings);
}

double RunCycle::OffsetKHz() const {
  const CatControl control = running_ || starting_ ? control_ : session_.Settings.Control;
  const RigBackend* backend = parts_.Router.Backend(control, session_.Radio);
  return IfOffsetKHz(control, session_.Radio, session_.Settings,
                     backend != nullptr ? backend->LinkOffsetKHz() : 0);
}

}  // namespace spectrino
