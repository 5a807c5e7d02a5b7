// The bridge as a peer on the desktop's message bus: items of text that it tells, commands that it is told.
// Knows no meaning of the texts.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

namespace spectrino {

/// What the bridge tells, each as decimal text but the last.
enum class BridgeItem {
  VfoAHz,      ///< frequency of VFO A
  VfoBHz,      ///< frequency of VFO B
  Offset,      ///< what stands between dial and display
  Shift,       ///< IF shift
  Bandwidth,   ///< of the main receiver, Hz
  Bandwidth2,  ///< of the sub receiver, Hz
  Trouble,     ///< why the bridge does not hear its radio, for the user; empty while it does
};

/// The items by the names that they have on the bus, in the order of BridgeItem.
inline constexpr std::array<const char*, 7> kBridgeItems{"VfoAHz",    "VfoBHz",     "Offset", "Shift",
                                                         "Bandwidth", "Bandwidth2", "Trouble"};

/// Events come from the event loop, never from within a call of ours, and may call any method.
class BridgePort {
 public:
  virtual ~BridgePort() = default;
  BridgePort() = default;
  BridgePort(const BridgePort&) = delete;
  BridgePort& operator=(const BridgePort&) = delete;

  /// Looks for the bridge and follows it from now on, also when it leaves and returns. Never waits: Found or
  /// Missing follows.
  virtual void Open() = 0;
  /// No event after it. Harmless while closed.
  virtual void Close() = 0;
  /// Hands the bridge a command. Dropped while it is not there.
  virtual void Command(std::string_view text) = 0;

  /// It is there; its items follow.
  std::function<void()> Found;
  /// It is not there at Open, or left. why: in the user's terms, a sentence.
  std::function<void(const std::string& why)> Missing;
  /// An item as it is now; at most 200 characters.
  std::function<void(BridgeItem item, const std::string& text)> Told;
  /// A command was refused or not answered; for the log.
  std::function<void(const std::string& why)> Refused;
};

}  // namespace spectrino
