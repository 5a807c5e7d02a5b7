// How a link does, as an operator needs to know it. Plain data; LinkWatch keeps it.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace spectrino {

enum class LinkState {
  Closed,      ///< not opened, or given up
  Connecting,  ///< opened; nothing was heard yet
  Live,        ///< it is heard
  Silent,      ///< it was heard and no longer is
  Lost,        ///< the connection, the port or the input is gone
};

struct LinkHealth {
  using Time = std::chrono::steady_clock::time_point;

  LinkState State = LinkState::Closed;
  Time Since{};       ///< of Silent and Lost: when it was heard last
  std::string Why{};  ///< of Lost: what happened, in the user's terms; of Silent: what may be the cause; of
                      ///< Live: why it brings no lines, empty while it does
  std::optional<Time> NextTry = std::nullopt;  ///< when it is tried again; nothing: not by itself
};

/// "IC-7300 silent for 12 s: is it switched on? Trying again in 4 s"; empty while all is well or may become
/// so. name: of what is linked to.
[[nodiscard]] std::string HealthText(const LinkHealth& health, const std::string& name, LinkHealth::Time now);

}  // namespace spectrino
