// A run cycle on a table: fake clock, fake inputs, recorded frames and messages, settings in memory.
#pragma once

#include <cmath>
#include <numbers>

#include "fakes/FakeClock.h"
#include "fakes/FakeRig.h"
#include "fakes/FakeSoundInput.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/RadioSources.h"
#include "fakes/Recorders.h"
#include "run/RunCycle.h"

namespace spectrino {

struct RunBench {
  RunBench() {
    State.Settings.Source.Name = "Card";
    State.Settings.Bits = 2;   // N = 1024
    State.Settings.SRate = 3;  // 48000
    State.Settings.Control = CatControl::RadioDirect;
    State.Settings.HistoryDepth = 0;
    State.Settings.AutoLevel = false;
    for (int& reference : State.Settings.BandRef) reference = State.Settings.RefLevel;
    for (int& divisor : State.Settings.BandDivisor) divisor = State.Settings.RangeDivisor;
    Devices.InitDevices();
  }

  /// One block of N/4 stereo frames: a tone hz above the displayed centre (I = cos, Q = -sin).
  [[nodiscard]] static std::vector<std::int16_t> Tone(int points, int rate, double hz,
                                                      double amplitude = 8000) {
    std::vector<std::int16_t> block(static_cast<std::size_t>(points / 2));
    for (std::size_t i = 0; i < block.size() / 2; ++i) {
      const double phase = 2 * std::numbers::pi * hz / rate * static_cast<double>(i);
      block[2 * i] = static_cast<std::int16_t>(std::lround(amplitude * std::cos(phase)));
      block[2 * i + 1] = static_cast<std::int16_t>(std::lround(-amplitude * std::sin(phase)));
    }
    return block;
  }
  void Feed(double hz, int count = 1) {
    for (int i = 0; i < count; ++i) Input.Shared->Blocks.push_back(Tone(1024, 48000, hz));
  }
  std::chrono::milliseconds Step() {
    const auto wait = Cycle.Step();
    Time.Advance(wait);
    return wait;
  }
  /// Index of the strongest displayed point.
  [[nodiscard]] int PeakIndex() const {
    return static_cast<int>(std::max_element(Sink.DisplayLevel.begin(), Sink.DisplayLevel.end()) -
                            Sink.DisplayLevel.begin());
  }

  FakeClock Time;
  Session State;
  FakeSoundInput Input;
  MemorySettingsFile File;
  RecordingNotifier User;
  RecordingSink Sink;
  ScriptedPump Pump;
  StageTimes Times;
  SettingsStore Store{File, User};
  DeviceList Devices{{&Input}, kRadioSources};
  FakeKit HostKit{{CatWay::Host, CatWay::HostK3, CatWay::HostAndScope}};
  FakeKit RadioKit{{SourceKind::K4, SourceKind::K4D}};
  FakeRig& Host = HostKit.Rig;
  FakeRig& RadioRig = RadioKit.Rig;
  FakeScope& Radio = RadioKit.Scope;
  RunCycle Cycle{State, {Devices, Sink, Store, User, Pump, Time, Times, RigRouter({&HostKit, &RadioKit})}};
};

}  // namespace spectrino
