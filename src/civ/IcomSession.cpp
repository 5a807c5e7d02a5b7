#include "civ/IcomSession.h"

#include <algorithm>
#include <utility>

#include "civ/IcomModels.h"
#include "settings/SerialAlias.h"
#include "settings/SetupSection.h"
#include "state/BusyGuard.h"
#include "state/Val.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {

constexpr auto kIdentityWait = 150ms;
constexpr auto kCloseWait = 5ms;
constexpr int kCloseWaits = 60;
constexpr auto kLookPace = 50ms;
constexpr auto kAskPace = 1s;
constexpr auto kDivisionIsNew = 2s;
constexpr auto kCutLine = 1s;  // the slowest line takes a third of it
constexpr std::size_t kFutileTries = 3;
constexpr int kOpenQuestions = 2;

// The radio's addresses stand in upper case in the text that frames are compared by.
std::string Address(const SetupSection& setup, const TextKey& key) {
  std::string text(Trim(setup.Read(key)));
  for (char& c : text) {
    if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 'a' + 'A');
  }
  return text;
}

}  // namespace

IcomSession::IcomSession(const IcomParts& parts)
    : parts_(parts),
      link_(parts.Port, parts.State, parts.Panel, parts.Time, parts.User),
      watch_(parts.Time),
      look_(kLookPace),
      ask_(kAskPace) {
  link_.Heard = [this] {
    if (parts_.State.IcomActive) watch_.Heard();
  };
  link_.Lost = [this](const std::string& reason) { HandleLost(reason); };
}

bool IcomSession::Open() {
  CivState& state = parts_.State;
  // What an earlier radio told is not known of this one.
  state.RadioFreqMHz = 0;
  state.RadioModeIndex = state.AgcSetting = 0;
  state.IcomModeText.clear();
  if (!ReadAddresses()) return false;
  // Events flow below, and a pass of the panel's timer with them.
  const BusyGuard busy{healBusy_};
  FinishClosing();
  reconnect_ = SetupSection(parts_.Store).Read(key::kReconnect);
  watch_.TryAgain(reconnect_);
  watch_.Begin();
  state.RadioId.clear();
  state.IcomModelName = kUnknownModel;
  everSetUp_ = false;
  state.IcomActive = true;
  if (const std::string trouble = OpenPort(); trouble.empty()) {
    parts_.Pump.Wait(kIdentityWait);
    link_.ReceiveCiv();
  } else {
    HandleLost(trouble);
  }
  identified_ = !state.RadioId.empty();
  SetUpRadio();
  return true;
}

bool IcomSession::ReadAddresses() {
  CivState& state = parts_.State;
  const SetupSection setup(parts_.Store);
  state.ControllerAddress = Address(setup, key::kControllerAddress);
  if (state.ControllerAddress.size() != 2) state.ControllerAddress = "E0";
  state.RadioAddress = Address(setup, key::kIcAddress);
  if (state.RadioAddress.size() == 2) return true;
  const char* const cure = "Enter the radio's CI-V address, for example 94, in Setup.";
  parts_.User.ShowStatus(cure);
  parts_.User.ShowMessage("Spectrino", "COM/ICOM ERROR", Severity::Critical, Cure::OpenSetup(cure));
  return false;
}

// An earlier run still says its last words, with a tenth of a second for them.
void IcomSession::FinishClosing() {
  for (int i = 0; i < kCloseWaits && link_.Closing(); ++i) {
    parts_.Pump.Wait(kCloseWait);
    link_.Pump();
  }
}

/// Empty when the radio is being asked what it is, otherwise why the port did not open.
std::string IcomSession::OpenPort() {
  CivState& state = parts_.State;
  // Looked up each time: behind a lasting name the device may stand under another number by now.
  const std::string path = SerialPath(parts_.Store, SetupSection(parts_.Store).Read(key::kPort));
  std::string trouble = link_.Open(path);
  if (!trouble.empty()) return trouble;
  watch_.Begin();
  identified_ = setUp_ = state.Transmitting = false;
  identitiesSeen_ = state.IdentitySerial;
  unanswered_ = 0;
  state.ScopeShownSpan = 0;  // the first line sets the span controls
  state.ScopeWaveHex.clear();
  // Nothing waits before it, so it leaves at once.
  link_.SendCiv("19", "00", "?");
  ask_.Restart(parts_.Time.Now());
  return {};
}

void IcomSession::HandleLost(const std::string& reason) {
  Tell({});
  identified_ = setUp_ = false;
  watch_.Lost(reason);
  parts_.User.Log(LogArea::Civ, reason);
}

void IcomSession::SetUpRadio() {
  CivState& state = parts_.State;
  state.ScopeLevels.resize(static_cast<std::size_t>(std::max(0, state.SpectrumPoints)) + 1);
  link_.SendCiv("27", "10", "01");                     // scope on
  if (ScopeWanted()) link_.SendCiv("27", "11", "01");  // its data to us
  link_.SendCiv("27", "12", "00");                     // the main scope
  link_.SendCiv("27", "13", "00");                     // a single one
  if (!everSetUp_) {
    link_.SendCiv("27", "1400", "00");  // centre mode
    state.ScopeFixedMode = 0;
    parts_.Panel.ShowSpanList(true);
  }
  link_.RequestIcomStatus();
  setUp_ = watch_.Health().State == LinkState::Live;
  everSetUp_ = everSetUp_ || setUp_;
  scope_.Restart(parts_.Time.Now());
  ++setUps_;
}

