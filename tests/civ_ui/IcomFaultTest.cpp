// What goes wrong between the program and an Icom, with the real port, the real kit and a simulated radio
// behind a pseudo-terminal: how soon the user is told, and how soon it works again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "adapters/qt/QtEventPump.h"
#include "adapters/qt/QtSerialPort.h"
#include "civ/ui/IcomKit.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"
#include "sim/icom/IcomSimPort.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;
using Seconds = std::chrono::duration<double>;

/// The program's end and the radio's, on one event loop.
class Station {
 public:
  explicit Station(const IcomSimSetup& setup)
      : radio_(setup, (folder_.path() + "/radio").toStdString(), clock_.Now()) {
    file_.Files["Spectrino"] =
        "[Setup]\nPort=1\nICADDR=94\n[Ports]\n1=" + (folder_.path() + "/radio").toStdString() + "\n";
    QObject::connect(&tmrRadio_, &QTimer::timeout, [this] { radio_.Process(clock_.Now()); });
    QObject::connect(&tmrPass_, &QTimer::timeout, [this] { Pass(); });
    tmrRadio_.start(2);
  }
  void Start() {
    ASSERT_TRUE(kit_.Link()->Open());
    kit_.RunChanged(true);
    tmrPass_.start(5);
  }
  void Stop() {
    tmrPass_.stop();
    kit_.Link()->Close();
    kit_.RunChanged(false);
  }
  [[nodiscard]] bool PlugIn() {
    std::string reason;
    return radio_.Open(reason);
  }
  void SetFault(bool IcomSimFaults::*fault, bool on) {
    IcomSimFaults faults;
    faults.*fault = on;
    radio_.Radio().SetFaults(faults);
  }
  /// What the window shows beside the picture.
  [[nodiscard]] std::string Told() {
    const std::string health = HealthText(kit_.Health(), kit_.Model(), clock_.Now());
    return !health.empty() || user_.Statuses.empty() ? health : user_.Statuses.back();
  }
  /// Whether it was shown after any pass since Forget(): some of it stands for a tenth of a second only.
  [[nodiscard]] bool WasTold(const std::string& text) const {
    return std::ranges::any_of(
        shown_, [&](const std::string& shown) { return shown.find(text) != std::string::npos; });
  }
  void Forget() { shown_.clear(); }
  [[nodiscard]] bool LinesCome() { return std::exchange(linesSeen_, lines_) != lines_ && Told().empty(); }

  QTemporaryDir folder_;
  SystemClock clock_;
  IcomSimPort radio_;
  MemorySettingsFile file_;
  RecordingNotifier user_;
  SettingsStore store_{file_, user_};
  PanSettings settings_;
  QtEventPump pump_;
  IcomKit kit_{{store_, settings_, user_, pump_, clock_, [] { return false; }},
               std::make_unique<QtSerialPort>()};
  RadioState state_;
  int slowPasses_ = 0;  ///< longer than a busy machine may keep one away from the processor
  bool everSilent_ = false;

 private:
  void Pass() {
    const auto began = clock_.Now();
    if (kit_.Link()->Source().Poll({}, line_) == PollResult::Line) ++lines_;
    kit_.Backend().Refresh(state_);
    if (clock_.Now() - began > 150ms) ++slowPasses_;
    everSilent_ = everSilent_ || kit_.Health().State == LinkState::Silent;
    if (shown_.empty() || shown_.back() != Told()) shown_.push_back(Told());
  }

  QTimer tmrRadio_;
  QTimer tmrPass_;
  SpectrumLine line_;
  int lines_ = 0;
  int linesSeen_ = 0;
  std::vector<std::string> shown_;
};

struct Fault {
  const char* Name;
  void (*Break)(Station&);
  const char* Told;
  void (*Mend)(Station&);
  bool FromStart = false;  ///< it is there when Start is pressed
  bool Answers = false;    ///< the radio is never silent
};

