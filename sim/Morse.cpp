#include "sim/Morse.h"

#include <array>

namespace spectrino {

namespace {

// ITU-R M.1677-1.
constexpr std::array<std::string_view, 26> kLetters{
    ".-", "-...", "-.-.", "-..",  ".",   "..-.", "--.", "....", "..",   ".---", "-.-",  ".-..", "--",
    "-.", "---",  ".--.", "--.-", ".-.", "...",  "-",   "..-",  "...-", ".--",  "-..-", "-.--", "--.."};
constexpr std::array<std::string_view, 10> kDigits{"-----", ".----", "..---", "...--", "....-",
                                                   ".....", "-....", "--...", "---..", "----."};

std::string_view CodeOf(char c) {
  if (c >= 'a' && c <= 'z') return kLetters[static_cast<std::size_t>(c - 'a')];
  if (c >= 'A' && c <= 'Z') return kLetters[static_cast<std::size_t>(c - 'A')];
  if (c >= '0' && c <= '9') return kDigits[static_cast<std::size_t>(c - '0')];
  switch (c) {
    case '?':
      return "..--..";
    case '/':
      return "-..-.";
    case '=':
      return "-...-";
    case '+':
      return ".-.-.";
    default:
      return {};
  }
}

}  // namespace

std::vector<MorseMark> MorseMarks(std::string_view text) {
  std::vector<MorseMark> marks;
  int now = 0;
  for (const char c : text) {
    if (c == ' ') {
      now += 4;  // with the letter's own 3 makes 7
      continue;
    }
    const std::string_view code = CodeOf(c);
    for (const char element : code) {
      const int length = element == '-' ? 3 : 1;
      marks.push_back({now, now + length});
      now += length + 1;
    }
    if (!code.empty()) now += 2;
  }
  return marks;
}

}  // namespace spectrino
