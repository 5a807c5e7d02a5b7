// Clicks, wheel and keys in; requests to the radio and to the window out.
#include "tuning/Tuner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/FakeClock.h"
#include "fakes/FakeRig.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class Tuning : public testing::Test, public TuningWindow {
 protected:
  Tuning() {
    Radio.MainFreqMHz = 14.2003;
    Radio.SubFreqMHz = 14.3;
    Radio.RadioMode = mode::kUsb;
    Radio.SubRadioMode = mode::kCw;
    Radio.OwnSpectrum = true;
    Settings.StepHz = {10, 25, 100, 5};
  }
  void ToggleFullScreen() override { Note("full screen"); }
  void StepZoom(int direction, bool wraps) override {
    Note("zoom " + std::to_string(direction) + (wraps ? " wraps" : ""));
  }
  void ZoomOff() override { Note("1X"); }
  void ToggleAutoLevel() override { Note("auto level"); }
  void RestartTraces() override { ++Restarts; }
  void RequestSpot() override { Note("spot"); }
  void Note(std::string what) { Rig.Requests.push_back(std::move(what)); }

  /// What was asked since the last call; the wheel's pace has passed.
  std::vector<std::string> Asked() {
    Time.Advance(1s);
    Tune.Pump();
    return std::exchange(Rig.Requests, {});
  }

  RadioState Radio;
  PanSettings Settings;
  FakeClock Time;
  FakeRig Rig;
  bool HasRig = true;
  bool Running = true;
  int Restarts = 0;
  RadioTraits Traits;
  Tuner Tune{{Radio, Settings, Time, *this, [this] { return HasRig ? &Rig : nullptr; },
              [this] { return Traits; }, [this] { return &Rig; },
              [this] { return Traits.OwnSpan ? &Rig : nullptr; }, [this] { return Running; }}};
};

TEST_F(Tuning, ClicksTuneTheirVfoAndUndoGoesBack) {
  Tune.Scope_MouseDown(ClickButton::Left, 14.25, false);
  EXPECT_EQ(Restarts, 1);
  EXPECT_THAT(Asked(), ElementsAre("A 14.250000 signal"));
  Tune.cmdUndo_Click();
  EXPECT_THAT(Asked(), ElementsAre("A 14.200300"));
  Tune.Scope_MouseDown(ClickButton::Right, 14.26, false);
  Tune.cmdUndo_Click();
  EXPECT_THAT(Asked(), ElementsAre("B 14.260000 signal", "B 14.300000"));
  EXPECT_EQ(Tune.WheelVfo(), Vfo::A) << "a click chooses the wheel's VFO for some back-ends only";
  Tune.EnterFrequency(Vfo::B, 7.1);
  Tune.EnterFrequency(Vfo::A, 0);
  EXPECT_THAT(Asked(), ElementsAre("remember", "B 7.100000"));
  Traits.StepMHz = 0;
  Tune.cmdUpDn_Click(0, 14.2);
  Tune.cmdUpDn_Click(1, 14.2);
  EXPECT_THAT(Asked(), ElementsAre("step 1 from 14.200000", "step -1 from 14.200000"));
  Traits.StepMHz = 0.05;
  Tune.cmdUpDn_Click(1, 14.2);
  EXPECT_THAT(Asked(), ElementsAre("A 14.150300"));
  Traits.ClickChoosesWheel = true;
  Tune.Scope_MouseDown(ClickButton::Right, 14.26, false);
  EXPECT_EQ(Tune.WheelVfo(), Vfo::B);
  Tune.Scope_MouseDown(ClickButton::Left, 14.26, false);
  EXPECT_EQ(Tune.WheelVfo(), Vfo::A);
  Asked();
  for (const bool rightEdge : {false, true}) Tune.Scope_MouseDown(ClickButton::Left, 0, rightEdge);
  Tune.Scope_MouseDown(ClickButton::Right, 0, true);
  EXPECT_THAT(Asked(), ElementsAre("zoom 1 wraps", "full screen")) << "outside the plot";
}

TEST_F(Tuning, OverAPassbandButtonsAndWheelChangeTheFilter) {
  HasRig = false;  // the frequency may be another way's, and lost
  Tune.SetPassbandDrag(PassbandDragMode::Main);
  Tune.Scope_MouseDown(ClickButton::Right, 14.25, false);
  Tune.WheelMoved(120, false);
  Tune.SetPassbandDrag(PassbandDragMode::Sub);
  Tune.Scope_MouseDown(ClickButton::Left, 14.25, false);
  Tune.WheelStep(-1, false);
  for (int i = 0; i < 9; ++i) Tune.WheelMoved(30, false);
  EXPECT_THAT(Asked(), ElementsAre("bandwidth A 50", "shift A 10", "bandwidth B -50", "shift B -10",
                                   "shift B 10", "shift B 10"));
  HasRig = true;
  Tune.KeyStep(1, false);
  EXPECT_THAT(Asked(), ElementsAre("A 14.200325")) << "keys tune wherever the pointer rests";
  EXPECT_EQ(Restarts, 0);
}

