// Reads the radio through a rigctld again and again and keeps what it tells: what is read, how often, and how
// long a slow radio is left in peace. Sets nothing.
#pragma once

#include <array>
#include <bitset>
#include <chrono>
#include <cstddef>
#include <cstdint>

#include "host/HostState.h"
#include "host/RigctldClient.h"
#include "platform/Clock.h"

namespace spectrino {

/// What a run needs of the radio.
enum class HostReads {
  MainOnly,    ///< frequency and mode: all that a fixed oscillator takes
  Everything,  ///< VFO B, split, levels and functions as well, as far as the radio has them
  Beside  ///< the main VFO ten times a second, what else a single receiver has seldom: each answer of the
          ///< radio costs its scope a line, and some servers send lines only while they are asked something
};

class HostPoll {
 public:
  /// From the end of an answer to the next read: at least this, and as long as the answer took, but at most
  /// kMostPause. A radio that does not answer its server is asked every kSilentPause.
  static constexpr std::chrono::milliseconds kLeastPause{20};
  static constexpr std::chrono::milliseconds kMostPause{1000};
  static constexpr std::chrono::milliseconds kBesidePause{100};
  static constexpr int kBesideSlower = 3;
  static constexpr std::chrono::milliseconds kSilentPause{500};

  /// All outlive it.
  HostPoll(RigctldClient& client, HostState& state, const Clock& clock)
      : client_(client), state_(state), clock_(clock) {}

  /// A connection was made: nothing that was told before counts, and what the server tells of its radio
  /// ("dump_caps") decides what is asked.
  void Begin(HostReads reads, const RigctldReply& caps);
  /// Sends the next read when its time has come.
  void Tick();
  /// This VFO's frequency was set: it is read next.
  void ReadSoon(Vfo vfo);
  /// The filter was shifted: its place is read next.
  void ReadShiftSoon();
  /// Something was said to the radio past the server: what it replies is not to be taken for an answer.
  void Rest(std::chrono::milliseconds time);
  /// How many reads were sent: what a later one tells is newer than anything before it.
  [[nodiscard]] std::uint64_t ReadsSent() const { return readsSent_; }

 private:
  static constexpr std::size_t kItems = 8;

  [[nodiscard]] std::size_t NextItem() const;
  void Send(std::size_t item);
  void Answered(std::size_t item, std::uint64_t read, const RigctldReply* reply);

  RigctldClient& client_;
  HostState& state_;
  const Clock& clock_;
  std::bitset<kItems> asked_;  ///< what this radio has
  std::bitset<kItems> soon_;
  std::array<LinkHealth::Time, kItems> sentAt_{};
  LinkHealth::Time next_{};
  LinkHealth::Time rested_{};  ///< no read before
  HostReads reads_ = HostReads::Everything;
  std::size_t last_ = 0;
  std::uint64_t readsSent_ = 0;
};

}  // namespace spectrino
