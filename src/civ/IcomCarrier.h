// What carries a run's session with an Icom: its own serial line, or the host program.
// Lines and replies end in the state; what carries them shows nowhere else.
#pragma once

#include <chrono>

#include "civ/CivSender.h"
#include "rig/LinkHealth.h"

namespace spectrino {

class IcomCarrier {
 public:
  virtual ~IcomCarrier() = default;
  IcomCarrier() = default;
  IcomCarrier(const IcomCarrier&) = delete;
  IcomCarrier& operator=(const IcomCarrier&) = delete;

  /// Lets events flow while it waits for the radio. False only where the set-up is wrong; the user has been
  /// told then. What cannot be reached is lost, and is tried again like what was pulled out.
  [[nodiscard]] virtual bool Open() = 0;
  /// Switches the scope's data off and closes; nothing is tried any more. Never waits.
  virtual void Close() = 0;
  /// Between Close and the last byte.
  [[nodiscard]] virtual bool Closing() const = 0;
  /// Lets events flow until it is no longer Closing, a third of a second at most.
  virtual void FinishClosing() = 0;
  /// Sends what is due and mends what is broken: a lost link, a silent radio, a scope that was switched off.
  /// To be called every few milliseconds, while Closing() too. Never waits.
  virtual void Pump() = 0;

  [[nodiscard]] virtual CivSender& Sender() = 0;
  [[nodiscard]] virtual LinkHealth Health() const = 0;
  /// Whether it is worth while to ask the radio for more than what it is.
  [[nodiscard]] virtual bool Answers() const = 0;
  /// Whether lines should come: not where nobody can look at them, nor while the scan's dialog has the bus.
  /// A radio that transmits may send none, by its own menu.
  [[nodiscard]] virtual bool LinesDue() const = 0;
  /// Counts up each time that the radio was set up: what it was asked for before is to be asked again.
  [[nodiscard]] virtual int SetUps() const = 0;
  /// When the last byte of the newest scope line came.
  [[nodiscard]] virtual std::chrono::steady_clock::time_point LineArrived() const = 0;

  /// As RadioLink has them.
  virtual void BeforeLayout() = 0;
  virtual void AfterLayout(bool hidden) = 0;
};

}  // namespace spectrino