TEST_F(Tuning, ADraggedPassbandFollowsThePointerAtThePaceOfTheRadio) {
  const struct {
    PassbandGrip Grip;
    Vfo Receiver;
    int Mode;
    bool MiddleStays;
    double WidthHz;
    std::vector<std::string> Asked;
    double LowHz, HighHz;  ///< how far the edges went
  } drags[] = {
      {PassbandGrip::Middle, Vfo::A, mode::kUsb, false, 0, {"shift A 20", "shift A 100"}, 120, 120},
      {PassbandGrip::Middle, Vfo::B, mode::kLsb, false, 0, {"shift B -20", "shift B -100"}, 120, 120},
      {PassbandGrip::Middle, Vfo::A, mode::kCwReverse, false, 0, {"shift A -20", "shift A -100"}, 120, 120},
      {PassbandGrip::LowEdge,
       Vfo::A,
       mode::kLsb,
       true,
       2700,
       {"bandwidth A -10", "bandwidth A -30", "bandwidth A -210"},
       125,
       -125},
      {PassbandGrip::HighEdge,
       Vfo::B,
       mode::kUsb,
       true,
       0,
       {"bandwidth B 10", "bandwidth B 30", "bandwidth B 210"},
       -125,
       125},
      // A filter that begins at the dial: its other edge alone moves, and no narrower than 50 Hz.
      {PassbandGrip::HighEdge,
       Vfo::A,
       mode::kUsb,
       false,
       2700,
       {"bandwidth A 20", "bandwidth A 100"},
       0,
       120},
      {PassbandGrip::LowEdge, Vfo::A, mode::kLsb, false, 100, {"bandwidth A -20", "bandwidth A -30"}, 50, 0},
  };
  for (const auto& drag : drags) {
    Radio.RadioMode = Radio.SubRadioMode = drag.Mode;
    Rig.Reach.MiddleStays = drag.MiddleStays;
    Radio.MainBandwidthHz = Radio.SubBandwidthHz = drag.WidthHz;
    const Passband begun{100, 3000};
    Tune.GripPassband(drag.Grip, drag.Receiver, FilterPlace::Plot);
    for (const double hertz : {4.0, 21.0, -60.0, 80.0, 124.0}) {
      Tune.DragPassband(hertz);
      if (hertz == 4.0) Time.Advance(1s);
    }
    const Passband wanted = Tune.Drag().Wanted(begun);
    EXPECT_NEAR(wanted.LowHz - begun.LowHz, drag.LowHz, 5);
    EXPECT_NEAR(wanted.HighHz - begun.HighHz, drag.HighHz, 5);
    Tune.LetPassbandGo();
    EXPECT_EQ(Asked(), drag.Asked);
    Tune.DragPassband(500);
    EXPECT_THAT(Asked(), IsEmpty()) << "let go";
  }
}

TEST_F(Tuning, OnlyWhatTheRadioSetsIsGripped) {
  const auto grips = [this](FilterPlace place) {
    std::string which;
    for (const auto& [grip, name] :
         {std::pair{PassbandGrip::LowEdge, 'l'}, {PassbandGrip::Middle, 'm'}, {PassbandGrip::HighEdge, 'h'}})
      if (Tune.MayGrip(grip, Vfo::A, place)) which += name;
    return which;
  };
  Radio.MainBandwidthHz = 2700;
  EXPECT_EQ(grips(FilterPlace::Plot), "mh") << "the low edge is the dial";
  Rig.Reach.MiddleStays = true;
  EXPECT_EQ(grips(FilterPlace::Plot), "lmh");
  Rig.Reach.Shift = false;
  EXPECT_EQ(grips(FilterPlace::Plot), "lh");
  Rig.Reach.Width = false;
  EXPECT_EQ(grips(FilterPlace::Plot), "");
  Rig.Reach = {true, true, true};
  HasRig = false;
  EXPECT_EQ(grips(FilterPlace::Plot), "") << "not heard";
  EXPECT_EQ(grips(FilterPlace::MiniPan), "lmh") << "its own radio is";
  Running = false;
  EXPECT_EQ(grips(FilterPlace::MiniPan), "");
}

