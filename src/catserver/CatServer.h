// Lets other programs use the radio: clients of rigctld's protocol on a port, one program on a terminal.
// Opens no socket and draws nothing: both are handed in, and what there is to say is told.
#pragma once

#include <chrono>
#include <functional>
#include <list>
#include <optional>
#include <string>

#include "catserver/CatClient.h"
#include "catserver/CatServerState.h"
#include "catserver/KenwoodFace.h"
#include "platform/Clock.h"
#include "platform/PseudoTerminal.h"
#include "platform/ServerSocket.h"
#include "rig/LinkWatch.h"

namespace spectrino {

/// What is served, and where.
struct CatServerTask {
  bool Socket = false;
  std::string Address = "127.0.0.1";
  int Port = 4533;
  bool Terminal = false;

  bool operator==(const CatServerTask&) const = default;
};

class CatServer {
 public:
  /// More are let go of as they come.
  static constexpr std::size_t kMostClients = 16;

  /// All outlive it.
  struct Parts {
    ServerSocket& Listener;
    PseudoTerminal& Terminal;
    CatServerState& Radio;
    const Clock& Time;
  };
  explicit CatServer(const Parts& parts);
  ~CatServer();
  CatServer(const CatServer&) = delete;
  CatServer& operator=(const CatServer&) = delete;

  /// Serves this from now on. What goes on as it was keeps its clients.
  void Serve(const CatServerTask& task);
  /// To be called every few milliseconds while Busy, and a few times a second otherwise.
  void Tick();
  [[nodiscard]] bool Busy() const;
  [[nodiscard]] std::size_t Clients() const { return clients_.size(); }
  /// What keeps it from serving, for the user; empty while all is well.
  [[nodiscard]] const std::string& Trouble() const { return trouble_; }
  /// The run ends: the radio receives again where a program made it transmit.
  void StopTransmitting();

  /// Asks who is at the other end of a connection from this machine; the name comes later, or never.
  std::function<void(const CatPeer& peer, std::function<void(const std::string& name)> named)> AskName;
  /// "WSJT-X set 14.074.000"
  std::function<void(const std::string& text)> Told;
  /// Trouble came or went.
  std::function<void()> TroubleChanged;

 private:
  void Listen();
  void Welcome(Visitor visitor);
  void Remove(const CatClient* client);
  void OpenTerminal();
  void CloseTerminal();
  void Tell(const std::string& who, const CatWish& wish, CatResult result);
  void ShowTrouble(std::string trouble);

  Parts parts_;
  CatServerTask task_;
  LinkWatch watch_;
  KenwoodFace line_;
  std::list<CatClient> clients_;
  bool lineTransmits_ = false;
  std::string trouble_;
};

}  // namespace spectrino
