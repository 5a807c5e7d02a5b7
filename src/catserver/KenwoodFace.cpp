#include "catserver/KenwoodFace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "catserver/CatModes.h"

namespace spectrino {
namespace {

constexpr std::string_view kUnknown = "?;";
constexpr std::size_t kFrequencyDigits = 11;

bool AllDigits(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

std::string Padded(double hz) {
  std::array<char, 32> text{};
  const long long most = 99'999'999'999;
  std::snprintf(text.data(), text.size(), "%011lld", std::clamp(std::llround(hz), 0LL, most));
  return text.data();
}

bool OneOf(std::string_view value, std::string_view digits) {
  return value.size() == 1 && digits.find(value[0]) != std::string_view::npos;
}

}  // namespace

bool KenwoodFace::Feed(std::span<const std::uint8_t> bytes) {
  for (const std::uint8_t byte : bytes) {
    const char c = static_cast<char>(byte);
    if (c == '\r' || c == '\n' || (skipping_ && c != ';')) continue;
    if (std::exchange(skipping_, false)) {
      received_ += "!;";  // no command: answered in its place
      continue;
    }
    received_ += c;
    const std::size_t end = received_.rfind(';');
    const std::size_t begin = end == std::string::npos ? 0 : end + 1;
    if (received_.size() - begin <= kMostCommand) continue;
    received_.erase(begin);
    skipping_ = true;
  }
  GoOn();
  // Nobody waits for the answers to so many.
  if (received_.size() > kMostWaiting) received_.clear();
  return true;
}

bool KenwoodFace::Tick() {
  if (pending_) {
    const CatResult result = radio_.Look(*pending_);
    if (result == CatResult::Waiting) return true;
    pending_.reset();
    if (result != CatResult::Done) ways_.Send(kUnknown);
  }
  GoOn();
  if (autoInformation_ != 0) TellChanges();
  return true;
}

void KenwoodFace::Reset() {
  received_.clear();
  skipping_ = false;
  pending_.reset();
  autoInformation_ = 0;
}

void KenwoodFace::GoOn() {
  std::size_t from = 0;
  while (!pending_) {
    const std::size_t end = received_.find(';', from);
    if (end == std::string::npos) break;
    const std::string command = received_.substr(from, end - from);
    from = end + 1;
    if (!command.empty()) Command(command);
  }
  received_.erase(0, from);
}

void KenwoodFace::Command(std::string_view command) {
  const std::string_view name = command.substr(0, 2);
  const std::string_view value = command.size() > 2 ? command.substr(2) : std::string_view();
  const std::string answer = value.empty() ? Read(name) : std::string();
  if (!answer.empty())
    ways_.Send(answer);
  else if (!Set(name, value))
    ways_.Send(kUnknown);
}

/// Empty for what cannot be read, or not now.
std::string KenwoodFace::Read(std::string_view name) const {
  const std::string head(name);
  if (name == "ID") return "ID019;";
  if (name == "AI") return "AI" + std::to_string(autoInformation_) + ";";
  if (name == "PS") return radio_.Ready() == CatResult::Done ? "PS1;" : "PS0;";
  if (name == "FA" || name == "FB") {
    const Vfo vfo = name == "FA" ? Vfo::A : Vfo::B;
    return radio_.Ready(vfo) == CatResult::Done ? head + Padded(radio_.FrequencyHz(vfo)) + ";"
                                                : std::string();
  }
  if (radio_.Ready() != CatResult::Done) return {};
  if (name == "MD") return "MD" + std::to_string(radio_.ModeOf(Vfo::A).RadioMode % 10) + ";";
  if (name == "FR") return "FR0;";
  if (name == "FT") return radio_.Split() ? "FT1;" : "FT0;";
  if (name == "IF") return Information();
  return {};
}

// IF | frequency (11) | step (4) | RIT (6) | RIT on | XIT on | bank | channel (2) | transmitting | mode | VFO
// | scanning | split | tone | its number (2) | shift
std::string KenwoodFace::Information() const {
  const std::string flags = std::string(radio_.Radio().Transmitting ? "1" : "0") +
                            std::to_string(radio_.ModeOf(Vfo::A).RadioMode % 10) + "00" +
                            (radio_.Split() ? "1" : "0");
  return "IF" + Padded(radio_.FrequencyHz(Vfo::A)) + "0000" + "+00000" + "00" + "000" + flags + "0" + "00" +
         "0;";
}

bool KenwoodFace::Set(std::string_view name, std::string_view value) {
  using Kind = CatWish::Kind;
  if (name == "FA" || name == "FB") {
    if (value.size() != kFrequencyDigits || !AllDigits(value)) return false;
    return Ask({.What = Kind::Frequency,
                .Of = name == "FA" ? Vfo::A : Vfo::B,
                .Hz = std::atof(std::string(value).c_str())});
  }
  if (name == "MD") return SetMode(value);
  if (name == "FT") return OneOf(value, "01") && Ask({.What = Kind::Split, .On = value == "1"});
  if (name == "TX")
    return (value.empty() || OneOf(value, "012")) && Ask({.What = Kind::Transmit, .On = true});
  if (name == "RX") return (value.empty() || value == "0") && Ask({.What = Kind::Transmit});
  if (name == "AI" && OneOf(value, "0123")) {
    autoInformation_ = value[0] - '0';
    told_ = Information();
    return true;
  }
  // No program switches the radio off from here.
  if (name == "PS") return value == "1" && radio_.Ready() == CatResult::Done;
  // It receives on VFO A: what that is to be is the operator's choice.
  return name == "FR" && value == "0";
}

// Its mode 6 is radio teletype, and here every kind of DATA: the kind that the radio is in stays.
bool KenwoodFace::SetMode(std::string_view value) {
  if (!OneOf(value, "12345679")) return false;
  const int code = value[0] - '0';
  const ExactMode now = radio_.ModeOf(Vfo::A);
  const bool teletype = IsData(code) && (!IsData(now.RadioMode) || now.Teletype);
  return Ask({.What = CatWish::Kind::Mode, .Exact = {code, teletype}});
}

bool KenwoodFace::Ask(const CatWish& wish) {
  CatPending asked;
  const CatResult result = radio_.Ask(wish, asked);
  if (result == CatResult::Waiting) pending_ = asked;
  ways_.Told(wish, result);
  return result == CatResult::Waiting || result == CatResult::Done;
}

void KenwoodFace::TellChanges() {
  if (radio_.Ready() != CatResult::Done) return;
  std::string now = Information();
  if (now == told_) return;
  told_ = std::move(now);
  ways_.Send(told_);
}

}  // namespace spectrino
