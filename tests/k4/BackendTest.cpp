// What an operator's request becomes on the K4's line, and what its state says to the rest of the program.
#include "k4/K4Backend.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/FakeClock.h"
#include "k4/RecordingPanel.h"

namespace spectrino {
namespace {

struct K4BackendTest : testing::Test {
  K4BackendTest() {
    State.K4Connected = true;
    State.MainFreqMHz = 14.2;
    State.FilterBwMainHz = 2700;
    State.FilterBwSubHz = 400;
    State.IfShiftMainHz = 1350;
    State.IfShiftSubHz = 600;
    State.PanSpanMHz = 0.05;
  }
  K4State State;
  PanelBench Bench{State};
  BandMemory Memory;
  FakeClock& Time = Bench.Time;
  K4Backend Backend{State, Bench.Sender, Bench.Dial, Bench.Commands, Bench.Store, Memory, Time};
};

TEST_F(K4BackendTest, EachRequestIsItsCommand) {
  using B = K4Backend;
  const struct {
    void (*Ask)(B&);
    const char* Sent;
    const char* SentWithBset;
  } rows[] = {
      {[](B& b) { b.SetFrequency(Vfo::A, 7.0105, Aim::Dial); }, "FA00007010500;", "FA00007010500;"},
      {[](B& b) { b.SetFrequency(Vfo::B, 14.074, Aim::Dial); }, "FB00014074000;", "FB00014074000;"},
      {[](B& b) { b.SelectBand(1); }, "BN00;", "BN$00;"},
      {[](B& b) { b.SelectBand(11); }, "BN10;", "BN$10;"},
      {[](B& b) { b.SelectBand(0); }, "", ""},
      {[](B& b) { b.SelectBand(12); }, "", ""},
      {[](B& b) {
         b.SelectMode({3, false});
       },
       "MD7; MD; MD$; DT; DT$;", "MD$7; MD; MD$; DT; DT$;"},
      {[](B& b) { b.SendMacro("SWT16;SWT20"); }, "SWT16;SWT20;", "SWT16;SWT20;"},
      {[](B& b) { b.ChangeBandwidth(Vfo::A, 50); }, "BW275; BW;", "BW275; BW;"},
      {[](B& b) { b.ChangeBandwidth(Vfo::B, -500); }, "BW$0; BW$;", "BW$0; BW$;"},
      {[](B& b) { b.ShiftPassband(Vfo::A, -50); }, "IS0130; IS;", "IS0130; IS;"},
      {[](B& b) { b.ShiftPassband(Vfo::B, 100); }, "IS$0070; IS$;", "IS$0070; IS$;"},
      {[](B& b) { b.StepSpan(+1); }, "#SPN55000;", "#SPN55000;"},
      {[](B& b) { b.StepSpan(-1); }, "#SPN45000;", "#SPN45000;"},
  };
  for (const auto& row : rows) {
    State.RxSuffix = "";
    row.Ask(Backend);
    EXPECT_EQ(Bench.Log(), row.Sent) << "row " << &row - rows;
    State.RxSuffix = "$";
    State.IfShiftMainHz = 1350;
    State.IfShiftSubHz = 600;
    Time.Advance(std::chrono::seconds(1));
    row.Ask(Backend);
    EXPECT_EQ(Bench.Log(), row.SentWithBset) << "row " << &row - rows;
  }
}

TEST_F(K4BackendTest, ATurningWheelCountsOnFromItsOwnShift) {
  Backend.ShiftPassband(Vfo::A, 50);
  State.IfShiftMainHz = 1350;  // the radio still answers the notch before
  Backend.ShiftPassband(Vfo::A, 50);
  EXPECT_EQ(Bench.Log(), "IS0140; IS; IS0145; IS;");
}

TEST_F(K4BackendTest, ABurstOfFrequenciesIsAskedForOnce) {
  RadioState radio;
  for (int notch = 1; notch <= 10; ++notch) {
    Backend.SetFrequency(Vfo::A, 14.2 + notch * 1e-5, Aim::Dial);
    if (notch == 4) Backend.SetFrequency(Vfo::B, 7.1, Aim::Signal);
    Time.Advance(std::chrono::milliseconds(30));
    Backend.Refresh(radio);
  }
  EXPECT_EQ(std::ranges::count(Bench.Sender.Sent, "FA;"), 0);
  EXPECT_EQ(std::ranges::count(Bench.Sender.Sent, "FB;"), 1) << "it was set 210 ms ago";
  static_cast<void>(Bench.Log());
  Time.Advance(std::chrono::milliseconds(169));
  Backend.Refresh(radio);
  EXPECT_EQ(Bench.Log(), "");
  for (int pass = 0; pass < 5; ++pass) {
    Time.Advance(std::chrono::milliseconds(pass == 0 ? 1 : 500));
    Backend.Refresh(radio);
  }
  EXPECT_EQ(Bench.Log(), "FA;");
}

TEST_F(K4BackendTest, TheProgramIsToldWhatTheRadioTells) {
  State.SMeterMain = 54;  // S9
  State.RadioMode = mode::kCw;
  State.SubRadioMode = mode::kLsb;
  State.IfShiftMainHz = 750;
  State.IfShiftSubHz = 1500;
  State.CwPitchHz = 700;
  State.NotchManualMain = 1;
  State.NotchPitchMain = 800;
  State.Transmitting = 1;
  RadioState radio;
  Backend.Refresh(radio);
  EXPECT_EQ(radio.SMeterDbm, -73);
  EXPECT_EQ(radio.MainShiftHz, 50);
  EXPECT_EQ(radio.SubShiftHz, 1500);
  EXPECT_EQ(radio.MainNotchHz, 100);
  EXPECT_EQ(radio.SubNotchHz, std::nullopt);
  EXPECT_EQ(radio.PitchHz, 700);
  EXPECT_TRUE(radio.SMeterTold && radio.Transmitting);
}

}  // namespace
}  // namespace spectrino
