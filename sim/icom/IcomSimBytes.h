// Bytes on a simulated CI-V bus: BCD fields, and the cutting of a stream into frames.
// No meaning: what a command does is in IcomSimControl.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace spectrino {

using SimBytes = std::vector<std::uint8_t>;
using SimByteView = std::span<const std::uint8_t>;

inline constexpr std::uint8_t kCivPreamble = 0xFE;
inline constexpr std::uint8_t kCivEnd = 0xFD;
inline constexpr std::uint8_t kCivGood = 0xFB;
inline constexpr std::uint8_t kCivBad = 0xFA;

/// Number of bytes in a CI-V frequency, which counts hertz.
inline constexpr std::size_t kBcdHzBytes = 5;

/// Appends a number as packed BCD, least significant byte first: 14230000 in 5 bytes is 00 00 23 14 00.
void PutBcdLow(SimBytes& out, std::uint64_t value, std::size_t bytes = kBcdHzBytes);
/// Appends a number as packed BCD, most significant byte first: 128 in 2 bytes is 01 28.
void PutBcdHigh(SimBytes& out, std::uint64_t value, std::size_t bytes);
/// Reads either order; nothing when a digit is above 9.
[[nodiscard]] std::optional<std::uint64_t> BcdLow(SimByteView bytes);
[[nodiscard]] std::optional<std::uint64_t> BcdHigh(SimByteView bytes);

/// What stands between preamble and end of one frame: to, from, command and the rest, at least three bytes.
///
///   FE FE | to from command ... | FD
///
/// Take() hands it to sink. Bytes outside a frame are dropped; an FE FE inside one starts anew; a frame
/// longer than any radio understands is dropped up to its end.
class IcomSimSplitter {
 public:
  template <typename Sink>
  void Take(SimByteView bytes, Sink&& sink) {
    for (const std::uint8_t byte : bytes) {
      if (Complete(byte)) sink(SimByteView(frame_));
    }
  }

 private:
  [[nodiscard]] bool Complete(std::uint8_t byte);

  SimBytes frame_;
  std::size_t preambles_ = 0;  ///< FE bytes in a row
  bool inside_ = false;
};

}  // namespace spectrino
