// What each control of the K4 panel sends, and what the status area says.
#include <gtest/gtest.h>

#include <span>

#include "k4/K4Status.h"
#include "k4/RecordingPanel.h"
#include "state/RadioState.h"

namespace spectrino {
namespace {

TEST(K4Panel, ButtonsAddressTheReceiverOfThePanel) {
  const struct {
    const char* Control;
    const char* Main;
    const char* Sub;
    bool EvenWhileParsing = true;
  } cases[] = {{"cmdAGCK4", "GT/; GT; GT$;", "GT$/; GT; GT$;"},
               {"cmdANT", "AN/; AN;", "AN/; AN;"},
               {"cmdAPF", "AP/; AP; AP$;", "AP$/; AP; AP$;", false},
               {"cmdNB", "NB/; NB; NB$;", "NB$/; NB; NB$;"},
               {"cmdNR", "NR/; NR; NR$;", "NR$/; NR; NR$;"},
               {"cmdNotch0", "NM/; NM; NM$;", "NM$/; NM; NM$;", false},
               {"cmdNotch1", "NA/; NA; NA$;", "NA$/; NA; NA$;", false},
               {"cmdPRE", "PA2; PA$; PA;", "PA$0; PA$; PA;"},
               {"cmdATT", "RA21; RA; RA$;", "RA$0; RA; RA$;"},
               {"cmdAREF", "#AR1;", "#AR1;"},
               {"cmdAsB", "AB2;", "AB2;"},
               {"Command4", "AB0;", "AB0;"},
               {"cmdXFIL0", "FP2; FP; FP$; IS; CW;", "FP2; FP; FP$; IS; CW;"},
               {"cmdXFIL1", "FP$1; FP; FP$; IS; CW;", "FP$1; FP; FP$; IS; CW;"},
               {"cmdNone", "", ""}};
  for (const auto& c : cases) {
    for (const bool sub : {false, true}) {
      for (const bool parsing : {false, true}) {
        K4State state;
        state.K4Connected = true;
        state.K4ParserBusy = parsing;
        state.RxSuffix = sub ? "$" : "";
        state.PreampMain = 1;
        state.PreampSub = 2;
        state.AttMain = 18;
        state.AttSub = 21;
        state.FilterNo = {1, 3};
        PanelBench bench(state);
        bench.Commands.Click(c.Control);
        const char* expected = sub ? c.Sub : c.Main;
        EXPECT_EQ(bench.Log(), parsing && !c.EvenWhileParsing ? "" : expected) << c.Control;
      }
    }
  }
}

struct ControlCase {
  void (*Act)(K4State& state, K4Commands& panel);
  const char* Log;
  bool K4D = false;
};

/// Each case as it stands, and without a connection, where it must send nothing.
void ExpectLogs(std::span<const ControlCase> cases) {
  for (const ControlCase& c : cases) {
    K4State state;
    state.K4Connected = true;
    state.IsK4D = c.K4D;
    PanelBench bench(state);
    c.Act(state, bench.Commands);
    EXPECT_EQ(bench.Log(), c.Log);

    K4State offline;
    PanelBench silent(offline);
    c.Act(offline, silent.Commands);
    std::erase_if(silent.Sender.Sent, [](const std::string& entry) { return entry.ends_with("ms"); });
    EXPECT_EQ(silent.Log(), "") << "without a connection, instead of " << c.Log;
  }
}

TEST(K4Panel, CheckBoxesSendTheirStateAndAskForIt) {
  const ControlCase cases[] = {
      {[](K4State&, K4Commands& panel) { panel.chkSplt_Click(true); }, "FT1; FT;"},
      {[](K4State&, K4Commands& panel) { panel.chkSplt_Click(false); }, "FT0; FT;"},
      {[](K4State&, K4Commands& panel) { panel.chkBSET_Click(true); }, "BS1; BS;"},
      {[](K4State&, K4Commands& panel) { panel.chkSub_Click(true); }, "SB1; SB; 50ms DV;"},
      {[](K4State&, K4Commands& panel) { panel.chkDIV_Click(false); }, "DV0; DV; SB; 0ms"},
      {[](K4State&, K4Commands& panel) { panel.chkIIR_Click(true); }, "ME0102.1; ME0102;"},
      {[](K4State&, K4Commands& panel) { panel.chkFXT_Click(true); }, "#FXT1;"},
      {[](K4State&, K4Commands& panel) { panel.chkMinipan_Click(true); }, "pan A1 pan B0 pan Y1 pan Z1",
       true},
      {[](K4State&, K4Commands& panel) { panel.chkMinipan_Click(true); }, "pan A1 pan B0 pan Y1 pan Z0"},
      {[](K4State&, K4Commands& panel) { panel.chkMinipan_Click(false); }, "pan A1 pan B0 pan Y0 pan Z0",
       true}};
  ExpectLogs(cases);
}

TEST(K4Panel, SpanModeAndQuickSplitFollowTheMode) {
  const ControlCase cases[] = {
      {[](K4State& state, K4Commands& panel) {
         for (state.RadioMode = 2; state.RadioMode <= 4; ++state.RadioMode) panel.Click("cmdAutoSpan");
       },
       "#SPN150000; FC; #SPN25000; FC; #SPN300000; FC;"},
      {[](K4State& state, K4Commands& panel) {
         for (const double spanMHz : {0.01, 0.05, 0.366}) {
           state.PanSpanMHz = spanMHz;
           panel.Click("cmdSpan0");
           panel.Click("cmdSpan1");
         }
       },
       "#SPN6000; #SPN15000; #SPN45000; #SPN55000; #SPN361000; #SPN368000;"},
      {[](K4State& state, K4Commands& panel) {
         state.RxSuffix = "$";
         for (const int index : {-1, 3, 4, 6, 8}) panel.cmdMode_Click(index);
       },
       "MD$7; MD; MD$; DT; DT$; MD$4; MD; MD$; DT; DT$; MD$9; MD; MD$; DT; DT$;"},
      {[](K4State& state, K4Commands& panel) {
         state.MainFreqMHz = 14.2;
         for (state.RadioMode = 2; state.RadioMode <= 4; ++state.RadioMode) panel.Click("cmdQuick");
       },
       "MD$2; 200ms FB00014205000; 250ms FT1; 250ms FT1; MD$3; 200ms FB00014201000; 250ms FT1; 250ms FT1;"}};
  ExpectLogs(cases);
}

TEST(K4Panel, SlidersSendWhatTheyMeanNow) {
  const ControlCase cases[] = {
      {[](K4State& state, K4Commands& panel) {
         for (const int value : {255, 0, 191}) panel.sldVol_Change(1, value);
         panel.sldVol_Change(2, 128);
         panel.sldVol_Commit(1);
         panel.sldVol_Commit(2);
         state.K4ParserBusy = true;
         panel.sldVol_Change(1, 9);
         panel.sldVol_Commit(1);
       },
       "AG060; AG000; AG045; AG$030; AG; AG$;"},
      {[](K4State& state, K4Commands& panel) {
         state.AfBalanceMode = 1;
         for (const int value : {128, 0, 255, 141}) panel.sldVol_Change(2, value);
         panel.sldVol_Commit(2);
       },
       "BL1+00; BL1-50; BL1+50; BL1+05; BL;"},
      {[](K4State& state, K4Commands& panel) {
         state.NotchManualSub = 1;
         panel.sldNotch_Change(70);  // the panel addresses the main receiver, whose notch is off
         panel.sldNotch_Commit();
         state.RxSuffix = "$";
         panel.sldNotch_Change(70);
         panel.sldNotch_Commit();
         state.K4ParserBusy = true;
         panel.sldNotch_Change(71);
       },
       "NM$07001; NM$;"}};
  ExpectLogs(cases);
}

TEST(K4Panel, ControlsShowAtOnceWhatTheyAskedFor) {
  K4State state;
  state.K4Connected = true;
  state.FilterNo = {1, 3};
  state.NotchManualMain = 1;
  state.MinipanHistoryCount = 9;
  PanelBench bench(state);
  bench.Commands.Click("cmdXFIL1");
  bench.Commands.sldNotch_Change(70);
  EXPECT_EQ(bench.Panel.Moves, (std::vector<std::string>{"filter 1 FIL1", "tip 700Hz"}));
  bench.Commands.chkBSET_Click(true);
  bench.Commands.chkFXT_Click(true);
  bench.Commands.chkMinipan_Click(true);
  EXPECT_EQ(state.RxSuffix, "$");
  EXPECT_EQ(state.FxtOn, 1);
  EXPECT_TRUE(state.MinipanOn);
  EXPECT_EQ(state.MinipanHistoryCount, 0);
  bench.Commands.chkBSET_Click(false);
  EXPECT_EQ(state.RxSuffix, "");
}

TEST(K4Panel, TheMonitorFollowsTheSubReceiverOfAK4DAlone) {
  const struct {
    int Kind;
    std::string Both;
  } cases[] = {{-1, "#DPM0; 200ms"}, {0, "#DPM0; #DPM1; 200ms"}, {1, "#DPM0; #HDPM1; 200ms"}};
  for (const auto& c : cases) {
    K4State state;
    state.K4Connected = true;
    state.K4MonitorKind = c.Kind;
    PanelBench bench(state);
    bench.Store.SaveSetting("Spectrino", "Setup", "MP", "1");
    bench.Commands.SelectMonitor(1);
    EXPECT_EQ(bench.Log(), "") << "not a K4D";
    state.IsK4D = true;
    bench.Commands.SelectMonitor(1);
    EXPECT_EQ(bench.Log(), c.Both);
    bench.Commands.SelectMonitor(0);
    bench.Commands.SelectMonitor(7);
    EXPECT_EQ(bench.Log(), "#DPM0; #HDPM0; 200ms 200ms");
    state.K4ParserBusy = true;
    bench.Panel.SetCheck(K4Check::Sub, true);
    state.K4ParserBusy = false;
    bench.Commands.chkDIV_Click(true);
    EXPECT_EQ(bench.Log(), "DV1; DV; SB; 0ms " + c.Both) << "chkSub ticked by the parser counts";
    bench.Store.SaveSetting("Spectrino", "Setup", "MP", "0");
    bench.Commands.SelectMonitor(1);
    EXPECT_EQ(bench.Log(), "") << "the option is off";
  }
}

TEST(K4Status, TextsSayWhatTheRadioDoes) {
  K4State state;
  K4Status status;
  EXPECT_FALSE(status.Area(state).Shown);
  state.MinipanOn = true;
  state.AgcMain = 1;
  state.PreampMain = 1;
  state.AttMain = 6;
  state.ApfMain = state.NrMain = state.NbMain = 1;
  state.RxAntMain = 6;
  state.NotchAutoMain = state.NotchManualSub = 1;
  state.AgcSub = 2;
  state.RxAntSub = 3;
  state.SplitOn = 1;
  state.MainFreqMHz = 14.074;
  state.SubFreqMHz = 14.08;
  state.SubRxOn = state.DiversityOn = 1;
  state.XitOn = 1;
  state.RitOffsetHz = -120;
  state.Antenna = 2;
  state.AtuMode = 2;
  state.FilterBwMainHz = 200;
  state.IfShiftMainHz = 600;
  state.IirOn = 1;
  state.K4PanChannels[kPanMain].SpanMHz = 0.05;
  StatusArea area = status.Area(state);
  EXPECT_EQ(area.MainLine, "AGC-S PRE1 ATT6 APF NR NB ANT:ATU2 NTC-A");
  EXPECT_EQ(area.SubLine, "AGC-F ANT:IN NTC-M");
  EXPECT_EQ(area.Split + area.SplitOffset, " SPLIT ON+6.00k");
  EXPECT_EQ(area.Receivers, "SUB DIV   ");
  EXPECT_EQ(area.RitXit, " XIT -0.12");
  EXPECT_EQ(area.Antenna, " TX:ANT2 ATU");
  EXPECT_EQ(area.FilterText, "200/600 IIR");
  EXPECT_EQ(area.ScaleLeft + area.ScaleRight, "-25kHz+25kHz");
  EXPECT_FALSE(area.NeedsDualPanOff) << "no mini-pan yet, and nothing told";
  state.SubRxOn = 0;
  EXPECT_FALSE(status.Area(state).NeedsDualPanOff);
  state.PanHdpm = 1;
  EXPECT_TRUE(status.Area(state).NeedsDualPanOff) << "told by the radio";
  state.PanHdpm = 0;
  state.K4PanChannels[kPanMiniMain].Serial = 1;
  EXPECT_FALSE(status.Area(state).NeedsDualPanOff) << "a line before the radio's mode";
  state.RadioMode = mode::kCw;
  EXPECT_TRUE(status.Area(state).NeedsDualPanOff) << "a mini-pan without a span";

  state.K4PanChannels[kPanMiniMain] = {.SpanMHz = 0.01, .Levels = {0, -100, -90}, .Points = 2, .Serial = 1};
  for (std::uint64_t serial = 1; serial < 40; ++serial) {
    state.K4PanChannels[kPanMiniMain].Serial = serial;
    status.Follow(state);
  }
  area = status.Area(state);
  EXPECT_FALSE(area.NeedsDualPanOff);
  EXPECT_EQ(area.Main.History.size(), 21U);
  state.MinipanHistoryCount = 0;
  state.K4PanChannels[kPanMiniMain].Serial = 40;
  status.Follow(state);
  EXPECT_EQ(status.Area(state).Main.History.size(), 1U) << "switched on again";
  state.SMeterMain = 57;
  EXPECT_EQ(status.Area(state).Main.SMeterShare, 0.5);
  area = status.Area(state, false);
  EXPECT_EQ(area.MainFreq + area.MainLine + area.Split, "---------") << "not heard";
  EXPECT_EQ(area.Main.SMeterShare, 0);
}

}  // namespace
}  // namespace spectrino
