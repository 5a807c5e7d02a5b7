#include "settings/IniDocument.h"

#include <algorithm>
#include <cassert>

#include "settings/Utf8.h"
#include "state/Val.h"

namespace spectrino {
namespace {

constexpr std::string_view kBom = "\xEF\xBB\xBF";

std::string Fold(std::string_view name) {
  std::string folded(name);
  std::ranges::transform(folded, folded.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
  });
  return folded;
}

std::string Escape(std::string_view value) {
  std::string text;
  for (const char c : value) {
    if (c == '\n')
      text += "\\n";
    else if (c == '\r')
      text += "\\r";
    else if (c == '\\')
      text += "\\\\";
    else
      text += c;
  }
  return text;
}

std::string Unescape(std::string_view text) {
  std::string value;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char next = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
    if (next == 'n' || next == 'r' || next == '\\') {
      value += next == 'n' ? '\n' : next == 'r' ? '\r' : '\\';
      ++i;
    } else {
      value += text[i];
    }
  }
  return value;
}

}  // namespace

std::optional<IniDocument> IniDocument::Parse(std::string_view text, std::string& why) {
  if (text.size() > kMostBytes) {
    why = "it is larger than any settings file";
    return std::nullopt;
  }
  if (text.find('\0') != std::string_view::npos) {
    why = "it contains binary data";
    return std::nullopt;
  }
  if (ValidUtf8Length(text) != text.size()) {
    why = "it is not UTF-8 text";
    return std::nullopt;
  }
  IniDocument document;
  if (text.starts_with(kBom)) {
    document.bom_ = kBom;
    text.remove_prefix(kBom.size());
  }
  if (const auto first = text.find('\n');
      first != std::string_view::npos && first > 0 && text[first - 1] == '\r')
    document.lineEnd_ = "\r\n";
  while (!text.empty()) {
    const auto newline = text.find('\n');
    std::string_view line = text.substr(0, newline);
    text.remove_prefix(newline == std::string_view::npos ? text.size() : newline + 1);
    const char* end = newline == std::string_view::npos ? "" : "\n";
    if (*end != '\0' && line.ends_with('\r')) {
      line.remove_suffix(1);
      end = "\r\n";
    }
    document.AddLine(line, end);
  }
  return document;
}

void IniDocument::AddLine(std::string_view text, const char* end) {
  std::size_t equal = std::string::npos;
  const std::string_view trimmed = Trim(text);
  const bool comment = trimmed.starts_with(';') || trimmed.starts_with('#');
  if (trimmed.starts_with('[') && trimmed.ends_with(']'))
    current_ = Fold(Trim(trimmed.substr(1, trimmed.size() - 2)));
  else if (!comment)
    equal = text.find('=');
  lines_.push_back({std::string(text), end, equal});
  Section& section = sections_[current_];
  if (!trimmed.empty()) section.after = lines_.size();
  if (equal != std::string::npos) section.keys[Fold(Trim(text.substr(0, equal)))] = lines_.size() - 1;
}

std::optional<std::string> IniDocument::Find(std::string_view section, std::string_view key) const {
  const auto in = sections_.find(Fold(section));
  if (in == sections_.end()) return std::nullopt;
  const auto at = in->second.keys.find(Fold(key));
  if (at == in->second.keys.end()) return std::nullopt;
  const Line& line = lines_[at->second];
  return Unescape(std::string_view(line.text).substr(line.equal + 1));
}

bool IniDocument::HasSectionsOf(const IniDocument& other) const {
  return std::ranges::all_of(other.sections_, [this](const auto& entry) {
    return entry.second.keys.empty() || sections_.contains(entry.first);
  });
}

void IniDocument::Set(std::string_view section, std::string_view key, std::string_view value) {
  assert(key.find_first_of("=\r\n") == std::string_view::npos && !key.empty());
  assert(std::string_view("[;#").find(key.front()) == std::string_view::npos);
  assert(StorableText(value) == value);
  const auto in = sections_.find(Fold(section));
  Section& target = in != sections_.end() ? in->second : AppendSection(section);
  if (const auto at = target.keys.find(Fold(key)); at != target.keys.end()) {
    Line& line = lines_[at->second];
    line.text.replace(line.equal + 1, std::string::npos, Escape(value));
    return;
  }
  InsertLine(target.after, std::string(key) + "=" + Escape(value), target);
  target.keys[Fold(key)] = target.after - 1;
  lines_[target.after - 1].equal = key.size();
}

IniDocument::Section& IniDocument::AppendSection(std::string_view name) {
  Section& section = sections_[Fold(name)];
  if (name.empty()) return section;  // keys without a section stand before the first one
  section.after = lines_.size();
  if (!lines_.empty() && !Trim(lines_.back().text).empty()) InsertLine(section.after, "", section);
  InsertLine(section.after, std::string("[").append(name).append("]"), section);
  return section;
}

void IniDocument::InsertLine(std::size_t at, std::string text, Section& section) {
  for (auto& [name, other] : sections_) {
    if (other.after > at) ++other.after;
    for (auto& [key, line] : other.keys)
      if (line >= at) ++line;
  }
  if (at == lines_.size() && at > 0 && *lines_[at - 1].end == '\0') lines_[at - 1].end = lineEnd_;
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at),
                {std::move(text), lineEnd_, std::string::npos});
  section.after = at + 1;
}

std::string IniDocument::Text() const {
  std::string text = bom_;
  for (const Line& line : lines_) {
    text += line.text;
    text += line.end;
  }
  return text;
}

std::string IniDocument::StorableText(std::string_view value) {
  std::string text;
  while (!value.empty()) {
    const std::size_t good = std::min(ValidUtf8Length(value), value.find('\0'));
    text += value.substr(0, good);
    value.remove_prefix(good);
    if (value.empty()) break;
    text += "\xEF\xBF\xBD";
    value.remove_prefix(1);
  }
  return text;
}

}  // namespace spectrino
