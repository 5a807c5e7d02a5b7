// Replies in, state and panel out: the well-formed beside the malformed.
#include "civ/CivParser.h"

#include <gtest/gtest.h>

#include <sstream>

#include "civ/CivDoubles.h"
#include "civ/IcomModels.h"

namespace spectrino::test {
namespace {

/// Every field that a reply may change.
std::string Everything(const CivState& s) {
  std::ostringstream text;
  text << s.RadioFreqMHz << " mode " << s.IcomModeText << "/" << s.RadioModeIndex << "/" << s.AmVariant
       << " levels " << s.AfLevel << "/" << s.SqlLevel << "/" << s.AgcSetting << " radio " << s.RadioId << "/"
       << s.IcomModelName << "/" << s.ScopeMaxLevel << "/" << s.SpectrumPoints << "/" << s.ScopePoints
       << " scope " << s.ScopeFixedMode << "/" << s.ScopeSpanMHz << "/" << s.ScopeLowEdgeMHz << "/"
       << s.ScopeHighEdgeMHz << "/" << s.ScopeRefLevel << "/" << s.ScopeSpeed << " line " << s.ScopeSerial
       << "/" << s.ScopeWaveHex;
  return text.str();
}

struct Reply {
  const char* body;           // between the addresses and FD
  void (*expect)(CivState&);  // what it changes; null: nothing
  const char* panel = "";
};

TEST(ParseCivFrame, ChangesWhatTheReplySaysAndNothingElse) {
  const Reply replies[] = {
      {"00 00 00 23 14 00", [](CivState& s) { s.RadioFreqMHz = 14.23; }},
      {"03 56 34 12 45 01", [](CivState& s) { s.RadioFreqMHz = 145.123456; }},
      {"01 02", [](CivState& s) { s.IcomModeText = "02", s.RadioModeIndex = 3, s.AmVariant = 0; }},
      {"04 07 01", [](CivState& s) { s.IcomModeText = "07", s.RadioModeIndex = 2; }},
      {"04 12 01", [](CivState& s) { s.IcomModeText = "12", s.RadioModeIndex = 6; }},
      {"04 15 01", [](CivState& s) { s.IcomModeText = "15", s.RadioModeIndex = 3, s.AmVariant = 3; }},
      {"04 09 01", [](CivState& s) { s.IcomModeText = "09"; }},
      {"14 01 01 28", [](CivState& s) { s.AfLevel = 128; }, "af 128; "},
      {"14 03 02 55", [](CivState& s) { s.SqlLevel = 255; }, "squelch 255; "},
      {"16 12 03", [](CivState& s) { s.AgcSetting = 3; }},
      {"19 00 6A",
       [](CivState& s) {
         s.RadioId = "6A", s.IcomModelName = "IC-7850", s.ScopeMaxLevel = 200,
         s.SpectrumPoints = s.ScopePoints = 689;
       }},
      {"19 00 94",
       [](CivState& s) {
         s.RadioId = "94", s.IcomModelName = "IC-7300", s.ScopeMaxLevel = 160,
         s.SpectrumPoints = s.ScopePoints = 475;
       }},
      {"19 00 77", [](CivState& s) { s.RadioId = "77", s.ScopePoints = 50; }},
      {"27 14 00 01", [](CivState& s) { s.ScopeFixedMode = 1; }},
      {"27 15 00 00 50 02 00 00", [](CivState& s) { s.ScopeSpanMHz = 0.025; }},
      {"27 19 00 10 50 01", [](CivState& s) { s.ScopeRefLevel = -10.5F; }, "ref -21; "},
      {"27 19 00 05 50 00", [](CivState& s) { s.ScopeRefLevel = 5.5F; }, "ref 11; "},
      {"27 1A 00 02", [](CivState& s) { s.ScopeSpeed = 2; }},
      {"27 1E 01 02 00 00 00 14 00 00 00 35 14 00",
       [](CivState& s) { s.ScopeLowEdgeMHz = 14, s.ScopeHighEdgeMHz = 14.35; }},
      // Answers without news, and commands that are none of ours
      {"FB", nullptr},
      {"FA", nullptr},
      {"", nullptr},
      {"1C 00 01", nullptr},
      {"14 02 01 28", nullptr},
      // The sub scope's
      {"27 14 01 01", nullptr},
      {"27 19 01 10 50 01", nullptr},
      {"27 00 01 01 01", nullptr},
      // Too short
      {"03", nullptr},
      {"03 00 00 23 14", nullptr},
      {"04", nullptr},
      {"14 01 01", nullptr},
      {"16 12", nullptr},
      {"19 00", nullptr},
      {"27 00", nullptr},
      {"27 00 00 01", nullptr},
      {"27 14 00", nullptr},
      {"27 19 00 10 50", nullptr},
      {"27 1E 01 02 00 00 00 14 00 00 00 35 14", nullptr},
      // No decimal digits, or more than the field holds
      {"03 00 00 2A 14 00", nullptr},
      {"04 1F 01", nullptr},
      {"14 01 0F 00", nullptr},
      {"14 01 02 56", nullptr},
      {"27 15 00 00 00 00 FF 00", nullptr},
      {"27 19 00 A0 50 01", nullptr},
      {"27 1E 01 02 00 00 00 14 00 00 00 3B 14 00", nullptr},
  };
  for (const Reply& reply : replies) {
    SCOPED_TRACE(reply.body);
    CivState state;
    state.ScopeMaxLevel = 100;
    state.SpectrumPoints = 50;
    state.AmVariant = 2;
    CivState expected = state;
    if (reply.expect != nullptr) reply.expect(expected);
    RecordingPanel panel;
    std::string frame;
    AppendHexText(frame, Bytes(std::string("FE FE E0 94") + reply.body + "FD"));
    ParseCivFrame(frame, state, panel);
    EXPECT_EQ(Everything(state), Everything(expected));
    EXPECT_EQ(panel.Told, reply.panel);
  }
}

TEST(ParseCivFrame, ACutFrameChangesNothing) {
  const std::string whole = "FEFEE094271E010200000014000000351400FD";
  for (std::size_t length = 0; length < whole.size(); ++length) {
    CivState state;
    RecordingPanel panel;
    ParseCivFrame(std::string_view(whole).substr(0, length), state, panel);
    ParseCivFrame(std::string_view(whole).substr(whole.size() - length), state, panel);
    EXPECT_EQ(Everything(state), Everything(CivState{})) << length;
  }
}

TEST(HexText, FrequenciesAndBytes) {
  const std::pair<double, const char*> frequencies[] = {
      {14.074, "0040071400"}, {14.23, "0000231400"},  {0.0025, "0025000000"},
      {0, "0000000000"},      {1296.1, "0000109612"}, {9999.999999, "9999999999"},
  };
  for (const auto& [mhz, text] : frequencies) {
    EXPECT_EQ(EncodeFreq(mhz), text);
    EXPECT_EQ(DecodeFreq(text), mhz);
  }
  EXPECT_EQ(EncodeFreq(10123.456789), "8967452301");  // the digit of 10 GHz has no place
  EXPECT_EQ(EncodeFreq(-1), "0000000000");
  for (const char* text : {"", "00002314", "000023140000", "00002A1400"}) EXPECT_EQ(DecodeFreq(text), 0);

  const std::pair<const char*, int> bytes[] = {{"00", 0}, {"7f", 127}, {"C8", 200}, {"FF", 255}, {" a ", 10},
                                               {"9", 9},  {"", 0},     {"123", 0},  {"G4", 4},   {"?", 0}};
  for (const auto& [text, value] : bytes) EXPECT_EQ(HexByteValue(text), value) << text;
}

}  // namespace
}  // namespace spectrino::test