// A terminal taken in between gives the radio another number when it comes back.
void PlugInElsewhere(Station& station) {
  static std::unique_ptr<IcomSimPort> other;
  std::string reason;
  other = std::make_unique<IcomSimPort>(IcomSimSetup{}, "", SimTime{});
  ASSERT_TRUE(other->Open(reason));
  ASSERT_TRUE(station.PlugIn());
  EXPECT_NE(station.radio_.TerminalPath(), other->TerminalPath());
  other.reset();
}

const Fault kFaults[] = {
    {"off and on", [](Station& s) { s.radio_.Radio().SwitchPower(false); }, "IC-7300 silent for 3 s",
     [](Station& s) { s.radio_.Radio().SwitchPower(true); }},
    {"cable pulled", [](Station& s) { s.radio_.Unplug(); }, "was unplugged. Trying again in",
     PlugInElsewhere},
    {"port missing at Start", [](Station& s) { s.radio_.Unplug(); }, "/radio is not there: is the cable in",
     PlugInElsewhere, true},
    {"silent", [](Station& s) { s.SetFault(&IcomSimFaults::Silent, true); }, "IC-7300 silent for 3 s",
     [](Station& s) { s.SetFault(&IcomSimFaults::Silent, false); }},
    {"silent at Start", [](Station& s) { s.SetFault(&IcomSimFaults::Silent, true); },
     "silent for 3 s: no answer from CI-V address 94",
     [](Station& s) { s.SetFault(&IcomSimFaults::Silent, false); }, true},
    {"wrong baud rate", [](Station& s) { s.SetFault(&IcomSimFaults::WrongBaud, true); },
     "IC-7300 silent for 3 s", [](Station& s) { s.SetFault(&IcomSimFaults::WrongBaud, false); }},
    {"lines lost", [](Station& s) { s.radio_.Radio().StopScopeData(); }, "its scope sends nothing",
     [](Station&) {}, false, true},
    {"only FA", [](Station& s) { s.SetFault(&IcomSimFaults::Refusing, true); }, "its scope sends nothing",
     [](Station& s) { s.SetFault(&IcomSimFaults::Refusing, false); }, false, true},
    {"only FA at Start", [](Station& s) { s.SetFault(&IcomSimFaults::Refusing, true); },
     "does not say which model it is", [](Station& s) { s.SetFault(&IcomSimFaults::Refusing, false); }, true,
     true},
};

class IcomFaults : public testing::TestWithParam<Fault> {};

/// Seconds until it holds, 20 at most.
template <typename Condition>
double SecondsUntil(Condition holds) {
  const auto began = std::chrono::steady_clock::now();
  EXPECT_TRUE(QTest::qWaitFor(holds, 20000));
  return Seconds(std::chrono::steady_clock::now() - began).count();
}

TEST_P(IcomFaults, AreToldAndMended) {
  const Fault& fault = GetParam();
  Station station({});
  auto* fixed = station.kit_.Panel()->findChild<QAbstractButton*>("chkFIX");
  if (!station.PlugIn()) GTEST_SKIP() << "no pseudo-terminals here";
  if (fault.FromStart) {
    fault.Break(station);
    station.Start();
  } else {
    station.Start();
    SecondsUntil([&] { return station.LinesCome(); });
    fixed->click();
    QTest::qWait(1200);  // the states of the panel, 10 ms apart
    station.Forget();
    fault.Break(station);
  }
  const double told = SecondsUntil([&] { return station.WasTold(fault.Told); });
  EXPECT_LT(told, 4.5) << "3 s, and what a busy machine adds";
  EXPECT_LE(station.user_.Logged.size(), 1U);
  fault.Mend(station);
  const double back = SecondsUntil([&] { return station.LinesCome(); });
  EXPECT_LT(back, 5) << station.Told();
  QTest::qWait(1200);
  EXPECT_TRUE(station.LinesCome()) << station.Told();
  EXPECT_EQ(fixed->isChecked(), !fault.FromStart) << "the operator's choice stands";
  EXPECT_EQ(station.kit_.Model(), "IC-7300");
  EXPECT_GT(station.state_.MainFreqMHz, 14);
  EXPECT_TRUE(!fault.Answers || !station.everSilent_);
  EXPECT_LE(station.slowPasses_, 2) << "passes wait";
  RecordProperty("secondsToMessage", std::to_string(told));
  RecordProperty("secondsToRecovery", std::to_string(back));
  std::printf("%-22s told after %.2f s, back %.2f s after it was mended\n", fault.Name, told, back);
  station.Stop();
}

