// Where text stops being UTF-8.
// Converts nothing.
#pragma once

#include <cstddef>
#include <string_view>

namespace spectrino {

/// Length in bytes of the longest prefix that is well-formed UTF-8: no overlong forms, no surrogates, nothing
/// above U+10FFFF (Unicode 15, table 3-7). NUL counts as well-formed.
[[nodiscard]] std::size_t ValidUtf8Length(std::string_view text);

}  // namespace spectrino
