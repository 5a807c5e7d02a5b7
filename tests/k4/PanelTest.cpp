// What each control of the K4 panel sends, and what the status area says.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "k4/K4Status.h"
#include "k4/RecordingPanel.h"

namespace spectrino {
namespace {

using Sent = std::vector<std::string>;

struct ControlCase {
  const char* Name;
  std::function<void(K4State&)> Before;
  std::function<void(K4Commands&)> Act;
  Sent Expected;
};

#define BEFORE [](K4State & s)
#define ACT [](K4Commands & c)
#define NOTHING \
  BEFORE {      \
    (void)s;    \
  }

const std::vector<ControlCase>& Controls() {
  static const std::vector<ControlCase> cases{{"agc", NOTHING, ACT{c.Click("cmdAGCK4");
}
, {
  "GT/;", "GT;", "GT$;"
}
}  // namespace
, {"agc sub", BEFORE{s.RxSuffix = "$";
}  // namespace spectrino
, ACT {
  c.Click("cmdAGCK4");
}
, {
  "GT$/;", "GT;", "GT$;"
}
}
, {"ant", NOTHING, ACT{c.Click("cmdANT");
}
, {
  "AN/;", "AN;"
}
}
, {"apf", NOTHING, ACT{c.Click("cmdAPF");
}
, {
  "AP/;", "AP;", "AP$;"
}
}
, {"apf busy", BEFORE{s.K4ParserBusy = true;
}
, ACT {
  c.Click("cmdAPF");
}
, {}
}
, {"nb busy", BEFORE{s.K4ParserBusy = true;
}
, ACT {
  c.Click("cmdNB");
}
, {
  "NB/;", "NB;", "NB$;"
}
}
, {"notch", NOTHING, ACT{c.Click("cmdNotch0");
c.Click("cmdNotch1");
}
, {
  "NM/;", "NM;", "NM$;", "NA/;", "NA;", "NA$;"
}
}
, {"pre", BEFORE{s.PreampMain = 1;
}
, ACT {
  c.Click("cmdPRE");
}
, {
  "PA2;", "PA$;", "PA;"
}
}
, {"pre sub wraps", BEFORE{s.RxSuffix = "$";
s.PreampSub = 2;
}
, ACT {
  c.Click("cmdPRE");
}
, {
  "PA$0;", "PA$;", "PA;"
}
}
, {"att", BEFORE{s.AttMain = 18;
}
, ACT {
  c.Click("cmdATT");
}
, {
  "RA21;", "RA;", "RA$;"
}
}
, {"att wraps", BEFORE{s.AttMain = 21;
}
, ACT {
  c.Click("cmdATT");
}
, {
  "RA0;", "RA;", "RA$;"
}
}
, {"misc", NOTHING, ACT{c.Click("cmdAREF");
c.Click("cmdAsB");
c.Click("Command4");
c.Click("cmdNone");
}
, {
  "#AR1;", "AB2;", "AB0;"
}
}
, {"xfil", BEFORE{s.FilterNo = {1, 3};
}
, ACT {
  c.cmdXFIL_Click(1);
}
, {
  "FP$1;", "FP;", "FP$;", "IS;", "CW;"
}
}
, {"split", NOTHING, ACT{c.chkSplt_Click(true);
c.chkSplt_Click(false);
}
, {
  "FT1;", "FT;", "FT0;", "FT;"
}
}
, {"sub", NOTHING, ACT{c.chkSub_Click(true);
}
, {
  "SB1;", "SB;", "DV;"
}
}
, {"diversity", NOTHING, ACT{c.chkDIV_Click(true);
}
, {
  "DV1;", "DV;", "SB;"
}
}
, {"iir", NOTHING, ACT{c.chkIIR_Click(true);
}
, {
  "ME0102.1;", "ME0102;"
}
}
, {"fixed tune", NOTHING, ACT{c.chkFXT_Click(true);
}
, {
  "#FXT1;"
}
}
, {"auto span cw", BEFORE{s.RadioMode = 3;
}
, ACT {
  c.cmdAutoSpan_Click();
}
, {
  "#SPN25000;", "FC;"
}
}
, {"auto span ssb", BEFORE{s.RadioMode = 2;
}
, ACT {
  c.cmdAutoSpan_Click();
}
, {
  "#SPN150000;", "FC;"
}
}
, {"auto span am", BEFORE{s.RadioMode = 5;
}
, ACT {
  c.cmdAutoSpan_Click();
}
, {
  "#SPN300000;", "FC;"
}
}
, {"span down", BEFORE{s.PanSpanMHz = 0.01;
}
, ACT {
  c.Click("cmdSpan0");
}
, {
  "#SPN6000;"
}
}
, {"span up", BEFORE{s.PanSpanMHz = 0.366;
}
, ACT {
  c.Click("cmdSpan1");
}
, {
  "#SPN368000;"
}
}
, {"minipan on", BEFORE{s.IsK4D = true;
}
, ACT {
  c.chkMinipan_Click(true);
}
, {
  "pan A1", "pan B0", "pan Y1", "pan Z1"
}
}
, {"minipan off", NOTHING, ACT{c.chkMinipan_Click(false);
}
, {
  "pan A1", "pan B0", "pan Y0", "pan Z0"
}
}
, {"modes", NOTHING, ACT{c.cmdMode_Click(3);
c.cmdMode_Click(8);
c.cmdMode_Click(-1);
}
, {
  "MD7;", "MD;", "MD$;", "DT;", "DT$;"
}
}
, {"quick split ssb", BEFORE{s.RadioMode = 2;
s.MainFreqMHz = 14.2;
}
, ACT {
  c.Click("cmdQuick");
}
, {
  "MD$2;", "FB00014205000;", "FT1;", "FT1;"
}
}
, {"quick split cw", BEFORE{s.RadioMode = 3;
s.MainFreqMHz = 14.02;
}
, ACT {
  c.Click("cmdQuick");
}
, {
  "MD$3;", "FB00014021000;", "FT1;", "FT1;"
}
}
, {"quick split fm", BEFORE{s.RadioMode = 4;
}
, ACT {
  c.Click("cmdQuick");
}
, {}
}
, {"volume", NOTHING, ACT{c.sldVol_Change(1, 255);
c.sldVol_Change(1, 0);
c.sldVol_Change(2, 128);
c.sldVol_Commit(1);
}
, {
  "AG060;", "AG000;", "AG$030;", "AG;"
}
}
, {"balance", BEFORE{s.AfBalanceMode = 1;
}
, ACT {
  c.sldVol_Change(2, 128);
  c.sldVol_Change(2, 0);
  c.sldVol_Change(2, 255);
  c.sldVol_Commit(2);
}
, {
  "BL1+00;", "BL1-50;", "BL1+50;", "BL;"
}
}
, {"notch slider off", NOTHING, ACT{c.sldNotch_Change(70);
c.sldNotch_Commit();
}
, {}
}
, {
  "notch slider", BEFORE {
    s.NotchManualMain = 1;
  }
  , ACT {
    c.sldNotch_Change(70);
    c.sldNotch_Commit();
  }
  , {
    "NM07001;", "NM;"
  }
}
}
;
return cases;
}

TEST(K4Panel, EachControlSendsItsBytes) {
  for (const ControlCase& c : Controls()) {
    K4State state;
    state.K4Connected = true;
    c.Before(state);
    PanelBench bench(state);
    c.Act(bench.Commands);
    EXPECT_EQ(bench.Sender.Sent, c.Expected) << c.Name;
    state.K4Connected = false;
    bench.Sender.Sent.clear();
    c.Act(bench.Commands);
    EXPECT_EQ(bench.Sender.Sent, Sent{}) << c.Name << " without a connection";
  }
}

TEST(K4Panel, TheMonitorFollowsTheSubReceiverOfAK4DAlone) {
  for (const int kind : {-1, 0, 1}) {
    K4State state;
    state.K4Connected = state.IsK4D = true;
    state.K4MonitorKind = kind;
    PanelBench bench(state);
    bench.Commands.SelectMonitor(1);
    EXPECT_EQ(bench.Sender.Sent, Sent{}) << "the option is off";
    bench.Store.SaveSetting("Spectrino", "Setup", "MP", "1");
    bench.Commands.SelectMonitor(1);
    EXPECT_EQ(bench.Sender.Sent,
              kind < 0 ? Sent{"#DPM0;"} : Sent({"#DPM0;", kind == 1 ? "#HDPM1;" : "#DPM1;"}));
    bench.Sender.Sent.clear();
    bench.Commands.SelectMonitor(0);
    bench.Commands.SelectMonitor(7);
    EXPECT_EQ(bench.Sender.Sent, Sent({"#DPM0;", "#HDPM0;"}));
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
  EXPECT_EQ(area.Receivers, "SUBDIV   ");
  EXPECT_EQ(area.RitXit, " XIT -0.12");
  EXPECT_EQ(area.Antenna, " TX:ANT2 ATU");
  EXPECT_EQ(area.FilterText, "200/600 IIR");
  EXPECT_EQ(area.ScaleLeft + area.ScaleRight, "-25kHz+25kHz");
  EXPECT_TRUE(area.NeedsDualPanOff) << "no mini-pan yet";

  state.K4PanChannels[kPanMiniMain] = {.SpanMHz = 0.01, .Levels = {0, -100, -90}, .Points = 2, .Serial = 1};
  for (std::uint64_t serial = 1; serial < 40; ++serial) {
    state.K4PanChannels[kPanMiniMain].Serial = serial;
    status.Follow(state);
  }
  area = status.Area(state);
  EXPECT_FALSE(area.NeedsDualPanOff);
  EXPECT_EQ(area.Main.History.size(), 21U);
  EXPECT_EQ(area.Main.ScaleLeft + area.Main.ScaleRight, " -5.0kHz+5.0kHz");
  state.SubRxOn = 0;
  state.PanHdpm = 1;
  state.RxSuffix = "$";
  state.NotchManualMain = 1;
  area = status.Area(state);
  EXPECT_TRUE(area.NeedsDualPanOff);
  EXPECT_EQ(area.Receivers + area.FilterText, "");
  state.MinipanHistoryCount = 0;
  state.K4PanChannels[kPanMiniMain].Serial = 40;
  status.Follow(state);
  EXPECT_EQ(status.Area(state).Main.History.size(), 1U) << "switched on again";
}

}  // namespace
}  // namespace spectrino