INSTANTIATE_TEST_SUITE_P(Table, IcomFaults, testing::ValuesIn(kFaults),
                         [](const testing::TestParamInfo<Fault>& fault) {
                           std::string name = fault.param.Name;
                           std::erase(name, ' ');
                           return name;
                         });

TEST(IcomLinkTrouble, AnUnknownModelIsToldOnceAndCanBeTuned) {
  Station station({.Identity = 0x77});
  if (!station.PlugIn()) GTEST_SKIP() << "no pseudo-terminals here";
  station.Start();
  const double told =
      SecondsUntil([&] { return station.Told().find("model 77 is not known") != std::string::npos; });
  EXPECT_LT(told, 3);
  QTest::qWait(3500);
  EXPECT_EQ(station.user_.Statuses.size(), 1U);
  EXPECT_EQ(station.kit_.Model(), "ICOM?");
  station.kit_.Backend().SetFrequency(Vfo::A, 7.1, Aim::Dial);
  SecondsUntil([&] { return station.state_.MainFreqMHz == 7.1; });
  std::printf("%-22s told after %.2f s\n", "unknown model", told);
  station.Stop();
}

TEST(IcomLinkTrouble, StopEndsARetryAtOnceAndStartBeginsAgain) {
  Station station({});
  if (!station.PlugIn()) GTEST_SKIP() << "no pseudo-terminals here";
  station.Start();
  SecondsUntil([&] { return station.LinesCome(); });
  station.radio_.Unplug();
  SecondsUntil([&] { return !station.Told().empty(); });
  const auto began = std::chrono::steady_clock::now();
  station.Stop();
  const Seconds stopped = std::chrono::steady_clock::now() - began;
  EXPECT_LT(stopped, 50ms);
  EXPECT_EQ(station.Told(), "");
  ASSERT_TRUE(station.PlugIn());
  QTest::qWait(2000);
  EXPECT_THAT(station.user_.Logged, testing::SizeIs(1)) << "nothing was tried any more";
  // And a Start right behind a Stop, while the last words of the run before still leave.
  station.Start();
  SecondsUntil([&] { return station.LinesCome(); });
  station.Stop();
  station.Start();
  EXPECT_EQ(station.kit_.Health().State, LinkState::Live);
  SecondsUntil([&] { return station.LinesCome(); });
  std::printf("%-22s Stop took %.1f ms\n", "Stop during a retry", 1000 * stopped.count());
  station.Stop();
}

// The radio's answer to one step comes while the next ones are made.
TEST(IcomLinkTrouble, EveryStepOfASliderCounts) {
  Station station({});
  if (!station.PlugIn()) GTEST_SKIP() << "no pseudo-terminals here";
  station.Start();
  SecondsUntil([&] { return station.LinesCome(); });
  QTest::qWait(1200);
  auto* slider = station.kit_.Panel()->findChild<QSlider*>("sldRFLevel");
  for (const auto& [key, steps] : {std::pair{Qt::Key_Right, 12}, std::pair{Qt::Key_Left, 5}}) {
    const int before = slider->value();
    const int sign = key == Qt::Key_Right ? 1 : -1;
    for (int i = 0; i < steps; ++i) {
      QTest::keyClick(slider, key);
      QTest::qWait(15 + 10 * (i % 4));
    }
    EXPECT_EQ(slider->value(), before + sign * steps);
    QTest::qWait(1500);
    EXPECT_EQ(slider->value(), before + sign * steps) << "the radio took it";
    EXPECT_EQ(station.radio_.Radio().State().RefHalfDb, slider->value());
  }
  station.Stop();
}

}  // namespace
}  // namespace spectrino
