#include "civ/HostSession.h"

#include <algorithm>
#include <utility>

#include "civ/CivParser.h"
#include "civ/HostWave.h"
#include "civ/IcomModels.h"
#include "rig/LinkWatch.h"
#include "settings/SetupSection.h"
#include "state/BusyGuard.h"
#include "state/Val.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {
/// Longer without a whole line than that, and one with a hole is taken.
constexpr auto kHoleTime = 1500ms;
/// A radio that was heard so lately lacks nothing but its lines.
constexpr auto kHeardLately = 1500ms;
/// No radio tunes below.
constexpr double kLeastMHz = 0.01;
}  // namespace

HostSession::HostSession(const IcomParts& parts, HostIcom& host) : parts_(parts), host_(host), sender_(host) {
  host_.LineCame = [this](const HostScopeLine& line) { TakeLine(line); };
  host_.Replied = [this](std::string_view hex) { TakeReply(hex); };
}

HostSession::~HostSession() {
  host_.LineCame = nullptr;
  host_.Replied = nullptr;
}

bool HostSession::Open() {
  CivState& state = parts_.State;
  // What an earlier radio told is not known of this one.
  state.RadioFreqMHz = 0;
  state.RadioModeIndex = state.AgcSetting = 0;
  state.Transmitting = false;
  state.IcomModeText.clear();
  state.RadioId.clear();
  state.IcomModelName = kUnknownModel;
  setUp_ = everSetUp_ = false;
  model_.clear();
  mode_.clear();
  findings_ = 0;
  ForgetLine();
  state.IcomActive = true;
  host_.Open();
  return true;
}

// Where a line of before belongs says nothing of this radio's dial.
void HostSession::ForgetLine() {
  lineArrived_ = {};
  parts_.State.ScopeLineLowMHz = parts_.State.ScopeLineHighMHz = 0;
}

void HostSession::Close() {
  Tell({});
  parts_.State.IcomActive = false;
  host_.Close();
}

LinkHealth HostSession::Health() const {
  return parts_.State.IcomActive ? host_.Health() : LinkHealth{};
}

void HostSession::Pump() {
  if (!parts_.State.IcomActive || parts_.State.ResizeInProgress || !look_.Take(parts_.Time.Now())) return;
  ReadHostIcom();
  if (host_.Findings() != findings_) {
    findings_ = host_.Findings();
    SetUpRadio();
  }
  if (scope_.Due(parts_.Time.Now(), Answers() && LinesDue(), lineArrived_)) SwitchScopeOn();
  Tell(Advice());
}

void HostSession::ReadHostIcom() {
  CivState& state = parts_.State;
  // A server that took a piece of a line for the dial is put right by the line itself, whose centre is the
  // dial.
  const double freqMHz = host_.HostIcomFrequency();
  const bool follows = state.ScopeFixedMode == 0 && parts_.Time.Now() - lineArrived_ < LinkWatch::kSilence;
  const bool outside = freqMHz < state.ScopeLineLowMHz || freqMHz > state.ScopeLineHighMHz;
  const bool believed = host_.HostIcomFrequencyIsAsked() || !(follows && outside);
  if (freqMHz > kLeastMHz && believed) state.RadioFreqMHz = freqMHz;
  state.Transmitting = host_.HostIcomTransmits();
  std::string mode = host_.HostIcomMode();
  if (!mode.empty() && mode != mode_ && TakeReply("04" + mode)) mode_ = std::move(mode);
}

void HostSession::SetUpRadio() {
  CivState& state = parts_.State;
  if (model_ != host_.Model()) {
    model_ = host_.Model();
    ForgetLine();
    const IcomModel* model = FindIcomModelByName(model_);
    state.IcomModelName = model_.empty() ? std::string(kUnknownModel) : model_;
    // Its lines tell their own length and full scale: all that is needed is that it is a radio.
    state.RadioId = model != nullptr ? model->Id : "00";
    if (model != nullptr) {
      state.IcomModelName = model->Name;
      state.ScopeMaxLevel = model->ScopeMaxLevel;
      state.SpectrumPoints = state.ScopePoints = model->SpectrumPoints;
    }
    host_.SetUsualAddress(model != nullptr ? model->Id : std::string_view());
  }
  state.ScopeShownSpan = 0;  // the first line sets the span controls
  state.ScopeLevels.resize(static_cast<std::size_t>(std::max(0, state.SpectrumPoints)) + 1);
  if (ScopeWanted()) SwitchScopeOn();
  sender_.SendCiv("27", "12", "00");  // the main scope
  sender_.SendCiv("27", "13", "00");  // a single one
  if (!everSetUp_) {
    sender_.SendCiv("27", "1400", "00");  // centre mode
    state.ScopeFixedMode = 0;
    parts_.Panel.ShowSpanList(true);
  }
  sender_.RequestIcomStatus();
  setUp_ = everSetUp_ = true;
  scope_.Restart(parts_.Time.Now());
  ++setUps_;
}

// The host's own switch first: it may keep account of it. Not all radios have it there.
void HostSession::SwitchScopeOn() {
  host_.SwitchScope(true);
  sender_.SendCiv("27", "10", "01");
}

void HostSession::TakeLine(const HostScopeLine& line) {
  CivState& state = parts_.State;
  if (!state.IcomActive || state.ResizeInProgress) return;
  const BusyGuard busy{state.CivParserBusy};
  if (!busy) return;
  const auto now = parts_.Time.Now();
  if (now - lineArrived_ < kHoleTime && MissesDivision(line, state)) return;
  const std::uint64_t serial = state.ScopeSerial;
  TakeHostLine(line, state, parts_.Panel);
  if (state.ScopeSerial != serial) lineArrived_ = now;
}

bool HostSession::TakeReply(std::string_view hex) {
  CivState& state = parts_.State;
  const BusyGuard busy{state.CivParserBusy};
  // To us, from the radio: who they are does not matter here.
  if (busy) ParseCivFrame("FEFEE000" + std::string(hex) + "FD", state, parts_.Panel);
  return static_cast<bool>(busy);
}

bool HostSession::ScopeWanted() const {
  return !hidden_ && !parts_.State.ScanDialogOpen;
}

/// What the user can do, where the health of the link does not say it; empty while all is well.
std::string HostSession::Advice() const {
  if (std::string trouble = host_.Trouble(); !trouble.empty()) return trouble;
  if (scope_.Tries() == 0 || parts_.Time.Now() - host_.Health().Since > kHeardLately) return {};
  if (const std::string options = host_.ScopeOptions(); !options.empty())
    return "Castelon passes no scope lines on. Start rigctld with " + options + ".";
  return "No scope lines come from a Castelon on another machine. Let Spectrino run rigctld here, in Setup, "
         "or "
         "connect the radio by its serial line.";
}

void HostSession::Tell(std::string text) {
  if (text == told_) return;
  told_ = std::move(text);
  parts_.User.ShowStatus(told_);
}

void HostSession::BeforeLayout() {
  parts_.State.ResizeInProgress = true;
  if (parts_.State.IcomActive) host_.SwitchScope(false);
}

void HostSession::AfterLayout(bool hidden) {
  hidden_ = hidden;
  if (parts_.State.IcomActive && ScopeWanted()) host_.SwitchScope(true);
  parts_.State.ResizeInProgress = false;
  scope_.Restart(parts_.Time.Now());
}

}  // namespace spectrino
