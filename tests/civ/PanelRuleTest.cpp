// What a panel's control shows and sends while the radio still tells what was before.
#include <gtest/gtest.h>

#include "civ/CivDoubles.h"
#include "civ/IcomSliders.h"
#include "civ/RecordingCivSender.h"
#include "fakes/Recorders.h"

namespace spectrino::test {
namespace {

using namespace std::chrono_literals;
using enum PanelControl;

struct PanelRule : ::testing::Test {
  /// Five milliseconds at a time, as the panel's timer goes.
  std::string Pass(std::chrono::milliseconds time) {
    for (; time > 0ms; time -= 5ms) {
      Time.Advance(5ms);
      Sliders.Pump();
      Panel.Pump();
    }
    return Sender.Take();
  }
  std::string Shown() { return std::exchange(Widgets.Told, {}); }

  CivState State;
  RecordingCivSender Sender;
  ScriptedPump Pump;
  FakeClock Time;
  RecordingPanel Widgets;
  HeldPanel Panel{Widgets, State, Time};
  IcomCommands Commands{State, Sender, Pump, Time};
  IcomSliders Sliders{Commands, Panel, Time};
};

TEST_F(PanelRule, QuickStepsAllCountAndTheLastOneIsReadBack) {
  std::string sent;
  for (const int step : {-1, -2, -3, -4, -5}) {
    Sliders.Move(RefLevel, step);
    sent += Pass(10ms);
    Panel.SetRefLevelSlider(step + 1);  // the radio tells the step before
  }
  EXPECT_EQ(Shown(), "") << "the next step would count from an echo";
  EXPECT_EQ(sent + " ... " + Pass(100ms), "271900005001271900015001 ... 271900025001")
      << "30 ms apart, no reads";
  EXPECT_EQ(Pass(40ms), "271900?") << "150 ms after the last step";
  Panel.SetRefLevelSlider(-5);
  Panel.SetRefLevelSlider(-7);  // turned at the radio, afterwards
  EXPECT_EQ(Shown(), "ref -5; ref -7; ");
  EXPECT_EQ(Pass(2s), "");

  Sliders.Move(AfLevel, 100);
  Sliders.Move(AfLevel, 101);
  Sliders.Release(AfLevel);
  EXPECT_EQ(Sender.Take(), "14010100 | 14010101 | 1401?") << "let go: at once";
}

TEST_F(PanelRule, WhatTheRadioRefusesGoesBackAfterASecond) {
  Panel.Asked(Span, 3);
  Panel.Asked(Fixed, 1);
  Panel.Asked(Function, 1, 4);
  Panel.SelectSpan(7);
  Panel.SetFixedMode(false);
  Panel.SetFunction(4, true);
  Panel.SetFunction(5, true);
  EXPECT_EQ(Shown(), "function 4 on; function 5 on; ");
  Pass(990ms);
  EXPECT_EQ(Shown(), "");
  Pass(10ms);
  EXPECT_EQ(Shown(), "span 7; centre; ");
  EXPECT_FALSE(State.CivParserBusy);
}

TEST_F(PanelRule, ClicksCountFromWhatWasAskedLast) {
  State.IcomActive = true;
  for (int click = 0; click < 3; ++click) {
    Commands.cmdAGC_Click();
    Commands.cmdSpeed_Click();
    State.AgcSetting = 1;  // an answer that is older than the click
    State.ScopeSpeed = 0;
  }
  EXPECT_EQ(Sender.Take(), "161202 | 271A0001 | 161203 | 271A0002 | 161201 | 271A0000");
  Pass(1s);
  Commands.cmdAGC_Click();
  EXPECT_EQ(Sender.Take(), "161202") << "the radio's word, when it has had its time";
}

}  // namespace
}  // namespace spectrino::test
