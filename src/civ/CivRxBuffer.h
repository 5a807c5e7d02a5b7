// The radio's bytes as hex text, cut into frames.
// Looks at preamble, from-address and end of message only; what a frame says is ParseCivFrame's.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace spectrino {

/// A frame, and the characters of its hex text:
///
///   FE FE | to  | from | command | sub-command 0..2 | data n | FD
///   1-4   | 5-6 | 7-8  | 9-10    | 11-              |        | last two
class CivRxBuffer {
 public:
  /// Text beyond this without an end of message is noise: no radio sends that.
  static constexpr std::size_t kMaxText = 64 * 1024;

  void Append(std::span<const std::uint8_t> bytes);
  /// The next frame from radioAddress (two upper-case digits), FEFE to FD. False when no complete one is
  /// left. Frames from other addresses, our own echo among them, and text without preamble are dropped up to
  /// their FD. Every character is looked at a bounded number of times, however the bytes arrive.
  bool NextFrame(std::string_view radioAddress, std::string& frame);
  /// Empties a buffer that grew beyond kMaxText without an end of message; true when it did.
  bool DropOverlong();
  void Clear();

 private:
  std::string text_;
  std::size_t start_ = 0;     // text before it is consumed
  std::size_t searched_ = 0;  // no FD begins before it
};

}  // namespace spectrino
