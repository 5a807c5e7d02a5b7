// A simulated Icom behind a pseudo-terminal, where a program would find the radio's USB port.
// No thread and no event loop of its own: whoever owns it calls Process every few milliseconds.
#pragma once

#include <chrono>
#include <string>

#include "sim/icom/IcomRadio.h"

namespace spectrino {

class IcomSimPort {
 public:
  /// linkPath: a symbolic link to the terminal, made on Open and removed at the end where
  /// it still leads here; empty: no link.
  IcomSimPort(const IcomSimSetup& setup, std::string linkPath, SimTime start);
  ~IcomSimPort();
  IcomSimPort(const IcomSimPort&) = delete;
  IcomSimPort& operator=(const IcomSimPort&) = delete;

  /// Makes the terminal; again after Unplug. False with the reason when it cannot. A link in the way is
  /// replaced, any other file is not.
  [[nodiscard]] bool Open(std::string& reason);
  /// The cable is pulled: the client's port fails, the link is gone. The radio goes on.
  void Unplug();

  /// Moves bytes both ways; never blocks. What a client does not read is lost, as on a serial line.
  void Process(SimTime now);

  /// The terminal to open, or empty while unplugged.
  [[nodiscard]] const std::string& TerminalPath() const { return terminal_; }
  /// Readable when a client wrote; -1 while unplugged. A poll on it returns at once while no client has the
  /// terminal open, so it only shortens a wait, it does not replace the timer.
  [[nodiscard]] int Fd() const { return fd_; }
  [[nodiscard]] IcomRadio& Radio() { return radio_; }

 private:
  [[nodiscard]] bool MakeLink(std::string& reason);
  [[nodiscard]] bool LinkIsOurs() const;
  [[nodiscard]] bool ReadAll(SimTime now);
  void DropUnread() const;

  IcomRadio radio_;
  std::string link_;
  std::string terminal_;
  int fd_ = -1;
  bool hadClient_ = false;
  bool linked_ = false;
};

}  // namespace spectrino
