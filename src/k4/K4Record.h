// The last reply of each command as it was received, in fields of fixed width.
// Keeps texts; what they mean is the parser's.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace spectrino {

class K4Record {
 public:
  /// field: a command's mnemonic, with "$" behind it where the sub receiver has a field of its own. The text
  /// is cut or blank-padded to the field's width; a field without a width keeps it whole.
  void Store(std::string_view field, std::string_view text);
  /// Empty when nothing was stored.
  [[nodiscard]] std::string_view Text(std::string_view field) const;
  /// Replaces the character at a position counted from 1; nothing when the field has none there.
  void Replace(std::string_view field, std::size_t position, char with);

 private:
  std::map<std::string, std::string, std::less<>> fields_;
};

}  // namespace spectrino
