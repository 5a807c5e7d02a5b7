// One reply of the radio, and its fields by position.
// Not what it means: that is in the tables of rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace spectrino {

/// What a field of a reply may hold, both ends included. A number beyond them is none: the stream was cut or
/// disturbed, and what was known before holds.
struct CatRange {
  std::int64_t Low = 0;
  std::int64_t High = 0;
};
inline constexpr CatRange kDigitRange{0, 9};
inline constexpr CatRange kSwitchRange{0, 1};
inline constexpr CatRange kHertzRange{1, 50'000'000'000};  // with a transverter's offset

/// One reply without its ";".
class CatReply {
 public:
  explicit CatReply(std::string_view text) : Text(text) {}

  /// The sub receiver's.
  [[nodiscard]] bool Sub() const { return Text.size() > 2 && Text[2] == '$'; }
  /// Characters from a position counted from 1 on; fewer, or none, where the reply ends before.
  [[nodiscard]] std::string_view From(std::size_t position,
                                      std::size_t length = std::string_view::npos) const {
    return position <= Text.size() ? Text.substr(position - 1, length) : std::string_view{};
  }
  /// The number there; nothing when the reply ends before, or when it is not plausible.
  [[nodiscard]] std::optional<double> Number(std::size_t position, std::size_t length, CatRange range) const;
  /// The same, rounded to even. range: within 32 bits.
  [[nodiscard]] std::optional<int> Int(std::size_t position, std::size_t length, CatRange range) const;

  std::string_view Text;
};

}  // namespace spectrino
