// CI-V frames out to a serial port and in from it.
// Builds, queues and cuts frames; what replies mean is the parser's, what is sent and when its callers'.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "civ/CivRxBuffer.h"
#include "civ/CivSender.h"
#include "civ/CivState.h"
#include "civ/IcomPanelView.h"
#include "platform/Clock.h"
#include "platform/Notifier.h"
#include "platform/SerialPort.h"

namespace spectrino {

class CivLink final : public CivSender {
 public:
  /// The distance between two writes: radios lose frames that follow each other more closely.
  static constexpr std::chrono::milliseconds kWritePace{10};

  /// Takes the port's callbacks for itself until it ends.
  CivLink(SerialPort& port, CivState& state, IcomPanelView& panel, const Clock& clock, Notifier& notifier);
  ~CivLink() override;
  CivLink(const CivLink&) = delete;
  CivLink& operator=(const CivLink&) = delete;

  /// Empty when the port is open now, otherwise the reason. Forgets what an earlier session left. Not while
  /// Closing(): what an earlier session still has to say would be lost.
  [[nodiscard]] std::string Open(const std::string& path);
  /// Returns at once. The newest of what has not left yet leaves at its pace with the next Pumps, reads
  /// excepted: nobody would hear the answers. Then the port closes, a tenth of a second later at most.
  void Close();
  [[nodiscard]] bool IsOpen() const { return port_.IsOpen() && !closing_; }
  /// Between Close and the last byte: Pump has to be called, with events flowing.
  [[nodiscard]] bool Closing() const { return closing_ || port_.Closing(); }

  /// A frame that may leave does so before SendCiv returns; the others wait for Pump. A read request that
  /// still waits moves behind the newer one.
  void SendCiv(std::string_view command, std::string_view subCommand, std::string_view data) override;
  void SendFrequency(std::string_view bcd) override;
  void ReceiveCiv() override;
  void RequestIcomStatus() override;

  /// Writes the next frame if its time has come. Never waits: call it every few milliseconds.
  void Pump();
  /// When the last byte of the newest scope line came.
  [[nodiscard]] std::chrono::steady_clock::time_point LineArrived() const { return lineArrived_; }
  /// The same of the newest division of a line, whether the line becomes whole or not.
  [[nodiscard]] std::chrono::steady_clock::time_point DivisionArrived() const { return divisionArrived_; }

  /// The radio said something, be it that it refuses: after each of its frames was parsed.
  std::function<void()> Heard;
  /// The port failed or was pulled out, and is closed.
  std::function<void(const std::string& reason)> Lost;

 private:
  enum class Kind { Command, Read, Frequency };
  struct Frame {
    Kind kind;
    std::vector<std::uint8_t> bytes;
  };

  void Queue(Kind kind, std::string_view command, std::string_view subCommand, std::string_view data);
  void TakeBytes(std::span<const std::uint8_t> bytes);
  void HandleLost(const std::string& reason);
  void FinishClosing();

  SerialPort& port_;
  CivState& state_;
  IcomPanelView& panel_;
  const Clock& clock_;
  Notifier& notifier_;
  std::deque<Frame> unsent_;
  bool closing_ = false;
  std::chrono::steady_clock::time_point nextWrite_{};
  CivRxBuffer received_;
  std::string frame_;
  std::chrono::steady_clock::time_point arrived_{};
  std::chrono::steady_clock::time_point lineArrived_{};
  std::chrono::steady_clock::time_point divisionArrived_{};
  bool overlongTold_ = false;  ///< since the port was opened
};

}  // namespace spectrino
