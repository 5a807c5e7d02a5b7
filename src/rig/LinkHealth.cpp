#include "rig/LinkHealth.h"

#include <algorithm>

namespace spectrino {
namespace {

using Seconds = std::chrono::seconds;

std::string SecondsText(LinkHealth::Time from, LinkHealth::Time to) {
  const auto seconds = std::chrono::round<Seconds>(std::max(to - from, LinkHealth::Time::duration{}));
  return std::to_string(seconds.count()) + " s";
}

/// Up: what is announced is never late. "now" when it is due.
std::string NextTryText(LinkHealth::Time now, LinkHealth::Time due) {
  if (due <= now) return "now";
  return "in " + std::to_string(std::chrono::ceil<Seconds>(due - now).count()) + " s";
}

/// With a full stop, unless it ends as a sentence already: "is the port right?".
std::string Sentence(const std::string& text) {
  return text.find_last_of(".?!") == text.size() - 1 ? text : text + ".";
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
      text = Sentence(health.Why.empty() ? name + " is gone" : health.Why);
      break;
  }
  if (health.NextTry) text += " Trying again " + NextTryText(now, *health.NextTry);
  return text;
}

}  // namespace spectrino
