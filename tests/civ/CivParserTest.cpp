// Replies in, state and panel out: the well-formed beside the malformed.
#include "civ/CivParser.h"

#include <gtest/gtest.h>

#include <sstream>

#include "civ/CivDoubles.h"
#include "civ/IcomModels.h"
#include "state/Val.h"

namespace spectrino::test {
namespace {

/// The fields that a reply may change, as they stand.
std::map<std::string, std::string> Fields(const CivState& s) {
  std::map<std::string, std::string> fields{
      {"mode", s.IcomModeText}, {"id", s.RadioId}, {"name", s.IcomModelName}, {"wave", s.ScopeWaveHex}};
  const std::pair<const char*, double> numbers[] = {
      {"freq", s.RadioFreqMHz},     {"index", s.RadioModeIndex},
      {"am", s.AmVariant},          {"af", s.AfLevel},
      {"squelch", s.SqlLevel},      {"agc", s.AgcSetting},
      {"max", s.ScopeMaxLevel},     {"points", s.SpectrumPoints},
      {"scope", s.ScopePoints},     {"fixed", s.ScopeFixedMode},
      {"span", s.ScopeSpanMHz},     {"low", s.ScopeLowEdgeMHz},
      {"high", s.ScopeHighEdgeMHz}, {"ref", s.ScopeRefLevel},
      {"speed", s.ScopeSpeed},      {"tx", s.Transmitting ? 1 : 0}};
  for (const auto& [name, value] : numbers) fields[name] = NumberText(value);
  return fields;
}

/// What a reply changed, then what the panel was told. body: between the addresses and FD.
std::string Outcome(const std::string& body) {
  CivState state;
  state.AmVariant = -1;
  state.RadioModeIndex = -1;
  state.SpectrumPoints = 50;
  const auto before = Fields(state);
  RecordingPanel panel;
  std::string frame;
  AppendHexText(frame, Bytes("FE FE E0 94" + body + "FD"));
  ParseCivFrame(frame, state, panel);
  std::string outcome;
  for (const auto& [name, value] : Fields(state)) {
    if (before.at(name) != value) outcome += name + " " + value + "; ";
  }
  return outcome + panel.Told;
}

TEST(ParseCivFrame, ChangesWhatTheReplySaysAndNothingElse) {
  const std::pair<const char*, const char*> replies[] = {
      {"00 00 00 23 14 00", "freq 14.23; "},
      {"03 56 34 12 45 01", "freq 145.123456; "},
      {"01 02", "am 0; index 3; mode 02; "},
      {"04 07 01", "index 2; mode 07; "},
      {"04 12 01", "index 6; mode 12; "},
      {"04 15 01", "am 3; index 3; mode 15; "},
      {"04 09 01", "mode 09; "},
      {"14 01 01 28", "af 128; af 128; "},
      {"14 03 02 55", "squelch 255; squelch 255; "},
      {"11 20", "function 4 on; "},
      {"16 02 00", "function 0 off; "},
      {"16 02 02", "function 0 on; "},  // the second preamplifier
      {"16 41 01", "function 3 on; "},
      {"1A 07 01", "function 5 on; "},
      {"16 65 00", "function 5 off; "},
      {"16 12 03", "agc 3; "},
      {"19 00 6A", "id 6A; max 200; name IC-7850; points 689; scope 689; "},
      {"19 00 94", "id 94; max 160; name IC-7300; points 475; scope 475; "},
      {"19 00 77", "id 77; scope 50; "},
      {"1C 00 01", "tx 1; "},
      {"27 14 00 01", "fixed 1; "},
      {"27 15 00 00 50 02 00 00", "span 0.025; "},
      {"27 19 00 10 50 01", "ref -10.5; ref -21; "},
      {"27 19 00 05 50 00", "ref 5.5; ref 11; "},
      {"27 1A 00 02", "speed 2; "},
      {"27 1E 01 02 00 00 00 14 00 00 00 35 14 00", "high 14.35; low 14; "},
  };
  for (const auto& [body, outcome] : replies) EXPECT_EQ(Outcome(body), outcome) << body;

  // No news or none of ours; too short; no decimal digits, or too much.
  std::istringstream ignored(
      "FB|FA||14 02 01 28|27 14 01 01|16 02|16 22 0A|27 19 01 10 50 01|27 00 01 01 01|03|"
      "03 00 00 23 14|04|14 01 01|16 12|19 00|27 00|27 00 00 01|27 14 00|27 19 00 10 50|"
      "27 1E 01 02 00 00 00 14 00 00 00 35 14|03 00 00 2A 14 00|04 1F 01|14 01 0F 00|14 01 02 56|"
      "27 15 00 00 00 00 FF 00|27 19 00 A0 50 01|27 1E 01 02 00 00 00 14 00 00 00 3B 14 00");
  for (std::string body; std::getline(ignored, body, '|');) EXPECT_EQ(Outcome(body), "") << body;
}

}  // namespace
}  // namespace spectrino::test
