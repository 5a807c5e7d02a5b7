// One program that is connected: its socket, its side of the protocol, its name.
// Knows of no other client.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "catserver/RigctldFace.h"
#include "platform/ServerSocket.h"

namespace spectrino {

/// Where a connection comes from.
struct CatPeer {
  std::string Address;
  std::uint16_t Port = 0;
};

/// The name that an operator knows a process by: "WSJT-X" of "wsjtx"; most are called by it.
[[nodiscard]] std::string ProgramName(const std::string& process);

class CatClient {
 public:
  /// A program that does not read what it asked for is let go of beyond this.
  static constexpr std::size_t kMostUnsent = 64 * 1024;

  struct Ways {
    std::function<void(const CatClient& client, const CatWish& wish, CatResult result)> Told;
    /// It is to be destroyed; nothing of it is touched after this call.
    std::function<void(const CatClient& client)> Ended;
  };

  /// radio outlives it.
  CatClient(Visitor visitor, CatServerState& radio, Ways ways);
  /// The radio receives again where this program made it transmit.
  ~CatClient();
  CatClient(const CatClient&) = delete;
  CatClient& operator=(const CatClient&) = delete;

  /// May end it.
  void Tick();
  [[nodiscard]] bool Busy() const { return face_.Busy(); }
  [[nodiscard]] const CatPeer& Peer() const { return peer_; }
  /// What it did before its name was known is told again.
  void SetName(const std::string& name);
  /// Its name, or its port while that is not known.
  [[nodiscard]] std::string Name() const;
  void StopTransmitting();

 private:
  void Send(std::string_view bytes);
  void Noted(const CatWish& wish, CatResult result);
  void EndUnless(bool stays);

  std::unique_ptr<ByteSocket> socket_;
  CatPeer peer_;
  CatServerState& radio_;
  Ways ways_;
  RigctldFace face_;
  std::string name_;
  std::optional<std::pair<CatWish, CatResult>> nameless_;  ///< what was told of it last without its name
  bool overrun_ = false;
  bool transmits_ = false;  ///< it made the radio transmit
};

}  // namespace spectrino
