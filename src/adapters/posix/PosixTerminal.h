// PseudoTerminal by posix_openpt, in raw mode, with a symbolic link that is the same each time.
// Whoever owns it waits on Fd() and calls Process.
#pragma once

#include <array>
#include <string>

#include "adapters/posix/FileSystem.h"
#include "platform/PseudoTerminal.h"

namespace spectrino {

class PosixTerminal final : public PseudoTerminal {
 public:
  /// link: where the terminal is found, beside a file of the same name with ".lock" that tells whether the
  /// program that made it still lives; empty: the system's own name is all there is.
  explicit PosixTerminal(std::string link) : link_(std::move(link)) {}
  ~PosixTerminal() override;

  /// A link of a program that still runs stays as it is, and so does anything that is no link: the terminal
  /// is then found by the system's own name. LinkTrouble says which.
  [[nodiscard]] std::string Open() override;
  void Close() override;
  [[nodiscard]] bool IsOpen() const override { return master_.Open(); }
  [[nodiscard]] std::string Path() const override { return linked_ ? link_ : name_; }
  void Write(std::string_view bytes) override;

  [[nodiscard]] const std::string& LinkTrouble() const { return linkTrouble_; }
  /// Readable when Process has something to do; -1 while closed.
  [[nodiscard]] std::array<int, 2> Fds() const { return {master_.Get(), watch_.Get()}; }
  /// Takes up what was written, and who came and went; never blocks. To be called when one of Fds is
  /// readable.
  void Process();

 private:
  [[nodiscard]] std::string MakeTerminal();
  void MakeLink();
  [[nodiscard]] bool LinkIsOurs() const;
  void ReadAll();
  void CountVisitors();
  void MakeRaw() const;

  std::string link_, name_, linkTrouble_;
  posix::Descriptor master_;
  posix::Descriptor client_;  ///< held open: a terminal that nobody holds forgets its settings
  posix::Descriptor watch_;   ///< tells of programs that open and close it
  posix::Descriptor lock_;
  int visitors_ = 0;
  bool linked_ = false;
};

}  // namespace spectrino
