// The two connections to a K4: opening them, the commands that set the radio up and poll it, their end.
// Parses nothing: replies go to the parser handed in, frames to ParseK4PanFrames.
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "k4/K4Connector.h"
#include "k4/K4Sender.h"
#include "k4/K4SessionParts.h"
#include "k4/PanAssembler.h"
#include "rig/LinkWatch.h"

namespace spectrino {

class K4Session final : public K4Sender {
 public:
  /// Takes over the events of both sockets, until it is destroyed.
  explicit K4Session(K4SessionParts parts);
  ~K4Session() override;
  K4Session(const K4Session&) = delete;
  K4Session& operator=(const K4Session&) = delete;

  /// Begins a session: connects, asks the radio for everything, polls from now on. Returns after seconds,
  /// with events flowing meanwhile. What is lost by then comes back by itself, or, without "Reconnect", has
  /// failed.
  [[nodiscard]] K4ConnectOutcome Start();
  /// Ends it: monitor off, both connections closed. Harmless in any state, and within itself.
  void Stop();
  /// One attempt after another until a connection stands or the user cancels; then the opening commands.
  /// One connected socket is enough.
  [[nodiscard]] K4ConnectOutcome TCPConnect();
  /// Asks for everything that the panel shows.
  void RefreshK4();
  /// To be called every kTimerInterval; does nothing before Start and after Stop.
  void tmrK4_Timer();
  static constexpr std::chrono::milliseconds kTimerInterval{500};

  void SendK4(std::string_view command) override;
  void SendCat(std::string_view text) override;
  void SendPan(std::string_view line) override;

  /// When the last line was published.
  [[nodiscard]] std::chrono::steady_clock::time_point LineArrived() const { return lineArrived_; }
  /// Of the connection that does worse; the other one works on meanwhile. Why names the ports.
  [[nodiscard]] LinkHealth Health() const;
  [[nodiscard]] LinkHealth CatHealth() const {
    return parts_.State.K4Active ? cat_.Watch.Health() : LinkHealth{};
  }

 private:
  /// One of the two connections.
  struct Port {
    ByteSocket& Socket;
    const char* Name;
    int K4Target::*Number;  ///< of the port
    LinkWatch Watch;
    bool Connected = false;
    bool Opened = false;  ///< and got its opening commands
    bool Told = false;    ///< what it sends is no K4's, and the log says so
    std::string Why{};    ///< what ended it, or kept it from coming about
  };

  void SendOpening();
  void SendCatOpening();
  void SendPanOpening();
  void CloseSockets();
  void BeginWatch();
  [[nodiscard]] std::string PortText(const Port& port) const;
  [[nodiscard]] LinkHealth BothPorts() const;
  void TryLostPorts();
  void PortConnected(Port& port);
  void OpenPort(Port& port);
  void PortEnded(Port& port, std::string_view why);
  void CatArrived(std::span<const std::uint8_t> bytes);
  void PanArrived(std::span<const std::uint8_t> bytes);

  K4SessionParts parts_;
  K4Connector connector_;
  K4PanAssembler assembler_;
  std::string K4RxBuffer_;
  K4Target target_;
  Port cat_;
  Port pan_;
  bool sendMinipanSub_ = false;  ///< "Z" waits for the reply that decides it
  bool timerEnabled_ = false;
  bool stopping_ = false;
  bool MonitorSelected_ = false;
  std::chrono::steady_clock::time_point lineArrived_{};
};

}  // namespace spectrino