TEST_F(Tuning, ANotchStepsByTheModeAndSnaps) {
  const struct {
    int Mode;
    double FromMHz;
    int Direction;
    bool Fast, Reverse, Tenfold;
    const char* Sent;
    double Kept;
  } cases[] = {{mode::kUsb, 14.2003, 1, false, false, false, "A 14.200325", 14.200325},
               {mode::kAm, 14.20033, 1, false, false, false, "A 14.200400", 14.20043},
               {11, 14.2, -1, false, false, false, "A 14.199900", 14.1999},
               {mode::kCwReverse, 14.2, 1, false, true, false, "A 14.199990", 14.19999},
               {mode::kDataReverse, 14.2, 1, true, false, false, "A 14.200050", 14.20005},
               {mode::kData, 14.2, 1, true, false, true, "A 14.200050", 14.20005},
               {mode::kData, 14.2, 1, false, false, true, "A 14.200050", 14.20005},
               {mode::kUnknown, 14.2, 1, false, false, false, "", 14.2},
               {8, 14.2, 1, false, false, false, "", 14.2},
               {mode::kUsb, 0, 1, false, false, false, "", 0},
               {mode::kUsb, 0.00001, -1, false, false, false, "", 0.00001},
               {mode::kUsb, 999999.99999, 1, true, false, false, "", 999999.99999}};
  for (const auto& c : cases) {
    Radio.RadioMode = c.Mode;
    Radio.MainFreqMHz = c.FromMHz;
    Settings.WheelInverted = c.Reverse;
    Tune.KeyPress(c.Fast ? 'f' : 's');
    Tune.WheelStep(c.Direction, c.Tenfold);
    const auto asked = Asked();
    EXPECT_EQ(asked.empty() ? "" : asked.front(), c.Sent);
    EXPECT_NEAR(Radio.MainFreqMHz, c.Kept, 1e-9);
  }
}

TEST_F(Tuning, ATurnedDigitIsPacedAsTheWheelAndStaysAboveZero) {
  Traits.HasVfoB = true;
  Settings.WheelInverted = true;
  Radio.MainFreqMHz = 9.9995;
  for (int step = 0; step < 9; ++step) Tune.TurnDigit(Vfo::A, 1000);
  EXPECT_NEAR(Radio.MainFreqMHz, 10.0085, 1e-9) << "shown at once";
  EXPECT_THAT(Asked(), ElementsAre("A 10.000500", "A 10.008500")) << "the last one always goes out";
  Tune.TurnDigit(Vfo::A, -1e7);
  Tune.TurnDigit(Vfo::A, 1);
  Tune.TurnDigit(Vfo::B, -1e7);
  EXPECT_THAT(Asked(), ElementsAre("A 0.008501", "B 4.300000")) << "and what waited for A left before B";
  Time.Advance(1s);
  Radio.MainFreqMHz = 0.9;
  Tune.TurnDigit(Vfo::A, -1e6);
  Traits.HasVfoB = false;
  Tune.TurnDigit(Vfo::B, 1e6);
  HasRig = false;
  Tune.TurnDigit(Vfo::A, 1);
  EXPECT_THAT(Asked(), IsEmpty());
  EXPECT_EQ(Radio.MainFreqMHz, 0.9);
}

TEST_F(Tuning, NothingMovesWithoutARunARadioOrAStep) {
  const auto everything = [this] {
    Tune.Scope_MouseDown(ClickButton::Left, 14.25, false);
    Tune.WheelMoved(120, false);
    Tune.WheelStep(1, false);
    Tune.cmdUndo_Click();
    Tune.cmdUpDn_Click(0, 14.2);
  };
  Running = false;
  everything();
  Running = true;
  HasRig = false;
  everything();
  HasRig = true;
  Settings.StepHz = {0, 0, 0, 0};
  Tune.WheelStep(1, false);
  Tune.TuneTo(-1);
  Tune.TuneTo(1e7);
  Tune.cmdUndo_Click();
  EXPECT_THAT(Asked(), IsEmpty());
  EXPECT_EQ(Radio.MainFreqMHz, 14.2003);
}

