#include "run/RunStart.h"

#include <optional>

#include "run/SetupChecks.h"
#include "settings/SetupSection.h"

namespace spectrino {

using namespace std::chrono_literals;

RunStart::RunStart(Session& session, const RunParts& parts, RunView& run, std::function<bool()> stopped)
    : session_(session),
      parts_(parts),
      run_(run),
      stopped_(std::move(stopped)),
      audio_(parts.Time, parts.Times, parts.User) {}

void RunStart::Choose() {
  const PanSettings& settings = session_.Settings;
  // What another radio told is not known of this one.
  const bool another = chosen_ && (chosen_->Id != settings.Source.Id ||
                                   chosen_->Name != settings.Source.Name || control_ != settings.Control);
  if (another) session_.Radio = RadioState{};
  chosen_ = settings.Source;
  control_ = settings.Control;
  run_.Way = parts_.Router.RouteOf(chosen_->Id, control_);
  run_.SourceName = chosen_->Name;
  FindNextLink();
}

void RunStart::FindNextLink() {
  const PanSettings& settings = session_.Settings;
  RadioKit* source = parts_.Router.RouteOf(settings.Source.Id, settings.Control).Source;
  run_.NextLink = source != nullptr ? source->Link() : nullptr;
}

void RunStart::OpenHost() {
  hostOpen_ = false;
  // A way of its own beside the host: it reads what another program publishes, and is always there.
  if (!UsesHost(control_) && run_.Way.Control != nullptr && run_.Way.Control != run_.Way.Source)
    static_cast<void>(run_.Way.Control->Backend().Open());
  const bool search = UsesHost(control_) && session_.SearchHost;
  RadioKit* host = parts_.Router.Host();
  hostOpen_ = search && host != nullptr && host->Backend().Open();
  if (hostOpen_ || stopped_() || TakeDial() || !search) return;
  // What the last run's host told is not known of this one.
  session_.Radio = RadioState{};
  parts_.User.ShowStatus("Castelon not found");
  parts_.Pump.Wait(1000ms);
  parts_.User.ShowStatus("");
}

bool RunStart::TakeDial() {
  Route& way = run_.Way;
  const bool free = way.Control == nullptr || way.Control == parts_.Router.Host();
  if (!free || way.Dial == nullptr) return false;
  way.Control = way.Dial;
  way.Traits = way.Dial->Traits();
  return way.Dial->Backend().Open();
}

bool RunStart::Open() {
  const bool radio = IsRadio(chosen_->Id.Kind);
  session_.Radio.OwnSpectrum = radio;
  if (!(radio ? OpenRadio() : OpenAudio())) return false;
  return !stopped_();
}

bool RunStart::OpenRadio() {
  RadioLink* link = run_.Way.Source != nullptr ? run_.Way.Source->Link() : nullptr;
  if (link == nullptr) {
    parts_.User.ShowMessage(
        "Spectrino",
        chosen_->Name + " cannot be reached by this version. Choose a sound input or the demo signal.",
        Severity::Exclamation, Cure::UseDemo({}));
    return false;
  }
  run_.Link = link;
  if (!link->Open()) return false;
  source_ = &link->Source();
  return true;
}

bool RunStart::ReopenAudio() {
  run_.Plan = PlanFor(session_.Settings);
  std::string reason;
  if (audio_.Reopen(Capture(), reason)) return true;
  TellOpenFailure(reason);
  return false;
}

bool RunStart::OpenAudio() {
  if (const auto error = FftLengthError(1 << run_.Plan.FftBits)) {
    parts_.User.ShowMessage("Spectrino", *error, Severity::Exclamation,
                            Cure::OpenSetup("Choose another number of FFT bins in Setup."));
    return false;
  }
  const bool reconnect = SetupSection(parts_.Store).Read(key::kReconnect);
  std::string reason = "The input \"" + chosen_->Name + "\" is not there.";
  const DeviceList::Entry* entry = parts_.Devices.Find(*chosen_);
  if (entry == nullptr || !audio_.Open(*entry, Capture(), reconnect, reason)) {
    TellOpenFailure(reason);
    return false;
  }
  source_ = &audio_;
  return true;
}

CaptureSettings RunStart::Capture() const {
  const PanSettings& settings = session_.Settings;
  return {.SampleRate = run_.Plan.SampleRate,
          .FftBits = run_.Plan.FftBits,
          .Window = static_cast<WindowType>(settings.WindowTypeIndex),
          .ChannelSign = settings.Iq ? -1 : 1};
}

void RunStart::TellOpenFailure(const std::string& reason) {
  const PanSettings& settings = session_.Settings;
  parts_.User.Log(LogArea::Audio, "open failed: " + reason);
  parts_.User.ShowStatus(reason);
  const bool zoomLowersRate = settings.TypZoom && settings.Zoom >= 2;
  const DeviceList::Entry* entry = parts_.Devices.Find(*chosen_);
  parts_.User.ShowMessage(
      "Spectrino", OpenFailureText(run_.Plan.SampleRate, zoomLowersRate, reason), Severity::Exclamation,
      OpenFailureCure(run_.Plan.SampleRate, zoomLowersRate, entry != nullptr ? &entry->Device : nullptr));
}

void RunStart::Close() {
  audio_.Close();
  if (run_.Link != nullptr) run_.Link->Close();
  if (hostOpen_) parts_.Router.Host()->Backend().Close();
  run_.Link = nullptr;
  source_ = nullptr;
  hostOpen_ = false;
  session_.Radio.OwnSpectrum = false;
}

ZoomPlan RunStart::PlanFor(const PanSettings& settings) const {
  const DeviceList::Entry* entry = parts_.Devices.Find(settings.Source);
  // The input of a run may be missing from the list by now.
  const SoundDevice* device = run_.Running ? audio_.Device() : entry != nullptr ? &entry->Device : nullptr;
  const int fixedRate = device != nullptr ? device->FixedRateHz : 0;
  // A recording has one rate: its zoom is the display's alone.
  const bool highResolution = settings.TypZoom && fixedRate == 0;
  ZoomPlan plan = ChooseZoomPlan(highResolution, settings.Zoom, settings.SRate, settings.Bits);
  if (fixedRate != 0) plan.SampleRate = fixedRate;
  return plan;
}

bool RunStart::HostMissing() const {
  return run_.Way.Control != nullptr && run_.Way.Control == parts_.Router.Host() && session_.SearchHost &&
         !hostOpen_;
}

RigBackend* RunStart::Backend() const {
  // A host that was not found at Start stays out of this run.
  if (run_.Way.Control == nullptr || (run_.Way.Control == parts_.Router.Host() && !hostOpen_)) return nullptr;
  return &run_.Way.Control->Backend();
}

}  // namespace spectrino
