// From the stored address to a socket that answers, or to the reason why there is none: attempts, time-out
// and the question for other settings. Not what is sent once connected.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "k4/K4SessionParts.h"

namespace spectrino {

/// Where the settings say that the radio is.
struct K4Target {
  std::string Address;  ///< as stored
  std::string Host;
  int CatPort = 0;
  int PanPort = 0;
  std::chrono::milliseconds TimeOut{};
};

/// Host name or address of an address as it was typed, empty where it names none: the text before the first
/// colon, or an IPv6 address, which has colons of its own and may stand in brackets: "k4.local",
/// "10.0.0.4:9200", "::1", "[fe80::1%eth0]:9200".
[[nodiscard]] std::string K4HostOf(std::string_view address);

class K4Connector {
 public:
  /// parts outlive it. closeSockets: both, and what is known of their connections. cause: why a connection of
  /// the attempt did not come about, in the user's terms; empty while nothing was heard.
  K4Connector(const K4SessionParts& parts, std::function<void()> closeSockets,
              std::function<std::string()> cause)
      : parts_(parts), closeSockets_(std::move(closeSockets)), cause_(std::move(cause)) {}

  /// One attempt after another until a connection stands or the user cancels. One connected socket is enough.
  /// target: the radio that answered.
  [[nodiscard]] K4ConnectOutcome Connect(K4Target& target);
  /// Closes both and says why there is nothing to run on.
  [[nodiscard]] K4ConnectOutcome GiveUp(const K4Target& target);

 private:
  void RestartMinipan();
  [[nodiscard]] bool Attempt(const K4Target& target);
  [[nodiscard]] bool AskRetry();
  [[nodiscard]] bool Abandoned() const { return parts_.Abandoned && parts_.Abandoned(); }

  const K4SessionParts& parts_;
  std::function<void()> closeSockets_;
  std::function<std::string()> cause_;
};

}  // namespace spectrino