void IcomSession::Close() {
  Tell({});
  watch_.End();
  link_.SendCiv("27", "11", "00");
  link_.Close();
  parts_.State.IcomActive = false;
}

LinkHealth IcomSession::Health() const {
  if (!parts_.State.IcomActive) return {};
  if (parts_.State.ResizeInProgress) return beforeLayout_;
  LinkHealth health = watch_.Health();
  if (health.State == LinkState::Live) health.Why = ScopeAdvice();
  if (health.State == LinkState::Silent && !everSetUp_)
    health.Why = "no answer from CI-V address " + parts_.State.RadioAddress +
                 ". Check address, cable and 115200 baud at the radio.";
  return health;
}

bool IcomSession::Answers() const {
  return !reconnect_ || (setUp_ && Health().State == LinkState::Live);
}

void IcomSession::Pump() {
  link_.Pump();
  if (!parts_.State.IcomActive || parts_.State.ResizeInProgress) return;
  if (look_.Take(parts_.Time.Now())) Heal();
}

void IcomSession::Heal() {
  const BusyGuard busy{healBusy_};
  if (!busy) return;
  if (watch_.TryDue()) {
    if (std::string trouble = OpenPort(); !trouble.empty())
      watch_.Lost(std::move(trouble));
    else
      parts_.User.Log(LogArea::Civ, "the port is open again");
  }
  if (link_.IsOpen()) FollowRadio();
  Tell(Advice());
}

void IcomSession::FollowRadio() {
  CivState& state = parts_.State;
  if (reconnect_ && Health().State == LinkState::Silent) {
    identified_ = setUp_ = state.Transmitting = false;
    identitiesSeen_ = state.IdentitySerial;
  }
  if (!identified_ && state.IdentitySerial != identitiesSeen_) {
    identified_ = true;
    if (FindIcomModel(state.RadioId) == nullptr) state.IcomModelName = kUnknownModel;
    SetUpRadio();
  }
  if (!reconnect_) return;
  // Without a known model no line is understood.
  const bool wanted = LinesDue() && Answers() && state.SpectrumPoints > 0;
  if (!identified_) {
    AskAgain();
  } else if (scope_.Due(parts_.Time.Now(), wanted, link_.LineArrived())) {
    link_.SendCiv("27", "10", "01");
    link_.SendCiv("27", "11", "01");
  }
}

void IcomSession::AskAgain() {
  if (!ask_.Take(parts_.Time.Now())) return;
  unanswered_ = Health().State == LinkState::Live ? unanswered_ + 1 : 0;
  // It is heard, but does not know this question: no more is to be learned of it.
  if (unanswered_ >= kOpenQuestions && !setUp_) SetUpRadio();
  link_.SendCiv("19", "00", "?");
  // Every radio knows this one.
  link_.SendCiv("03", "", "?");
}

/// Whether lines should come: where nobody can look at them they stay off the bus.
bool IcomSession::ScopeWanted() const {
  return !hidden_ && !parts_.State.ScanDialogOpen;
}

/// What the user can do, where the health of the link does not say it; empty while all is well.
std::string IcomSession::Advice() const {
  const CivState& state = parts_.State;
  if (!link_.IsOpen()) return {};
  if (Health().State != LinkState::Live) return {};
  if (!identified_) {
    if (unanswered_ < kOpenQuestions) return {};
    return "The radio at CI-V address " + state.RadioAddress +
           " does not say which model it is: tuning, modes and levels work, its scope stays empty.";
  }
  if (FindIcomModel(state.RadioId) == nullptr)
    return "CI-V model " + state.RadioId +
           " is not known: tuning, modes and levels work, its scope may stay empty. A sound input shows a "
           "spectrum.";
  return ScopeAdvice();
}

/// Why a radio that answers brings no lines.
std::string IcomSession::ScopeAdvice() const {
  if (scope_.Tries() == 0) return {};
  // A line that was cut off when the scope went silent is no damage: divisions must have kept on coming.
  const auto divisionArrived = link_.DivisionArrived();
  if (parts_.Time.Now() - divisionArrived < kDivisionIsNew &&
      divisionArrived - link_.LineArrived() > kCutLine)
    return "The radio answers, but the lines of its scope come damaged: check the cable.";
  if (scope_.Tries() < kFutileTries)
    return "The radio answers, but its scope sends nothing: it is switched on again.";
  return "The radio answers, but its scope stays off: switch it on at the radio.";
}

void IcomSession::Tell(std::string text) {
  if (text == told_) return;
  told_ = std::move(text);
  parts_.User.ShowStatus(told_);
}

// Nothing is parsed during a layout, so nothing new is known of the radio, however long it takes.
void IcomSession::BeforeLayout() {
  beforeLayout_ = Health();
  parts_.State.ResizeInProgress = true;
  if (parts_.State.IcomActive) link_.SendCiv("27", "11", "00");
}

void IcomSession::AfterLayout(bool hidden) {
  hidden_ = hidden;
  if (parts_.State.IcomActive && ScopeWanted()) link_.SendCiv("27", "11", "01");
  parts_.State.ResizeInProgress = false;
  scope_.Restart(parts_.Time.Now());
  link_.ReceiveCiv();
}

}  // namespace spectrino
