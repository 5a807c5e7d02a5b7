#include "run/RunCycle.h"

#include <algorithm>

#include "capture/IqSign.h"
#include "run/IfOffset.h"
#include "settings/SetupSection.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {
constexpr std::chrono::milliseconds kPendingWait = 1ms;  // while a capture block is due
constexpr std::chrono::milliseconds kFrameWait = 5ms;    // at the bottom of a frame, and the longest wait
}  // namespace

RunCycle::RunCycle(Session& session, const RunParts& parts)
    : session_(session),
      parts_(parts),
      start_(session, parts, run_, [this] { return stopRequested_; }),
      scale_(session, parts.Sink, run_, [this] { return OffsetKHz(); }),
      frames_(session, parts.Sink, parts.Times, run_, scale_) {
  run_.Plan = start_.PlanFor(session.Settings);
  start_.Audio().Returned = [this] { frames_.RestartHistory(); };
}

bool RunCycle::Start() {
  // Waiting for links keeps events flowing, so the button may be pressed again meanwhile.
  if (run_.Running || starting_) return false;
  starting_ = true;
  stopRequested_ = false;
  start_.Choose();
  if (RunningChanged) RunningChanged();
  parts_.User.ShowStatus("");
  start_.OpenHost();
  run_.Plan = start_.PlanFor(session_.Settings);
  scale_.ResetPan();
  scale_.Update();
  const bool opened = !stopRequested_ && start_.Open();
  if (opened)
    BeginRun();
  else
    start_.Close();
  startFailed_ = !opened && !stopRequested_;
  starting_ = false;
  if (RunningChanged) RunningChanged();
  return opened;
}

void RunCycle::BeginRun() {
  frames_.Forget();
  bandFlip_ = 1;
  parts_.Sink.ClearFrames();
  if (RowOf(start_.Control()).Way == CatWay::HostAndScope && run_.Link != nullptr)
    SetupSection(parts_.Store).Write(key::kScopeOutput, true);
  run_.Running = true;
  runSince_ = parts_.Time.Now();
  scale_.Update();
}

void RunCycle::Stop() {
  stopRequested_ = true;
  if (!run_.Running) return;
  SetupSection(parts_.Store).Write(key::kScopeOutput, false);
  earlierRuns_ += parts_.Time.Now() - runSince_;
  if (Stopping) Stopping();
  run_.Running = false;
  start_.Close();
  UpdateScale();
  if (RunningChanged) RunningChanged();
}

void RunCycle::UpdateScale() {
  if (!run_.Running && !starting_) {
    run_.Plan = start_.PlanFor(session_.Settings);
    start_.FindNextLink();
  }
  scale_.Update();
}

std::chrono::milliseconds RunCycle::Step() {
  if (!run_.Running) return kFrameWait;
  const bool hidden = session_.WindowMinimized || session_.ResizeInProgress;
  if (hidden) {
    // An input that is pulled out ends the run, or is waited for, behind a minimised window too.
    if (run_.Link == nullptr && start_.Audio().Discard() == PollResult::Failed) EndLostRun();
    RefreshRadio();
    return kFrameWait;
  }
  switch (PollSource()) {
    case PollResult::Failed:
      EndLostRun();
      return kFrameWait;
    case PollResult::Line:
      ++parts_.Times.Lines;
      frames_.Show(parts_.Time.Now());
      RefreshRadio();
      return kFrameWait;
    case PollResult::Pending:
      RefreshRadio();
      return run_.Link == nullptr ? UntilBlock() : kFrameWait;
  }
  return kFrameWait;
}

void RunCycle::EndLostRun() {
  const std::string failure = start_.Source()->Failure();
  Stop();
  parts_.User.ShowMessage("Spectrino", failure, Severity::Exclamation,
                          Cure::StartAgain("When that is put right, start again."));
}

// A look each millisecond for blocks 40 ms apart costs as much as drawing them.
std::chrono::milliseconds RunCycle::UntilBlock() const {
  return std::clamp(std::chrono::floor<std::chrono::milliseconds>(start_.Audio().UntilBlock()), kPendingWait,
                    kFrameWait);
}

