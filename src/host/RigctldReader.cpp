#include "host/RigctldReader.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "state/Val.h"

namespace spectrino {
namespace {

constexpr std::string_view kEnd = "RPRT ";
/// A raw command to which the radio said nothing ends on the line of its reply.
constexpr std::string_view kEmptyReply = "Reply: ";
/// Answers that come without an RPRT in Hamlib 4: the whole answer is this line.
constexpr std::string_view kVfoOption = "ChkVFO:";
constexpr std::string_view kVfoOptionCommand = "chk_vfo";

std::optional<int> EndCode(std::string_view line) {
  if (line.starts_with(kEmptyReply)) line.remove_prefix(kEmptyReply.size());
  if (!line.starts_with(kEnd)) return std::nullopt;
  const std::string_view digits = line.substr(kEnd.size());
  int code = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return code;
}

/// "get_vfo_info" of "get_vfo_info: VFOA"; empty for a line that names no command.
std::string_view CommandOf(std::string_view line) {
  const std::string_view name = line.substr(0, line.find(':'));
  const auto isNameLetter = [](char c) { return (c >= 'a' && c <= 'z') || c == '_'; };
  const bool names = name.size() < line.size() && name.size() > 3 && std::ranges::all_of(name, isNameLetter);
  return names ? name : std::string_view();
}

}  // namespace

std::optional<std::string_view> RigctldReply::Value(std::string_view label) const {
  for (const std::string_view line : Lines) {
    if (line.starts_with(label) && line.size() > label.size() && line[label.size()] == ':')
      return Trim(line.substr(label.size() + 1));
  }
  return std::nullopt;
}

bool RigctldReader::Feed(std::span<const std::uint8_t> bytes) {
  const unsigned resets = resets_;
  for (const std::uint8_t byte : bytes) {
    if (++bytes_ > kMostBytes) {
      Reset();
      return false;
    }
    if (byte != '\n') {
      line_ += static_cast<char>(byte);
      continue;
    }
    if (line_.ends_with('\r')) line_.pop_back();
    const std::string line = std::exchange(line_, {});
    TakeLine(line);
    if (resets_ != resets) return true;
  }
  return true;
}

void RigctldReader::TakeLine(std::string_view line) {
  if (const std::optional<int> code = EndCode(line)) return Finish(*code);
  if (line.starts_with(kVfoOption)) {
    reply_ = {std::string(kVfoOptionCommand), {std::string(line)}, rprt::kDone};
    return Finish(rprt::kDone);
  }
  // What stands before the name was the rest of something else.
  if (const std::string_view command = CommandOf(line); reply_.Command.empty() && !command.empty())
    reply_ = {std::string(command), {}, rprt::kDone};
  else
    reply_.Lines.emplace_back(line);
}

void RigctldReader::Finish(int code) {
  RigctldReply reply = std::exchange(reply_, {});
  reply.Code = code;
  bytes_ = 0;
  answered_(reply);
}

void RigctldReader::Reset() {
  line_.clear();
  reply_ = {};
  bytes_ = 0;
  ++resets_;
}

}  // namespace spectrino
