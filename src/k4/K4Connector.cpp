#include "k4/K4Connector.h"

#include <algorithm>

#include "settings/SetupSection.h"
#include "state/Val.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {

constexpr int kUsualCatPort = 9200;
constexpr int kUsualPanPort = 9201;

// Text that is not a number, or none, reads as 0.
int PortOr(int port, int usual) {
  return port == 0 ? usual : port;
}

/// Its digits and colons, up to the name of an interface: "::" somewhere, or all eight groups.
bool IsIpv6(std::string_view text) {
  const std::string_view groups = text.substr(0, text.find('%'));
  if (groups.find_first_not_of("0123456789abcdefABCDEF:.") != std::string_view::npos) return false;
  return groups.find("::") != std::string_view::npos || std::ranges::count(groups, ':') == 7;
}

K4Target ReadTarget(SettingsStore& store) {
  const SetupSection setup(store);
  K4Target target;
  target.Address = setup.Read(key::kK4Address);
  target.Host = K4HostOf(target.Address);
  target.CatPort = PortOr(setup.Read(key::kK4CatPort), kUsualCatPort);
  target.PanPort = PortOr(setup.Read(key::kK4PanPort), kUsualPanPort);
  target.TimeOut = std::chrono::milliseconds(setup.Read(key::kTcpTimeOutMs));
  return target;
}

}  // namespace

std::string K4HostOf(std::string_view address) {
  std::string_view text = Trim(address);
  if (text.starts_with('[')) return std::string(Trim(text.substr(1, text.find(']') - 1)));
  if (!IsIpv6(text)) text = text.substr(0, text.find(':'));
  return std::string(Trim(text));
}

K4ConnectOutcome K4Connector::Connect(K4Target& target) {
  while (true) {
    target = ReadTarget(parts_.Store);
    if (target.Address.empty()) return {true, "TCP Port not defined"};
    RestartMinipan();
    if (target.Host.empty()) return GiveUp(target);
    const bool connected = Attempt(target);
    if (Abandoned()) {
      closeSockets_();
      return {true, {}};
    }
    if (connected) return {};
    if (!AskRetry()) return GiveUp(target);
  }
}

void K4Connector::RestartMinipan() {
  parts_.State.MinipanOn = true;
  parts_.View.TickMinipan();
  parts_.State.MinipanHistoryCount = 0;
}

bool K4Connector::Attempt(const K4Target& target) {
  closeSockets_();
  // The hourglass before the first pause: events flow in every one of them, and K4Connected, cleared above,
  // may be set by any. It must not be cleared again.
  parts_.View.ShowWaiting(true);
  parts_.WSPan.Connect(target.Host, static_cast<std::uint16_t>(target.PanPort));
  parts_.Pump.Wait(50ms);
  if (!Abandoned()) {
    parts_.WSCat.Connect(target.Host, static_cast<std::uint16_t>(target.CatPort));
    parts_.Pump.Wait(50ms);
  }
  const auto start = parts_.Time.Now();
  do {
    parts_.Pump.Wait(30ms);
  } while (!parts_.State.K4Connected && !Abandoned() && parts_.Time.Now() - start <= target.TimeOut);
  parts_.View.ShowWaiting(false);
  return parts_.State.K4Connected;
}

bool K4Connector::AskRetry() {
  const K4ConnectTexts shown = LoadK4ConnectTexts(parts_.Store);
  parts_.View.AllowAlwaysOnTop(false);
  const std::optional<K4ConnectTexts> answer = parts_.Retry.Ask(K4RetryMessage(shown), shown);
  parts_.View.AllowAlwaysOnTop(true);
  if (!answer) return false;
  SaveK4ConnectTexts(parts_.Store, *answer);
  return true;
}

K4ConnectOutcome K4Connector::GiveUp(const K4Target& target) {
  parts_.View.ShowWaiting(false);
  std::string cause = cause_();
  if (target.Host.empty())
    cause = "the address names no host";
  else if (cause.empty())
    cause = "no answer within " + std::to_string(target.TimeOut.count()) + " ms: is the radio switched on?";
  // An answer may still be on its way; nobody waits for it any more.
  closeSockets_();
  parts_.Pump.Wait(30ms);
  if (Abandoned()) return {true, {}};
  return {true, "TCP ERROR - HOST = " + target.Host + " PORTPAN = " + std::to_string(target.PanPort) +
                    " PORTCAT = " + std::to_string(target.CatPort) + ": " + cause};
}

}  // namespace spectrino
