// The host program's radio: every operation that is asked of it, on what was read last.
// Nothing here waits: reads tell what is known, writes are on their way when they return.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "host/HostBands.h"
#include "host/HostPoll.h"
#include "host/HostState.h"
#include "host/RigctldClient.h"
#include "platform/ByteSocket.h"
#include "platform/Clock.h"
#include "platform/Notifier.h"
#include "settings/SettingsStore.h"

namespace spectrino {

/// What the text of a command is.
enum class HostCommandKind {
  CivHex,  ///< command, sub-command and data of an Icom, in hexadecimal: the frame is made around it
  Text     ///< as the radio takes it
};

class HostRadio {
 public:
  /// All outlive it; the socket comes not connected.
  HostRadio(ByteSocket& socket, SettingsStore& store, Notifier& user, const Clock& clock);

  /// OpenHostLink without waiting: begins to connect. Whether the host is found shows in Client().
  void Open(const RigctldEndpoint& endpoint, HostReads reads);
  /// CloseHostLink.
  void Close();
  /// To be called every few milliseconds while open.
  void Tick();
  /// Between a successful search and Close. Until then every read is 0 and every write is nothing.
  void SetHostFound(bool found) { hostFound_ = found; }
  [[nodiscard]] bool HostFound() const { return hostFound_; }
  [[nodiscard]] const RigctldClient& Client() const { return client_; }
  [[nodiscard]] const HostState& State() const { return state_; }

  /// MHz; 0 while unknown. What was asked for is told as if it were so until a later read tells, the radio
  /// refuses, or the connection is lost.
  [[nodiscard]] double HostGetFrequency(Vfo vfo) const;
  /// Whether HostGetFrequency is what was asked for.
  [[nodiscard]] bool FrequencyIsAsked(Vfo vfo) const {
    return Stands(wantedFreq_[vfo == Vfo::A ? 0 : 1], vfo);
  }
  /// When a frequency was asked for last.
  [[nodiscard]] LinkHealth::Time FrequencyAskedAt() const { return frequencyAsked_; }
  /// The host's code; hostmode::kUnknown while unknown.
  [[nodiscard]] int HostGetMode(Vfo vfo) const;
  [[nodiscard]] int HostGetSplit() const { return hostFound_ ? state_.Split : 0; }
  [[nodiscard]] int HostGetSubRx() const { return hostFound_ ? state_.SubRx : 0; }
  /// Band button 0..13 of the frequency of VFO A; 0 while unknown.
  [[nodiscard]] int HostGetBand() const;

  /// Keeps where the radio is, then goes to where it was on that band last. band: 0..13; the band that it is
  /// on already is nothing.
  void HostSetBand(int band);
  /// MHz, above 0.
  void HostSetFrequency(double freqMHz, Vfo vfo);
  void HostSetMode(int hostMode) { HostSetMode(hostMode, state_.DataFamily); }
  /// dataFamily: data rather than radio teletype is meant by FSK.
  void HostSetMode(int hostMode, bool dataFamily);
  void HostSetSplit(bool on);
  void HostTransmit(bool on);
  /// The filter's width in the mode that the VFO is in; a radio takes the nearest that it has. Nothing while
  /// another mode is on its way.
  void HostSetWidth(double widthHz, Vfo vfo);
  [[nodiscard]] bool SetsWidth(Vfo vfo) const;
  /// Of VFO A's filter from its usual place, Hz.
  void HostSetIfShift(double shiftHz);
  /// "FA" or "FB" with 11 digits sets a frequency, whatever the radio; other text is for the radio itself.
  void HostSendCommand(HostCommandKind kind, std::string_view text);
  /// The CI-V address of the model that the host tells, two hex digits; empty where it is not known, and that
  /// of the settings is taken. Holds until the host tells another model.
  void SetUsualAddress(std::string_view address) { usualAddress_ = address; }
  /// A function of the radio by Hamlib's name. slot: as RigctldRequest's.
  void SetFunction(std::string_view name, bool on, std::string_view slot);
  /// Whether a read may leave: none is under way, and the radio owes nothing to a command of its own kind.
  [[nodiscard]] bool MayRead() const;
  /// A read of one value of VFO A; only while MayRead. done: as RigctldRequest's.
  void Read(std::string_view command, std::string_view argument,
            std::function<void(const RigctldReply*)> done);
  /// A command whose answer nobody waits for: leaves at once, whatever is under way.
  void SayGoodbye(std::string_view command, std::string_view arguments);
  /// Keeps where the radio is now, for the next time that its band is chosen.
  void RememberBand();

 private:
  /// A frequency or mode that was asked for and not yet told by the radio.
  struct Wanted {
    double FreqHz = 0;
    int Mode = hostmode::kUnknown;
    std::uint64_t Number = 0;
    std::optional<std::uint64_t> TakenAfter;  ///< the reads sent when the radio took it
  };

  void Found(const RigctldReply& caps);
  [[nodiscard]] bool Stands(const std::optional<Wanted>& wanted, Vfo vfo) const;
  [[nodiscard]] std::function<void(const RigctldReply*)> Settling(std::optional<Wanted>& wanted, Vfo vfo,
                                                                  std::string what);
  [[nodiscard]] std::optional<Wanted>& WantedFreq(Vfo vfo) { return wantedFreq_[vfo == Vfo::A ? 0 : 1]; }
  void SendCiv(std::string_view hex);
  void SendRaw(std::string_view command, std::string arguments);

  SettingsStore& store_;
  Notifier& user_;
  const Clock& clock_;
  RigctldClient client_;
  HostState state_;
  HostPoll poll_;
  HostBands bands_;
  HostReads reads_ = HostReads::Everything;
  bool hostFound_ = false;
  std::string usualAddress_;
  int rawOut_ = 0;  ///< commands for the radio itself, not answered yet
  LinkHealth::Time rawEnd_{};
  LinkHealth::Time frequencyAsked_{};
  std::uint64_t wantedCount_ = 0;
  std::array<std::optional<Wanted>, 2> wantedFreq_;
  std::optional<Wanted> wantedMode_;
};

}  // namespace spectrino
