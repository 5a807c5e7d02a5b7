// Replies in, state and moved controls out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "k4/CatParser.h"
#include "k4/K4Commands.h"
#include "k4/RecordingPanel.h"

namespace spectrino {
namespace {

using testing::IsEmpty;
using Moves = std::vector<std::string>;

struct ReplyCase {
  const char* Text;
  std::function<bool(const K4State&)> Holds;
  Moves Moved = {};
};

#define HOLDS(condition) [](const K4State& s) { return condition; }

// Replies that do nothing stand beside those that do.
const std::vector<ReplyCase>& Replies() {
  static const std::vector<ReplyCase> cases{
      {"FA00014074000;", HOLDS(s.VfoAMHz == 14.074 && s.MainFreqMHz == 14.074)},
      {"FA00014074000;FA0001407;FA;", HOLDS(s.MainFreqMHz == 14.074)},
      {"FB00007010500;", HOLDS(s.SubFreqMHz == 7.0105 && s.MainFreqMHz == 0)},
      {"MD$3;", HOLDS(s.SubRadioMode == 3 && s.RadioMode == 0)},
      {"MD6;MD$;MD;", HOLDS(s.RadioMode == 6 && s.SubRadioMode == 0)},
      {"FT1;FT1;", HOLDS(s.SplitOn == 1), {"check 0 1"}},
      {"FT2;FT0;", HOLDS(s.SplitOn == 0), {"check 0 1", "check 0 0"}},
      {"IS 0135;IS$ 0150;", HOLDS(s.IfShiftMainHz == 1350 && s.IfShiftSubHz == 1500)},
      {"BW0270;BW$0040;", HOLDS(s.FilterBwMainHz == 2700 && s.FilterBwSubHz == 400)},
      {"CW65;", HOLDS(s.CwPitchHz == 650)},
      {"SMH054;SMH$012;SM0099;", HOLDS(s.SMeterMain == 54 && s.SMeterSub == 12)},
      {"AG030;AG$060;", HOLDS(s.AfBalanceMode == 0), {"volume 1 128", "volume 2 255"}},
      {"BL1+50;", HOLDS(s.AfBalanceMode == 1 && s.AfBalance == 50), {"tip Balance AF/SUB", "volume 2 255"}},
      {"BL1-25;AG$030;", HOLDS(s.AfBalance == -25), {"tip Balance AF/SUB", "volume 2 64"}},
      {"BL0+00;", HOLDS(s.AfBalanceMode == 0), {"tip AF Sub Volume"}},
      {"GT1;GT$2;", HOLDS(s.AgcMain == 1 && s.AgcSub == 2)},
      {"GT001;GT004;GT$002;", HOLDS(s.AgcMain == 1 && s.AgcSub == 2)},
      {"GT3;GT009;", HOLDS(s.AgcMain == 3)},
      {"PA2;PA$1;RA12;RA$03;AP1;NB1;NB$1;NA1;",
       HOLDS(s.PreampMain == 2 && s.PreampSub == 1 && s.AttMain == 12 && s.AttSub == 3 && s.ApfMain == 1 &&
             s.NbMain == 1 && s.NbSub == 1 && s.NotchAutoMain == 1)},
      {"NR051;NR$050;", HOLDS(s.NrMain == 1 && s.NrSub == 0)},
      {"NM07001;NM$12000;",
       HOLDS(s.NotchPitchMain == 700 && s.NotchManualMain == 1 && s.NotchPitchSub == 1200 &&
             s.NotchManualSub == 0),
       {"notch 70"}},
      {"AN2;AR4;RT1;RT$0;XT1;RO-0120;VXC1;TS1;AT2;TQ1;",
       HOLDS(s.Antenna == 2 && s.RxAntMain == 4 && s.RitOn == 1 && s.XitOn == 1 && s.RitOffsetHz == -120 &&
             s.VoxOn == 1 && s.TestMode == 1 && s.AtuMode == 2 && s.Transmitting == 1)},
      {"BS1;", HOLDS(s.BsetOn == 1 && s.RxSuffix == "$"), {"check 1 1"}},
      {"BS1;BS0;", HOLDS(s.RxSuffix.empty()), {"check 1 1", "check 1 0"}},
      {"SB1;SB1;SBx;", HOLDS(s.SubRxOn == 1), {"check 2 1"}},
      {"DV1;", HOLDS(s.DiversityOn == 1), {"check 3 1"}},
      {"DT2;DA$1;", HOLDS(s.DataModeMain == 2 && s.DataModeSub == 1)},
      {"FP2;FP2;FP$3;", HOLDS(s.FilterNo[0] == 2 && s.FilterNo[1] == 3), {"filter 0 FIL2", "filter 1 FIL3"}},
      {"ME0005.0001;", HOLDS(s.IsK4D)},
      {"ME0005.0001;ME0005.0000;ME0070.0001;ME0102.0001;",
       HOLDS(!s.IsK4D && s.K4MonitorKind == 1 && s.IirOn == 1),
       {"check 4 1"}},
      {"ME0005;ME00;", HOLDS(!s.IsK4D)},
      {"#CTF 00014074000;FI00007000000;", HOLDS(s.PanCenterMHz == 7)},
      {"#SPN50000;", HOLDS(s.PanSpanMHz == 0.05)},
      {"#REF-110;#SCL080;", HOLDS(s.PanRefLevelDb == -110 && s.PanScaleDb == 80)},
      {"#FXT1;", HOLDS(s.FxtOn == 1), {"check 5 1"}},
      {"RA99999999999999;AN40000;", HOLDS(s.AttMain == 99 && s.Antenna == 4)},
      {"RO99999;RT123456;", HOLDS(s.RitOffsetHz == 0 && s.RitOn == 0)},
      {"XX123;ZZ;;;?;#;#Q;#QQQQQQ;\x01\x02\x03;", HOLDS(s.MainFreqMHz == 0)}};
  return cases;
}

TEST(CatParser, EachReplyDoesWhatItSaysWhereverTheStreamIsCut) {
  for (const ReplyCase& c : Replies()) {
    const std::string text = c.Text;
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
      K4State state;
      RecordingPanel panel;
      std::string buffer = text.substr(0, cut);
      ParseK4Replies(buffer, state, panel);
      buffer += text.substr(cut);
      ParseK4Replies(buffer, state, panel);
      EXPECT_TRUE(c.Holds(state)) << text << " cut at " << cut;
      EXPECT_EQ(panel.Moves, c.Moved) << text << " cut at " << cut;
      EXPECT_THAT(buffer, IsEmpty());
      EXPECT_FALSE(state.K4ParserBusy || state.K4UpdatingFromRadio);
    }
  }
}

struct RangeCase {
  const char* Good;
  std::function<double(const K4State&)> Value;
  const char* Mnemonic;
};

#define VALUE(field) [](const K4State& s) { return static_cast<double>(s.field); }

TEST(CatParser, ANumberThatCannotBeLeavesWhatWasKnown) {
  const RangeCase cases[] = {{"FA00014074000;", VALUE(MainFreqMHz), "FA"},
                             {"FB00014074000;", VALUE(SubFreqMHz), "FB"},
                             {"FI00007000000;", VALUE(PanCenterMHz), "FI"},
                             {"#CTF 00014074000;", VALUE(PanCenterMHz), "#CTF "},
                             {"#SPN50000;", VALUE(PanSpanMHz), "#SPN"},
                             {"#REF-110;", VALUE(PanRefLevelDb), "#REF"},
                             {"#SCL080;", VALUE(PanScaleDb), "#SCL"},
                             {"#MFA 00014074000;", VALUE(MarkerAMHz), "#MFA "},
                             {"BW0270;", VALUE(FilterBwMainHz), "BW"},
                             {"BW$0040;", VALUE(FilterBwSubHz), "BW$"},
                             {"IS 0135;", VALUE(IfShiftMainHz), "IS "},
                             {"NM07001;", VALUE(NotchPitchMain), "NM"},
                             {"SMH054;", VALUE(SMeterMain), "SMH"},
                             {"SMH$012;", VALUE(SMeterSub), "SMH$"},
                             {"RO-0120;", VALUE(RitOffsetHz), "RO"},
                             {"BL1+10;", VALUE(AfBalance), "BL1"},
                             {"DV1;", VALUE(DiversityOn), "DV"},
                             {"XT1;", VALUE(XitOn), "XT"},
                             {"RVM01.50;", VALUE(McuVersion), "RVM"}};
  for (const RangeCase& c : cases) {
    K4State state;
    RecordingPanel panel;
    std::string buffer = c.Good;
    ParseK4Replies(buffer, state, panel);
    const double known = c.Value(state);
    EXPECT_NE(known, 0) << c.Good;
    const std::size_t moves = panel.Moves.size();
    for (const std::string& number :
         {std::string(40, '9'), std::string(400, '9'), '-' + std::string(400, '9'),
          std::string("-99999999999"), '9' + std::string(400, '0') + ".5"}) {
      if (c.Mnemonic == std::string("RO") && number.front() == '-')
        continue;  // its first digits are plausible
      buffer = c.Mnemonic + number + ";";
      ParseK4Replies(buffer, state, panel);
      EXPECT_EQ(c.Value(state), known) << c.Mnemonic << number;
    }
    const bool balance = c.Mnemonic == std::string("BL1");  // told anew each time
    EXPECT_TRUE(balance || panel.Moves.size() == moves) << c.Mnemonic;
    PanelBench bench(state);
    state.K4Connected = true;
    bench.Commands.Click("cmdSpan1");
    EXPECT_LE(bench.Log().size(), std::string("#SPN368000;").size());
  }
}

TEST(CatParser, KeepsTheUnfinishedTailAndTakesWhatArrivesMeanwhile) {
  K4State state;
  RecordingPanel panel;
  std::string buffer = "MD2;FT1;FA000140";
  // Moving a control turns the event loop, and more arrives in the middle of the pass.
  panel.WhenMoved = [&] {
    buffer += "74000;MD3;FB00";
    ParseK4Replies(buffer, state, panel);
    EXPECT_EQ(state.RadioMode, 2) << "a nested pass does nothing";
  };
  ParseK4Replies(buffer, state, panel);
  EXPECT_EQ(state.MainFreqMHz, 14.074);
  EXPECT_EQ(state.RadioMode, 3);
  EXPECT_EQ(buffer, "FB00");
}

TEST(CatParser, WrittenControlsSendNothingBack) {
  K4State state;
  state.K4Connected = true;
  PanelBench bench(state);
  std::string buffer = "FT1;SB1;DV1;ME0102.0001;#FXT1;BS1;AG030;NM07001;";
  ParseK4Replies(buffer, state, bench.Panel);
  EXPECT_THAT(bench.Sender.Sent, IsEmpty());
}

}  // namespace
}  // namespace spectrino
