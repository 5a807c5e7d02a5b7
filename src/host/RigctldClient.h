// One connection to a rigctld: requests out, each with its answer or the news that there will be none.
// Knows how a connection is opened, kept and opened again; not what is asked, nor when.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "host/RigctldReader.h"
#include "platform/ByteSocket.h"
#include "platform/Clock.h"
#include "rig/LinkWatch.h"
#include "rig/RigBackend.h"

namespace spectrino {

struct RigctldEndpoint {
  std::string Host = "127.0.0.1";
  std::uint16_t Port = 4532;

  bool operator==(const RigctldEndpoint&) const = default;
  [[nodiscard]] std::string Text() const { return Host + ":" + std::to_string(Port); }
  /// By a name or address that only this machine has.
  [[nodiscard]] bool IsThisMachine() const;
};

/// "host:port" with a port of 1..65535, "[::1]:4532" too; nothing for any other text, a folder for one.
[[nodiscard]] std::optional<RigctldEndpoint> ParseEndpoint(std::string_view text);

struct RigctldRequest {
  std::string_view Command;  ///< the long name, of static storage: "set_freq"
  std::string Arguments;     ///< all of them: a command without swallows the next one
  std::optional<Vfo> Of;     ///< stands before the arguments where the server takes it there
  /// Null: there will be no answer. May ask again.
  std::function<void(const RigctldReply*)> Done;
  /// Where not empty: takes the place of an unsent request of the same slot.
  std::string_view Slot;
  /// Where the server itself may wait longer for the radio than the connection's patience.
  std::chrono::milliseconds LeastDeadline{};
  bool LeavesAnyway = false;  ///< where it is still unsent when the connection is closed
};

/// At most one read and one command are on their way: answers come in the order of the requests, so a click
/// need not wait for a slow read, and a slow radio is not flooded. A request that is not answered within the
/// patience costs the connection: its answer may still come, and is not to be taken for another one's.
class RigctldClient {
 public:
  /// Takes over the events of the socket. Both outlive it.
  RigctldClient(ByteSocket& socket, const Clock& clock);
  ~RigctldClient();
  RigctldClient(const RigctldClient&) = delete;
  RigctldClient& operator=(const RigctldClient&) = delete;

  static constexpr std::chrono::milliseconds kPatience{2000};

  /// reconnect: a lost connection is opened again, after 1, 2, 4, 8, then every 15 s. patience: for the
  /// answer to any request.
  void Open(const RigctldEndpoint& endpoint, bool reconnect, std::chrono::milliseconds patience = kPatience);
  /// Requests that LeavesAnyway still leave, without being waited for. What was not answered never will be;
  /// nobody is told.
  void Close();
  /// Deadlines and new attempts: to be called every few milliseconds while open.
  void Tick();

  /// A command; before Ready it waits, without a connection it is dropped.
  void Set(RigctldRequest request);
  /// A read. One at a time: only while ReadsIdle.
  void Read(RigctldRequest request);
  [[nodiscard]] bool ReadsIdle() const { return ready_ && !readOut_; }

  /// A last command before Close: leaves at once behind what LeavesAnyway, its answer is not waited for.
  void SayGoodbye(const RigctldRequest& request);

  /// Called each time that a server was found, with what it tells of its radio.
  std::function<void(const RigctldReply& caps)> Ready;

  [[nodiscard]] bool IsReady() const { return ready_; }
  /// Whether a VFO can be addressed by name.
  [[nodiscard]] bool TakesVfo() const { return takesVfo_; }
  /// Accepted by something; whether that is a rigctld shows with its first answer.
  [[nodiscard]] bool IsConnected() const { return connected_; }
  [[nodiscard]] bool IsLost() const { return watch_.IsLost(); }
  /// Silent: the server is there and its radio does not answer. Lost: the server is gone.
  [[nodiscard]] LinkHealth Health() const;

 private:
  struct Outstanding {
    RigctldRequest Request;
    bool IsRead = false;
  };

  void Connect();
  void Arrived(std::span<const std::uint8_t> bytes);
  void Answered(const RigctldReply& reply);
  void SendOpening();
  void Send(RigctldRequest request, bool isRead);
  void SendNextSet();
  /// What leaves anyway of what is unsent; nothing is unsent any more.
  [[nodiscard]] std::string TakeLastWords();
  void Ended(std::string_view why);
  /// serverThere: it only does not answer.
  void Fail(std::string why, bool serverThere);
  void DropRequests();

  ByteSocket& socket_;
  const Clock& clock_;
  LinkWatch watch_;
  RigctldReader reader_;
  RigctldEndpoint endpoint_;
  std::chrono::milliseconds patience_ = kPatience;
  std::deque<Outstanding> out_;        ///< sent, in order; the first one's deadline runs
  std::deque<RigctldRequest> unsent_;  ///< commands
  std::string silentWhy_;              ///< the server is there, the radio is not
  LinkHealth::Time since_{};           ///< of the first one outstanding; of the connection before
  LinkHealth::Time connectedAt_{};
  LinkHealth::Time heardAt_{};  ///< the radio, on any connection since Open
  bool open_ = false, connected_ = false, ready_ = false, takesVfo_ = false;
  bool readOut_ = false, setOut_ = false;
  bool heard_ = false;  ///< the radio, on this connection
};

}  // namespace spectrino
