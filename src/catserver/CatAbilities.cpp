#include "catserver/CatAbilities.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "catserver/CatModes.h"

namespace spectrino {
namespace {

constexpr double kS9Dbm = -73;

struct Level {
  std::string_view Name;
  unsigned Bit;  ///< in Hamlib's mask of levels
  std::optional<double> (*Value)(const RadioState& radio);
};
constexpr std::array<Level, 4> kLevels{{
    {"PREAMP", 0x1, [](const RadioState& radio) { return std::optional<double>(radio.PreampDb); }},
    {"ATT", 0x2, [](const RadioState& radio) { return std::optional<double>(radio.AttenuatorDb); }},
    {"CWPITCH", 0x800, [](const RadioState& radio) { return std::optional<double>(radio.PitchHz); }},
    // Decibels above S9.
    {"STRENGTH", 0x40000000,
     [](const RadioState& radio) {
       return radio.SMeterTold ? std::optional(radio.SMeterDbm - kS9Dbm) : std::nullopt;
     }},
}};

struct Function {
  std::string_view Name;
  unsigned Bit;  ///< in Hamlib's mask of functions
};
/// Whether a manual notch is on.
constexpr Function kNotch{"MN", 0x2000};

// Words of Hamlib's that are no nonsense.
constexpr std::array<std::string_view, 48> kOtherWords{
    "VOXDELAY",     "AF",      "RF",      "SQL",     "IF",     "APF",   "NR",    "PBT_IN",
    "PBT_OUT",      "RFPOWER", "MICGAIN", "KEYSPD",  "NOTCHF", "COMP",  "AGC",   "BKINDL",
    "BAL",          "METER",   "VOXGAIN", "ANTIVOX", "RAWSTR", "SWR",   "ALC",   "RFPOWER_METER",
    "MONITOR_GAIN", "FAGC",    "NB",      "VOX",     "TONE",   "TSQL",  "SBKIN", "FBKIN",
    "ANF",          "AIP",     "MON",     "ARO",     "LOCK",   "MUTE",  "VSC",   "REV",
    "RIT",          "XIT",     "AFC",     "SATMODE", "SCOPE",  "TUNER", "NB2",   "SPECTRUM"};

CatResult NoSuch(std::string_view word) {
  return std::ranges::find(kOtherWords, word) != kOtherWords.end() ? CatResult::NotAvailable
                                                                   : CatResult::Invalid;
}

CatAnswer NothingToSet(std::string_view name, bool known) {
  if (name == "?") return {.Records = {{"", ""}}, .IsSet = true, .Wish = {}};
  return SetDone(known ? CatResult::NotAvailable : NoSuch(name));
}

std::string Hex(std::uint64_t value) {
  std::array<char, 16> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return "0x" + std::string(digits.data(), end);
}

}  // namespace

CatAnswer GetLevel(std::string_view name, const CatServerState& radio) {
  if (name == "?") {
    std::string names;
    for (const Level& level : kLevels) names += std::string(level.Name) + ' ';
    return Values({{"", names}});
  }
  const auto* const level = std::ranges::find(kLevels, name, &Level::Name);
  if (level == kLevels.end()) return Failed(NoSuch(name));
  if (const CatResult ready = radio.Ready(); ready != CatResult::Done) return Failed(ready);
  const std::optional<double> value = level->Value(radio.Radio());
  return value ? Values({{"", std::to_string(std::llround(*value))}}) : Failed(CatResult::NotAvailable);
}

CatAnswer SetLevel(std::string_view name) {
  return NothingToSet(name, std::ranges::find(kLevels, name, &Level::Name) != kLevels.end());
}

// The manual notch is the one function that is known of; none can be set.
CatAnswer GetFunc(std::string_view name, const CatServerState& radio) {
  if (name == "?") return Values({{"", "MN "}});
  if (name != kNotch.Name) return Failed(NoSuch(name));
  if (const CatResult ready = radio.Ready(); ready != CatResult::Done) return Failed(ready);
  return Values({{"", radio.Radio().MainNotchHz ? "1" : "0"}});
}

CatAnswer SetFunc(std::string_view name) {
  return NothingToSet(name, name == kNotch.Name);
}

// The radio's abilities, a record a line: protocol version, model, region; ranges received and transmitted,
// tuning steps and filters, each list with a row of zeros at its end; offsets; functions and levels that can
// be read and set; then names with values up to "done".
CatAnswer DumpState(const CatServerState& radio) {
  unsigned modes = 0;
  for (const CatMode& row : CatModes()) modes |= row.Bit;
  unsigned levels = 0;
  for (const Level& level : kLevels) levels |= level.Bit;
  const std::string vfos = radio.HasVfoB() ? "0x3" : "0x1";
  const std::string range = "10000.000000 450000000000.000000 " + Hex(modes);
  constexpr const char* kEndOfRanges = "0 0 0 0 0 0 0";
  std::vector<CatAnswer::Record> lines;
  for (const std::string& line : {std::string("1"),
                                  std::string("2"),
                                  std::string("0"),
                                  range + " -1 -1 " + vfos + " 0x1",
                                  std::string(kEndOfRanges),
                                  range + " 0 100000 " + vfos + " 0x1",
                                  std::string(kEndOfRanges),
                                  Hex(modes) + " 1",
                                  std::string("0 0"),
                                  Hex(modes) + " 0",
                                  std::string("0 0"),
                                  std::string("0"),
                                  std::string("0"),
                                  std::string("0"),
                                  std::string("0"),
                                  std::string("0"),
                                  std::string("0"),
                                  Hex(kNotch.Bit),
                                  std::string("0x0"),
                                  Hex(levels),
                                  std::string("0x0"),
                                  std::string("0x0"),
                                  std::string("0x0"),
                                  std::string("vfo_ops=0x0"),
                                  std::string("ptt_type=0x1"),
                                  std::string("targetable_vfo=") + (radio.HasVfoB() ? "0x3" : "0x0"),
                                  std::string("has_set_vfo=1"),
                                  std::string("has_get_vfo=1"),
                                  std::string("has_set_freq=1"),
                                  std::string("has_get_freq=1"),
                                  std::string("timeout=2500"),
                                  std::string("done")})
    lines.push_back({"", line});
  return Values(std::move(lines));
}

}  // namespace spectrino
