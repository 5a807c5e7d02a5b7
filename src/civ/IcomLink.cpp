#include "civ/IcomLink.h"

#include <algorithm>

#include "civ/IcomModels.h"
#include "settings/SerialAlias.h"
#include "settings/SetupSection.h"
#include "state/Val.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {

constexpr auto kIdentityWait = 150ms;
constexpr int kSilentTicks = 2;

// The radio's addresses stand in upper case in the text that frames are compared by.
std::string Address(const SetupSection& setup, const TextKey& key) {
  std::string text(Trim(setup.Read(key)));
  for (char& c : text) {
    if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 'a' + 'A');
  }
  return text;
}

}  // namespace

IcomLink::IcomLink(const IcomParts& parts)
    : parts_(parts), link_(parts.Port, parts.State, parts.Panel, parts.Time, parts.User) {}

bool IcomLink::Open(RadioState&) {
  CivState& state = parts_.State;
  const SetupSection setup(parts_.Store);
  state.IcomControl = setup.Read(key::kIcomControl);
  if (state.IcomControl != 0) {
    parts_.User.ShowMessage("Spectrino",
                            "The radio's scope cannot be reached through Castelon by this version. Choose "
                            "\"Serial Port\" as waveform data mode.",
                            Severity::Exclamation);
    return false;
  }
  // What an earlier radio told is not known of this one.
  state.RadioFreqMHz = 0;
  state.RadioModeIndex = state.AgcSetting = 0;
  state.IcomModeText.clear();
  state.ControllerAddress = Address(setup, key::kControllerAddress);
  if (state.ControllerAddress.size() != 2) state.ControllerAddress = "E0";
  state.RadioAddress = Address(setup, key::kIcAddress);
  if (state.RadioAddress.size() != 2) {
    parts_.User.ShowStatus("Enter the radio's CI-V address, for example 94, in Setup.");
    parts_.User.ShowMessage("Spectrino", "COM/ICOM ERROR", Severity::Critical);
    return false;
  }
  trouble_ = link_.Open(SerialPath(parts_.Store, setup.Read(key::kPort)));
  if (!trouble_.empty()) {
    parts_.User.ShowStatus(trouble_);
    parts_.User.Log(LogArea::Civ, trouble_);
  }
  state.IcomActive = true;
  polledSerial_ = state.ScopeSerial;
  DetectIcomModel();
  return true;
}

void IcomLink::DetectIcomModel() {
  CivState& state = parts_.State;
  state.RadioId.clear();
  state.IcomModelName = "ICOM?";
  state.ScopeShownSpan = 0;  // the first line sets the span controls
  state.ScopeWaveHex.clear();
  // Nothing waits before it, so it leaves at once and the wait begins with the write.
  link_.SendCiv("19", "00", "?");
  if (link_.IsOpen()) parts_.Pump.Wait(kIdentityWait);
  link_.ReceiveCiv();
  answered_ = !state.RadioId.empty();
  silentTicks_ = 0;
  SwitchScopeOn();
}

LinkHealth IcomLink::Health() const {
  if (!parts_.State.IcomActive) return {};
  if (!link_.IsOpen())
    return {.State = LinkState::Lost, .Why = trouble_.empty() ? "The port is gone" : trouble_};
  return {.State = answered_ ? LinkState::Live : LinkState::Connecting};
}

void IcomLink::tmrAnswer_Timer() {
  const CivState& state = parts_.State;
  if (answered_ || !link_.IsOpen()) return;
  if (state.RadioId.empty()) {
    link_.SendCiv("19", "00", "?");
    if (++silentTicks_ == kSilentTicks)
      parts_.User.ShowStatus("No answer from CI-V address " + state.RadioAddress +
                             ": check address, cable and 115200 baud at the radio.");
    return;
  }
  answered_ = true;
  parts_.User.ShowStatus("");
  SwitchScopeOn();
}

void IcomLink::SwitchScopeOn() {
  CivState& state = parts_.State;
  state.ScopeLevels.resize(static_cast<std::size_t>(std::max(0, state.SpectrumPoints)) + 1);
  link_.SendCiv("27", "10", "01");    // scope on
  link_.SendCiv("27", "11", "01");    // its data to us
  link_.SendCiv("27", "12", "00");    // the main scope
  link_.SendCiv("27", "13", "00");    // a single one
  link_.SendCiv("27", "1400", "00");  // centre mode
  state.ScopeFixedMode = 0;
  link_.RequestIcomStatus();
  parts_.Panel.ShowSpanList(true);
}

void IcomLink::Close() {
  link_.SendCiv("27", "11", "00");
  link_.Close();
  parts_.State.IcomActive = false;
}

PollResult IcomLink::Poll(const LineRequest&, SpectrumLine& line) {
  link_.Pump();
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
  line.Arrived = link_.LineArrived();
  line.TakenUtc = parts_.Time.UtcNow();
  return PollResult::Line;
}

float IcomLink::AntennaDbm(float level) const {
  return -133 + level / 2 - parts_.State.ScopeRefLevel;
}

void IcomLink::BeforeLayout() {
  parts_.State.ResizeInProgress = true;
  if (parts_.State.IcomActive) link_.SendCiv("27", "11", "00");
}

void IcomLink::AfterLayout(bool hidden) {
  if (parts_.State.IcomActive && !hidden && !parts_.State.ScanDialogOpen) link_.SendCiv("27", "11", "01");
  parts_.State.ResizeInProgress = false;
}

}  // namespace spectrino
