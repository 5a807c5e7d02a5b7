#include "host/HostIcomLink.h"

#include <algorithm>

#include "host/CivReads.h"
#include "host/SpectrumPacket.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {

/// Between two reads of ours: each costs the radio's line time that its scope wants.
constexpr auto kAskPace = 250ms;
/// After a frequency or command of the operator: while the wheel turns, reads are not worth their time.
constexpr auto kAskLater = 300ms;
constexpr int kLastPort = 65535;
constexpr const char* kNoPort =
    "they come one port above Castelon's, and above 65535 there is none. Choose a lower one in Setup";

}  // namespace

HostIcomLink::HostIcomLink(const Parts& parts) : parts_(parts) {
  parts_.Socket.Received = [this](std::span<const std::uint8_t> packet) {
    const auto line = ReadSpectrumPacket(packet);
    if (!line) return;
    lineCame_ = parts_.Time.Now();
    if (LineCame) LineCame(*line);
  };
}

HostIcomLink::~HostIcomLink() {
  Close();
  parts_.Socket.Received = nullptr;
}

void HostIcomLink::Open() {
  if (!parts_.Radio.HostFound()) parts_.Backend.FollowLater();
  const RigctldEndpoint endpoint = HostEndpoint(parts_.Store);
  port_ = endpoint.Port < kLastPort ? static_cast<std::uint16_t>(endpoint.Port + 1) : std::uint16_t{0};
  here_ = endpoint.IsThisMachine();
  open_ = true;
  lineCame_ = {};
  answers_ = false;
  findings_ = 0;
  asked_.clear();
  nextAsk_ = {};
  Listen();
}

void HostIcomLink::Listen() {
  listen_.Restart(parts_.Time.Now());
  std::string trouble = port_ != 0 ? parts_.Socket.Open(port_) : kNoPort;
  if (!trouble.empty() && trouble != trouble_) parts_.User.Log(LogArea::Host, trouble);
  trouble_ = std::move(trouble);
}

void HostIcomLink::Close() {
  if (!open_) return;
  open_ = false;
  parts_.Socket.Close();
  parts_.Radio.SayGoodbye("set_func", "SPECTRUM 0");
  parts_.Backend.Close();
}

void HostIcomLink::Tick() {
  if (!open_) return;
  if (!trouble_.empty() && listen_.Take(parts_.Time.Now())) Listen();
  const bool answers = parts_.Radio.Client().IsReady() && Health().State == LinkState::Live;
  if (!answers) answers_ = false;
  if (answers && !answers_ && parts_.Radio.State().Of(Vfo::A).FreqHz > 0) {
    answers_ = true;
    ++findings_;
  }
  if (answers_) AskNext();
}

LinkHealth HostIcomLink::Health() const {
  LinkHealth health = parts_.Radio.Client().Health();
  const auto silent = [now = parts_.Time.Now()](LinkHealth::Time heard) {
    return now - heard > LinkWatch::kSilence;
  };
  // A line that came is as good as an answer: the server may be busy with another of its clients. Where there
  // is neither, it may be long until the server gives the radio up.
  if (health.State == LinkState::Silent && !silent(lineCame_))
    return {.State = LinkState::Live, .Since = health.Since};
  if (health.State == LinkState::Live && silent(lineCame_) && silent(health.Since))
    health.State = LinkState::Silent;
  return health;
}

std::string HostIcomLink::Trouble() const {
  return trouble_.empty() ? "" : "No scope line can be received: " + trouble_ + ".";
}

std::string HostIcomLink::ScopeOptions() const {
  if (!here_) return {};
  return "--multicast-addr=127.0.0.1 --multicast-port=" + std::to_string(port_) + " -C async=1";
}

std::string HostIcomLink::HostIcomMode() const {
  return std::string(CivModeOfWord(parts_.Radio.State().Of(Vfo::A).ModeWord));
}

void HostIcomLink::SwitchScope(bool on) {
  for (const auto& [function, slot] : {std::pair("SPECTRUM", "scope lines"), std::pair("SCOPE", "scope")}) {
    // The radio's own screen stays as it is when we leave.
    if (!on && function == std::string_view("SCOPE")) continue;
    parts_.Radio.SetFunction(function, on, slot);
  }
}

void HostIcomLink::SendCommand(std::string_view hex) {
  nextAsk_ = parts_.Time.Now() + kAskLater;
  parts_.Radio.HostSendCommand(HostCommandKind::CivHex, hex);
}

void HostIcomLink::Ask(std::string_view hex) {
  if (FindCivRead(hex) == nullptr || std::ranges::find(asked_, hex) != asked_.end()) return;
  asked_.emplace_back(hex);
}

void HostIcomLink::AskNext() {
  const auto now = parts_.Time.Now();
  const auto due = std::max(nextAsk_, parts_.Radio.FrequencyAskedAt() + kAskLater);
  if (asked_.empty() || now < due || !parts_.Radio.MayRead()) return;
  nextAsk_ = now + kAskPace;
  const CivRead* read = FindCivRead(asked_.front());
  asked_.pop_front();
  parts_.Radio.Read(read->Command, read->Argument, [this, read](const RigctldReply* answer) {
    const std::string reply = answer != nullptr ? CivReply(*read, *answer) : std::string();
    if (open_ && !reply.empty() && Replied) Replied(reply);
  });
}

}  // namespace spectrino