TEST_F(Tuning, AFastWheelNeverLagsAndLosesNoNotch) {
  // 50 notches a second; the radio reports each frequency 80 ms after it was asked for.
  Radio.MainFreqMHz = 14.2;
  std::vector<std::pair<int, double>> reports;
  std::size_t seen = 0;
  for (int ms = 0; ms < 1100; ++ms) {
    if (ms < 1000 && ms % 20 == 0) Tune.WheelMoved(120, false);
    Tune.Pump();
    for (; seen < Rig.Requests.size(); ++seen)
      reports.emplace_back(ms + 80, std::stod(Rig.Requests[seen].substr(2)));
    for (const auto& [at, mhz] : reports)
      if (at == ms) Radio.MainFreqMHz = mhz;
    Tune.Refreshed();
    if (ms == 1020) {
      EXPECT_NEAR(Radio.MainFreqMHz, 14.2 + 50 * 25e-6, 1e-9) << "the dial does not jump back";
    }
    Time.Advance(1ms);
  }
  EXPECT_EQ(Rig.Requests.back(), "A 14.201250");
  EXPECT_LT(Rig.Requests.size(), 36U);
  EXPECT_LT(reports.back().first - 80, 980 + 100) << "the last one left within 100 ms of the last notch";
}

TEST_F(Tuning, ChangingTheVfoSendsWhatWaited) {
  Radio.MainFreqMHz = 14.5;
  Tune.WheelStep(1, false);
  EXPECT_THAT(Asked(), ElementsAre("A 14.500025"));
  Radio.MainFreqMHz = 14.2003;  // what is reported counts once the wheel rests
  Tune.WheelStep(1, false);
  Tune.WheelStep(1, false);
  Tune.KeyPress('b');
  Tune.WheelStep(1, false);
  EXPECT_THAT(Asked(), ElementsAre("A 14.200325", "A 14.200350", "B 14.300010"));
  Traits.HasVfoB = false;
  Tune.WheelStep(1, false);
  EXPECT_THAT(Asked(), ElementsAre("A 14.200375")) << "a radio without a VFO B turns A";
  Time.Advance(1s);
  Tune.WheelStep(1, false);
  Tune.WheelStep(1, false);
  Tune.RunEnded();
  EXPECT_EQ(Asked().size(), 1U) << "what waited when the run ended is dropped";
}

TEST_F(Tuning, AClickOnOneVfoLeavesTheOthersLastNotchOnTheWay) {
  Tune.KeyPress('b');
  Tune.WheelStep(1, false);
  Tune.WheelStep(1, false);
  Tune.Scope_MouseDown(ClickButton::Left, 14.25, false);
  EXPECT_THAT(Asked(), ElementsAre("B 14.300010", "B 14.300020", "A 14.250000 signal"));
  Tune.KeyPress('a');
  Tune.WheelStep(1, false);
  Tune.Retuning();
  Radio.MainFreqMHz = 7.1;
  Tune.WheelStep(1, false);
  EXPECT_EQ(Asked().back(), "A 7.100025") << "the new band counts at once";
}

TEST_F(Tuning, ATouchpadsFineMovementsAddUpToNotches) {
  for (int i = 0; i < 10; ++i) Tune.WheelMoved(15, false);  // one notch and a quarter
  EXPECT_EQ(Asked().size(), 1U);
  Tune.WheelMoved(100, false);  // after a rest, from zero
  EXPECT_THAT(Asked(), IsEmpty());
  Tune.WheelMoved(110, false);
  Tune.WheelMoved(-110, false);  // turned: from zero
  Tune.WheelMoved(-20, false);
  EXPECT_EQ(Asked().size(), 1U);
  Tune.WheelMoved(360, false);
  EXPECT_THAT(Asked(), ElementsAre("A 14.200375"));
}

TEST_F(Tuning, KeysDoWhatTheTableSays) {
  Traits.OwnSpan = true;
  for (const char key : {'+', '-', '\x1b', 'p', 'P', 'z'}) EXPECT_TRUE(Tune.KeyPress(key)) << key;
  EXPECT_THAT(Asked(), ElementsAre("span 1", "span -1", "full screen", "spot", "spot"));
  Traits.OwnSpan = false;
  Radio.OwnSpectrum = false;
  for (const char key : {'+', '-', 'z', 'v'}) EXPECT_TRUE(Tune.KeyPress(key)) << key;
  EXPECT_THAT(Asked(), ElementsAre("zoom 1", "zoom -1", "1X", "auto level"));
  Tune.KeyPress('B');
  Tune.KeyPress('F');
  EXPECT_EQ(Tune.WheelVfo(), Vfo::B);
  EXPECT_TRUE(Tune.WheelFast());
  EXPECT_FALSE(Tune.KeyPress('x'));
  EXPECT_FALSE(Tune.KeyPress('\xe4'));
}

}  // namespace
}  // namespace spectrino
