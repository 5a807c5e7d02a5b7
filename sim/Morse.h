// Morse code as times of key down.
// Not the tone: CwSignal sends it.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace spectrino {

/// A stretch of key down in dits from the start of the text.
struct MorseMark {
  int StartDits = 0;
  int EndDits = 0;
  bool operator==(const MorseMark&) const = default;
};

/// The marks of a text: dah 3 dits, gap between elements 1, letters 3, words 7. Lower case counts as upper
/// case; characters without a code are left out.
[[nodiscard]] std::vector<MorseMark> MorseMarks(std::string_view text);

}  // namespace spectrino
