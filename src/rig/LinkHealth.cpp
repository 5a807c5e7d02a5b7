#include "rig/LinkHealth.h"

#include <algorithm>

namespace spectrino {
namespace {

using Seconds = std::chrono::seconds;

std::string SecondsText(LinkHealth::Time from, LinkHealth::Time to) {
  const auto seconds = std::chrono::round<Seconds>(std::max(to - from, LinkHealth::Time::duration{}));
  return std::to_string(seconds.count()) + " s";
}

}  // namespace

std::string HealthText(const LinkHealth& health, const std::string& name, LinkHealth::Time now) {
  std::string text;
  switch (health.State) {
    case LinkState::Closed:
    case LinkState::Connecting:
    case LinkState::Live:
      return {};
    case LinkState::Silent:
      text = name + " silent for " + SecondsText(health.Since, now) + ": " +
             (health.Why.empty() ? "is it switched on?" : health.Why);
      break;
    case LinkState::Lost:
      text = health.Why.empty() ? name + " is gone." : health.Why + ".";
      break;
  }
  if (health.NextTry) text += " Trying again in " + SecondsText(now, *health.NextTry);
  return text;
}

}  // namespace spectrino
