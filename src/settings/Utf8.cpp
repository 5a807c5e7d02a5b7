#include "settings/Utf8.h"

#include <array>

namespace spectrino {
namespace {

/// One row of the table: first bytes from..to, then `more` bytes, the first of them within low..high and the
/// rest within 80..BF.
struct Utf8Row {
  unsigned char from, to;
  unsigned char more;
  unsigned char low, high;
};
constexpr auto kRows = std::to_array<Utf8Row>({
    {0x00, 0x7F, 0, 0x00, 0x00},
    {0xC2, 0xDF, 1, 0x80, 0xBF},
    {0xE0, 0xE0, 2, 0xA0, 0xBF},
    {0xE1, 0xEC, 2, 0x80, 0xBF},
    {0xED, 0xED, 2, 0x80, 0x9F},
    {0xEE, 0xEF, 2, 0x80, 0xBF},
    {0xF0, 0xF0, 3, 0x90, 0xBF},
    {0xF1, 0xF3, 3, 0x80, 0xBF},
    {0xF4, 0xF4, 3, 0x80, 0x8F},
});

/// Length of the character at the beginning of text; 0 when there is none.
std::size_t CharacterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  for (const Utf8Row& row : kRows) {
    if (byte(0) < row.from || byte(0) > row.to) continue;
    if (text.size() <= row.more) return 0;
    if (row.more > 0 && (byte(1) < row.low || byte(1) > row.high)) return 0;
    for (std::size_t i = 2; i <= row.more; ++i)
      if (byte(i) < 0x80 || byte(i) > 0xBF) return 0;
    return row.more + 1U;
  }
  return 0;
}

}  // namespace

std::size_t ValidUtf8Length(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t length = CharacterLength(text.substr(at));
    if (length == 0) break;
    at += length;
  }
  return at;
}

}  // namespace spectrino
