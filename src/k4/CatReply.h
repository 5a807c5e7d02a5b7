// One reply of the radio, and its fields by position.
// Not what it means: that is in the tables of rows.
#pragma once

#include <optional>
#include <string_view>

namespace spectrino {

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
  /// The number there; nothing when the reply ends before.
  [[nodiscard]] std::optional<double> Number(std::size_t position,
                                             std::size_t length = std::string_view::npos) const;
  /// The same, rounded to even and within 16 bits; nothing beyond them.
  [[nodiscard]] std::optional<int> Int16(std::size_t position,
                                         std::size_t length = std::string_view::npos) const;

  std::string_view Text;
};

}  // namespace spectrino
