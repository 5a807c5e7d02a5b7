// An Icom behind the host program: its scope lines, its state and its commands as that one passes them on.
// The host's side implements it, the Icom's uses it; neither knows the other.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "rig/LinkHealth.h"
#include "rig/RigBackend.h"

namespace spectrino {

/// One line of the main scope.
struct HostScopeLine {
  bool Fixed = false;     ///< between two edges, rather than around a centre
  double CentreMHz = 0;   ///< where it is not Fixed
  double SpanMHz = 0;     ///< the whole of it
  double LowEdgeMHz = 0;  ///< where it is Fixed
  double HighEdgeMHz = 0;
  int MaxLevel = 0;  ///< amplitude byte at full scale
  int Points = 0;
  std::string LevelsHex;  ///< two hexadecimal digits a point
};

class HostIcom {
 public:
  virtual ~HostIcom() = default;
  HostIcom() = default;
  HostIcom(const HostIcom&) = delete;
  HostIcom& operator=(const HostIcom&) = delete;

  /// Begins to receive, and to look for the host where nobody has yet: one that comes later is followed too.
  virtual void Open() = 0;
  /// Switches the scope's lines off and lets go of the host. Never waits.
  virtual void Close() = 0;
  /// Live while answers or lines come; Since is that of the answers.
  [[nodiscard]] virtual LinkHealth Health() const = 0;
  /// How many times the radio began to answer since Open, the host's restarts and its own silences between:
  /// it is set up anew then.
  [[nodiscard]] virtual int Findings() const = 0;
  /// Why no line can be received here, for the user; empty while all is well.
  [[nodiscard]] virtual std::string Trouble() const = 0;
  /// What the host is to be started with, so that it passes the lines on to here; empty where it is another
  /// machine's, from which none can come.
  [[nodiscard]] virtual std::string ScopeOptions() const = 0;
  /// "IC-7300"; empty while unknown.
  [[nodiscard]] virtual std::string Model() const = 0;
  /// The CI-V address of that model, two hex digits; empty: not known, that of the set-up is taken.
  virtual void SetUsualAddress(std::string_view address) = 0;

  /// What an operator asks of the host: frequencies, and what it tells of filters and transmitter.
  [[nodiscard]] virtual RigBackend& Backend() = 0;
  /// MHz; 0 while unknown.
  [[nodiscard]] virtual double HostIcomFrequency() const = 0;
  /// It is what was asked for, and the radio has not told yet.
  [[nodiscard]] virtual bool HostIcomFrequencyIsAsked() const = 0;
  [[nodiscard]] virtual bool HostIcomTransmits() const = 0;
  /// The mode byte, two hex digits; empty while unknown.
  [[nodiscard]] virtual std::string HostIcomMode() const = 0;

  /// The lines on or off. The newest request holds.
  virtual void SwitchScope(bool on) = 0;
  /// Command, sub-command and data in hexadecimal; leaves in order.
  virtual void SendCommand(std::string_view hex) = 0;
  /// The same without data: Replied follows where the host can tell. One that waits already is not asked
  /// twice.
  virtual void Ask(std::string_view hex) = 0;

  std::function<void(const HostScopeLine& line)> LineCame;
  /// Command, sub-command and data, as the radio would reply.
  std::function<void(std::string_view hex)> Replied;
};

}  // namespace spectrino
