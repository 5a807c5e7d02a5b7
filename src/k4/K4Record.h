// The last reply of each command as it was received, cut or padded to its field's width.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace spectrino {

class K4Record {
 public:
  void Store(std::string_view field, std::string_view text);
  /// Empty when nothing was stored.
  [[nodiscard]] std::string_view Text(std::string_view field) const;

 private:
  std::map<std::string, std::string, std::less<>> fields_;
};

}  // namespace spectrino
