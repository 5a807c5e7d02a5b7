// Cuts what a rigctld sends into answers. Knows how an answer ends, not what any command means.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace spectrino {

/// One answer of the extended form:
///
///   get_vfo_info: VFOA | LF | Freq: 14074000 | LF | Mode: USB | LF | ... | RPRT 0 | LF
///
/// A refused command may bring its RPRT alone.
struct RigctldReply {
  std::string Command;             ///< the long name it begins with; empty: there was none
  std::vector<std::string> Lines;  ///< between the name and the end, as they came
  int Code = 0;                    ///< of "RPRT": 0 done, below 0 why not

  /// What stands behind "label:" in the first line that begins so, without outer blanks.
  [[nodiscard]] std::optional<std::string_view> Value(std::string_view label) const;
};

/// What the codes of RPRT mean to a link.
namespace rprt {
inline constexpr int kDone = 0;
inline constexpr int kInvalid = -1;
inline constexpr int kNotImplemented = -4;
inline constexpr int kTimeOut = -5;
inline constexpr int kInputOutput = -6;
inline constexpr int kProtocol = -8;
inline constexpr int kRejected = -9;
inline constexpr int kNotAvailable = -11;

/// The server is there, its radio is not.
[[nodiscard]] constexpr bool RadioIsSilent(int code) {
  return code == kTimeOut || code == kInputOutput || code == kProtocol;
}
/// The radio said something to it.
[[nodiscard]] constexpr bool RadioAnswered(int code) {
  return code == kDone || code == kRejected;
}
/// This radio will never do it.
[[nodiscard]] constexpr bool NeverWorks(int code) {
  return code == kInvalid || code == kNotImplemented || code == kNotAvailable;
}
}  // namespace rprt

class RigctldReader {
 public:
  /// No answer is as long: a connection that brings more without an end is not a rigctld's.
  static constexpr std::size_t kMostBytes = 64 * 1024;

  /// Called for each answer. May call Reset; what was fed and not yet read is gone then.
  explicit RigctldReader(std::function<void(const RigctldReply&)> answered)
      : answered_(std::move(answered)) {}

  /// In whatever pieces. False when more than kMostBytes came without the end of an answer; all of it is
  /// forgotten then.
  [[nodiscard]] bool Feed(std::span<const std::uint8_t> bytes);
  void Reset();

 private:
  void TakeLine(std::string_view line);
  void Finish(int code);

  std::function<void(const RigctldReply&)> answered_;
  std::string line_;
  RigctldReply reply_;
  std::size_t bytes_ = 0;  ///< since the last answer
  unsigned resets_ = 0;
};

}  // namespace spectrino
