// A serial port that other programs open, with this program in the place of the radio.
// Bytes out, bytes in; no protocol, and no event loop of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace spectrino {

class PseudoTerminal {
 public:
  virtual ~PseudoTerminal() = default;
  PseudoTerminal() = default;
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  /// Makes a new one, closing what is open. Empty when it is there now, otherwise why not, in the user's
  /// terms, without a full stop.
  [[nodiscard]] virtual std::string Open() = 0;
  virtual void Close() = 0;
  [[nodiscard]] virtual bool IsOpen() const = 0;
  /// What other programs open; empty while closed.
  [[nodiscard]] virtual std::string Path() const = 0;
  /// Never blocks: what nobody reads is lost, as on a serial line.
  virtual void Write(std::string_view bytes) = 0;

  /// Holds until the call returns. May close the terminal.
  std::function<void(std::span<const std::uint8_t> bytes)> DataArrival;
  /// The last program that had it open is gone.
  std::function<void()> Left;
};

}  // namespace spectrino
