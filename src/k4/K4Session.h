// The two connections to a K4: opening them, the commands that set the radio up and poll it, their end.
// Parses nothing: replies go to the parser handed in, frames to ParseK4PanFrames.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "k4/K4Retry.h"
#include "k4/K4Sender.h"
#include "k4/K4State.h"
#include "k4/PanAssembler.h"
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

class K4Session final : public K4Sender {
 public:
  /// Takes over the events of both sockets, until it is destroyed.
  explicit K4Session(K4SessionParts parts);
  ~K4Session() override;
  K4Session(const K4Session&) = delete;
  K4Session& operator=(const K4Session&) = delete;

  /// Begins a session: connects, asks the radio for everything, polls from now on. Returns after seconds,
  /// with events flowing meanwhile.
  [[nodiscard]] K4ConnectOutcome Start();
  /// Ends it: monitor off, both connections closed. Harmless in any state, and within itself.
  void Stop();
  /// One attempt after another until a connection stands or the user cancels; then the opening commands.
  /// One connected socket is enough.
  [[nodiscard]] K4ConnectOutcome TCPConnect();
  /// Asks for everything that the panel shows.
  void RefreshK4();
  /// To be called every kTimerInterval; does nothing while TimerEnabled() is false.
  void tmrK4_Timer();
  static constexpr std::chrono::milliseconds kTimerInterval{500};
  [[nodiscard]] bool TimerEnabled() const { return timerEnabled_; }

  void SendK4(std::string_view command) override;
  void SendCat(std::string_view text) override;
  void SendPan(std::string_view line) override;

  /// When the last line was published.
  [[nodiscard]] std::chrono::steady_clock::time_point LineArrived() const { return lineArrived_; }

 private:
  struct Target {
    std::string Address;  // as stored
    std::string Host;
    int CatPort = 0;
    int PanPort = 0;
    std::chrono::milliseconds TimeOut{};
  };

  [[nodiscard]] Target ReadTarget() const;
  void RestartMinipan();
  [[nodiscard]] bool Attempt(const Target& target);
  [[nodiscard]] bool AskRetry();
  [[nodiscard]] bool Abandoned() const { return parts_.Abandoned && parts_.Abandoned(); }
  [[nodiscard]] K4ConnectOutcome GiveUp(const Target& target);
  void SendOpening(const Target& target);
  void ReportMissingSocket(const Target& target);
  void CloseSockets();
  void SocketConnected(bool& connected);
  void SocketEnded(bool& connected, std::string_view name, std::string_view why);
  void CatArrived(std::span<const std::uint8_t> bytes);
  void PanArrived(std::span<const std::uint8_t> bytes);

  K4SessionParts parts_;
  K4PanAssembler assembler_;
  std::string K4RxBuffer_;
  bool catConnected_ = false;
  bool panConnected_ = false;
  bool timerEnabled_ = false;
  bool stopping_ = false;
  bool MonitorSelected_ = false;
  std::chrono::steady_clock::time_point lineArrived_{};
};

}  // namespace spectrino
