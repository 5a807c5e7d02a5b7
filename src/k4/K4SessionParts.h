// What a session with a K4 needs around it: sockets, window, dialog, clock; and how a start ends.
// No behaviour of its own.
#pragma once

#include <functional>
#include <string>

#include "k4/K4Retry.h"
#include "k4/K4State.h"
#include "platform/ByteSocket.h"
#include "platform/Clock.h"
#include "platform/EventPump.h"
#include "platform/Notifier.h"
#include "settings/SettingsStore.h"

namespace spectrino {

/// What the session asks of the window. Nothing of it sends anything to the radio.
class K4SessionView {
 public:
  virtual ~K4SessionView() = default;
  virtual void TickMinipan() = 0;                    ///< chkMinipan
  virtual void SelectSpanPreset(int index) = 0;      ///< optK4Span
  virtual void ClearBset() = 0;                      ///< chkBSET
  [[nodiscard]] virtual bool SubTicked() const = 0;  ///< chkSub
  virtual void ShowWaiting(bool waiting) = 0;        ///< the hourglass
  /// Off while a dialog is open that the window must not cover; true restores the window's own setting.
  virtual void AllowAlwaysOnTop(bool allow) = 0;
};

/// All outlive the session.
struct K4SessionParts {
  K4State& State;
  ByteSocket& WSCat;
  ByteSocket& WSPan;
  SettingsStore& Store;
  K4SessionView& View;
  K4RetryDialog& Retry;
  Notifier& User;
  EventPump& Pump;
  const Clock& Time;
  /// Takes whole replies out of the buffer. Where it turns the event loop it has to look at the buffer anew:
  /// what arrives then is appended, and Stop clears it all.
  std::function<void(std::string& buffer)> ParseReplies;
  std::function<void(int which)> SelectMonitor;
  /// Stop was pressed or the window closed: a start that is under way gives up at its next look.
  std::function<bool()> Abandoned = {};
};

struct K4ConnectOutcome {
  bool Failed = false;
  std::string Message;  ///< why, for the user; empty when connected, and when the user gave up by Stop
};

}  // namespace spectrino
