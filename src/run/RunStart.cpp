// Start and Stop of the run cycle.
#include "capture/IqSign.h"
#include "run/RunCycle.h"
#include "run/SetupChecks.h"
#include "settings/SetupSection.h"

namespace spectrino {

using namespace std::chrono_literals;

RunCycle::RunCycle(Session& session, const RunParts& parts)
    : session_(session), parts_(parts), audio_(parts.Time, parts.Times) {}

const std::string& RunCycle::SourceName() const {
  return running_ || starting_ ? runSource_ : session_.Settings.SourceName;
}

bool RunCycle::Start() {
  // Waiting for links keeps events flowing, so the button may be pressed again meanwhile.
  if (running_ || starting_) return false;
  starting_ = true;
  stopRequested_ = false;
  // What another radio told is not known of this one.
  const bool another = runSource_ != session_.Settings.SourceName || control_ != session_.Settings.Control;
  if (another && !runSource_.empty()) session_.Radio = RadioState{};
  runSource_ = session_.Settings.SourceName;
  control_ = session_.Settings.Control;
  if (RunningChanged) RunningChanged();
  parts_.User.ShowStatus("");
  const bool hostCanServe = OpenHost();
  if (runSource_ == kIcomSource && UsesHost(control_) && control_ != CatControl::IcomViaHost) {
    control_ = CatControl::HostIf;
  }
  bool prepared = false;
  if (hostCanServe && !stopRequested_) {
    plan_ = PlanFor(session_.Settings);
    session_.PanPoints = 0;
    UpdateScale();
    session_.Radio.K4Active = runSource_ == kK4Source || runSource_ == kK4DSource;
    session_.Radio.IcomActive = runSource_ == kIcomSource;
    session_.Radio.K4PanDataSeen = false;
    prepared = IsRadioSource(runSource_) ? PrepareRadio(parts_.Router.Link(runSource_)) : PrepareAudio();
    prepared = prepared && !stopRequested_ && BeginRun();
  }
  startFailed_ = !prepared && !stopRequested_;
  if (!prepared) EndFailedStart();
  starting_ = false;
  if (RunningChanged) RunningChanged();
  return prepared;
}

bool RunCycle::OpenHost() {
  hostOpen_ = false;
  if (!UsesHost(control_) || !session_.SearchHost) return true;
  RigBackend* host = parts_.Router.Host();
  hostOpen_ = host != nullptr && host->Open();
  if (!hostOpen_) {
    // What the last run's host told is not known of this one.
    session_.Radio = RadioState{};
    parts_.User.ShowStatus("Castelon not found");
    parts_.Pump.Wait(1000ms);
  }
  return !stopRequested_;
}

ZoomPlan RunCycle::PlanFor(const PanSettings& settings) const {
  const std::optional<int> chosen = parts_.Devices.FindChosen(settings);
  const int fixedRate =
      chosen ? parts_.Devices.Entries()[static_cast<std::size_t>(*chosen)].Device.FixedRateHz : 0;
  // A recording has one rate: its zoom is the display's alone.
  const bool highResolution = settings.TypZoom && fixedRate == 0;
  ZoomPlan plan = ChooseZoomPlan(highResolution, settings.Zoom, settings.SRate, settings.Bits);
  if (fixedRate != 0) plan.SampleRate = fixedRate;
  return plan;
}

bool RunCycle::PrepareAudio() {
  if (const auto error = FftLengthError(1 << plan_.FftBits)) {
    parts_.User.ShowMessage("Spectrino", *error, Severity::Exclamation);
    return false;
  }
  const PanSettings& settings = session_.Settings;
  CaptureSettings capture;
  capture.SampleRate = plan_.SampleRate;
  capture.FftBits = plan_.FftBits;
  capture.Window = static_cast<WindowType>(settings.WindowTypeIndex);
  capture.ChannelSign = settings.Iq ? -1 : 1;
  bandFlip_ = 1;

  std::string reason = "the input \"" + runSource_ + "\" is not there";
  const std::optional<int> chosen = parts_.Devices.FindChosen(settings);
  bool opened = false;
  if (chosen) {
    const DeviceList::Entry& entry = parts_.Devices.Entries()[static_cast<std::size_t>(*chosen)];
    opened = audio_.OpenCapture(*entry.Input, entry.Device, capture, reason);
  }
  if (!opened) {
    parts_.User.Log(LogArea::Audio, "open failed: " + reason);
    parts_.User.ShowStatus(reason);
    parts_.User.ShowMessage("Spectrino",
                            OpenFailureText(plan_.SampleRate, settings.TypZoom && settings.Zoom >= 2),
                            Severity::Exclamation);
    return false;
  }
  source_ = &audio_;
  return true;
}

bool RunCycle::PrepareRadio(RadioLink* link) {
  if (link == nullptr) {
    parts_.User.ShowMessage(
        "Spectrino",
        runSource_ + " cannot be reached by this version. Choose a sound input or the demo signal.",
        Severity::Exclamation);
    return false;
  }
  link_ = link;
  if (!link->Open(session_.Radio)) return false;
  source_ = &link->Source();
  return true;
}

bool RunCycle::BeginRun() {
  // A K4 whose sockets went away while it was being opened ends the run before its first pass.
  if (session_.Radio.K4Active && !session_.Radio.K4Connected) return false;
  historyPoints_ = 0;
  line_ = SpectrumLine{};
  readings_ = Readings{};
  hold_.Reset();
  lastLeftMHz_ = lastRightMHz_ = 0;
  spotRequested_ = false;
  lastRadioMode_ = session_.Radio.RadioMode;
  if (!reopening_) parts_.Sink.ClearFrames();
  if (control_ == CatControl::IcomViaHost && session_.Radio.IcomActive) {
    SetupSection(parts_.Store).Write(key::kIcomScope, true);
  }
  running_ = true;
  runSince_ = parts_.Time.Now();
  UpdateScale();
  return true;
}

void RunCycle::EndFailedStart() {
  audio_.CloseCapture();
  if (link_ != nullptr) link_->Close(session_.Radio);
  if (hostOpen_) parts_.Router.Host()->Close();
  link_ = nullptr;
  source_ = nullptr;
  hostOpen_ = false;
  session_.Radio.K4Active = session_.Radio.IcomActive = false;
}

void RunCycle::Stop() {
  stopRequested_ = true;
  if (!running_) return;
  SetupSection(parts_.Store).Write(key::kIcomScope, false);
  earlierRuns_ += parts_.Time.Now() - runSince_;
  audio_.CloseCapture();
  if (link_ != nullptr) link_->Close(session_.Radio);
  session_.Radio.K4Connected = session_.Radio.K4PanDataSeen = false;
  running_ = false;
  link_ = nullptr;
  source_ = nullptr;
  session_.Radio.K4Active = session_.Radio.IcomActive = false;
  if (hostOpen_) parts_.Router.Host()->Close();
  hostOpen_ = false;
  UpdateScale();
  if (RunningChanged) RunningChanged();
}

std::chrono::steady_clock::duration RunCycle::TimeInRuns() const {
  return running_ ? earlierRuns_ + (parts_.Time.Now() - runSince_) : earlierRuns_;
}

void RunCycle::SetZoom(int zoomIndex) {
  if (zoomIndex == session_.Settings.Zoom) return;
  session_.Settings.Zoom = zoomIndex;
  if (zoomIndex == 0) session_.PanPoints = 0;
  SetupSection setup(parts_.Store);
  SaveZoom(setup, zoomIndex);
  const ZoomPlan next = PlanFor(session_.Settings);
  const bool reopen =
      running_ && link_ == nullptr && (next.SampleRate != plan_.SampleRate || next.FftBits != plan_.FftBits);
  if (!reopen) {
    plan_ = next;
    UpdateScale();
    return;
  }
  // The same band at another rate: the waterfall goes on, and the window where it was panned to.
  const int pan = session_.PanPoints;
  reopening_ = true;
  Stop();
  Start();
  reopening_ = false;
  if (!running_) return;
  session_.PanPoints = pan;
  UpdateScale();
}

}  // namespace spectrino