PollResult RunCycle::PollSource() {
  const PanSettings& settings = session_.Settings;
  AudioSource& audio = start_.Audio().Source();
  audio.Balance = {settings.DeAmp / 1000, settings.DePhase / 1000};
  audio.SmoothZeroHz = settings.SmoothZeroHz;
  audio.FlipIqCw = settings.IqCw;
  audio.FlipIqUsb = settings.IqUsb;

  LineRequest request;
  request.RadioFreqMHz = session_.Radio.MainFreqMHz;
  request.IfOffsetKHz = OffsetKHz();
  request.RadioMode = session_.Radio.RadioMode;
  request.BandFlip = bandFlip_;
  request.LevelCorrectionDb =
      static_cast<float>(settings.BandLevelDb - session_.Radio.PreampDb + session_.Radio.AttenuatorDb);
  request.BottomLevel = scale_.State().Levels.BottomLevel;
  request.TopLevel = scale_.State().Levels.TopLevel;
  return start_.Source()->Poll(request, run_.Line);
}

void RunCycle::RefreshRadio() {
  RigBackend* backend = Backend();
  if (backend != nullptr) backend->Refresh(session_.Radio);
  if (run_.Link != nullptr && run_.Way.Control != run_.Way.Source) run_.Link->TellBeside(session_.Radio);
  bandFlip_ = BandFlip(bandFlip_, session_.Radio, start_.Control(), session_.Settings);
}

void RunCycle::SetZoom(int zoomIndex) {
  if (zoomIndex == session_.Settings.Zoom) return;
  session_.Settings.Zoom = zoomIndex;
  if (zoomIndex == 0) scale_.ResetPan();
  SetupSection setup(parts_.Store);
  SaveZoom(setup, zoomIndex);
  const ZoomPlan next = start_.PlanFor(session_.Settings);
  const bool anotherRate = next.SampleRate != run_.Plan.SampleRate || next.FftBits != run_.Plan.FftBits;
  if (!run_.Running || run_.Link != nullptr || !anotherRate) {
    // A line of an earlier rate may still be in view: its window is the earlier one.
    if (run_.LinePlan.SampleRate == next.SampleRate && run_.LinePlan.FftBits == next.FftBits)
      run_.LinePlan = next;
    run_.Plan = next;
    scale_.Update();
    return;
  }
  // The same band at another rate: all but the input goes on, and the picture until its first line.
  frames_.RestartHistory();
  if (start_.ReopenAudio()) return;
  startFailed_ = true;
  Stop();
}

void RunCycle::ZoomAt(int zoomIndex, double x) {
  const FrameGeometry& before = scale_.State().Geometry;
  const double aimMHz = before.Valid() ? before.FrequencyAt(x * before.PlotWidth) : 0;
  SetZoom(zoomIndex);
  if (aimMHz != 0) scale_.PanTo(aimMHz, x);
}

LinkHealth RunCycle::Health() const {
  if (!run_.Running) return {};
  return run_.Way.Source != nullptr ? run_.Way.Source->Health() : start_.Audio().Health();
}

double RunCycle::OffsetKHz() const {
  if (session_.Radio.OwnSpectrum) return 0;
  const bool on = run_.Running || starting_;
  // Its band stands around it.
  if (on && run_.Way.Dial != nullptr && run_.Way.Control == run_.Way.Dial) return 0;
  const PanSettings& settings = session_.Settings;
  const CatControl control = on ? start_.Control() : settings.Control;
  RadioKit* kit = (on ? run_.Way : parts_.Router.RouteOf(settings.Source.Id, control)).Control;
  return IfOffsetKHz(control, session_.Radio, settings, kit != nullptr ? kit->Backend().LinkOffsetKHz() : 0);
}

std::chrono::steady_clock::duration RunCycle::TimeInRuns() const {
  return run_.Running ? earlierRuns_ + (parts_.Time.Now() - runSince_) : earlierRuns_;
}

}  // namespace spectrino
