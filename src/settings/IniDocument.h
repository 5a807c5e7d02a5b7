// The text of one settings file as sections and keys, rewritten without disturbing what it does not know.
// Does no input or output and gives values no meaning.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace spectrino {

/// [Section], then Key=Value, one line a key. The value is everything after the first "=" up to the line's
/// end, blanks included; the escapes \n, \r and \\ stand for the three characters that a line cannot hold
/// plainly, any other backslash is itself. Lines beginning with ";" or "#" are comments. Sections and keys
/// compare without regard to case (ASCII). A key that stands twice has its last value: that is what a script
/// that appends a line expects.
class IniDocument {
 public:
  /// Larger text is no settings file.
  static constexpr std::size_t kMostBytes = std::size_t{4} << 20;

  /// Nothing when the text is no settings file: larger than kMostBytes, a NUL byte in it, or not UTF-8. why
  /// then tells which, as the end of a sentence. Any other text has a meaning, if only as unknown lines.
  [[nodiscard]] static std::optional<IniDocument> Parse(std::string_view text, std::string& why);

  [[nodiscard]] std::optional<std::string> Find(std::string_view section, std::string_view key) const;
  /// Whether every section in which other has keys is here as well.
  [[nodiscard]] bool HasSectionsOf(const IniDocument& other) const;

  /// Changes the key in place, keeping its spelling, or adds it at the end of its section.
  /// section and key hold no line end; a key begins with none of "[;#" and holds no "=". value: see
  /// StorableText.
  void Set(std::string_view section, std::string_view key, std::string_view value);

  /// The whole text. After Parse alone it is the text that was parsed, byte for byte.
  [[nodiscard]] std::string Text() const;

  /// What of a value a file can hold: NUL bytes and bytes that are not UTF-8 become U+FFFD, since one of them
  /// would make the whole file unreadable.
  [[nodiscard]] static std::string StorableText(std::string_view value);

 private:
  struct Line {
    std::string text;   ///< without its line end
    const char* end;    ///< "\n", "\r\n", or "" for a last line that has none
    std::size_t equal;  ///< where the value's "=" stands; npos on lines that are no key
  };
  struct Section {
    std::size_t after = 0;                    ///< the line after the last one that is not blank
    std::map<std::string, std::size_t> keys;  ///< folded key -> its line
  };

  void AddLine(std::string_view text, const char* end);
  void InsertLine(std::size_t at, std::string text, Section& section);
  Section& AppendSection(std::string_view name);

  std::string bom_;
  const char* lineEnd_ = "\n";
  std::vector<Line> lines_;
  std::map<std::string, Section> sections_;  ///< folded name -> what is in it
  std::string current_;                      ///< while parsing: folded name of the section being read
};

}  // namespace spectrino
