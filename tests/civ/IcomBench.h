// A session with an Icom on a port and a clock of the test's own.
#pragma once

#include <gtest/gtest.h>

#include "civ/CivDoubles.h"
#include "civ/IcomBackend.h"
#include "civ/IcomLink.h"
#include "civ/IcomSession.h"
#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"

namespace spectrino::test {

using namespace std::chrono_literals;

struct CivBench : ::testing::Test {
  /// Every frame that leaves within the time, a look each millisecond.
  template <typename Sender>
  std::vector<std::string> Sent(Sender& link, std::chrono::milliseconds time) {
    for (auto left = time; left > 0ms; left -= 1ms) {
      Time.Advance(1ms);
      link.Pump();
    }
    return Port.Take();
  }
  FakeSerialPort Port;
  CivState State;
  RecordingPanel Panel;
  FakeClock Time;
  RecordingNotifier User;
};

struct IcomBench : CivBench {
  IcomBench() { File.Files["Spectrino"] = "[Setup]\nPort=3\nICADDR= a4 \n[Ports]\n3=/dev/radio\n"; }
  MemorySettingsFile File;
  SettingsStore Store{File, User};
  ScriptedPump Pump;
  RadioState Radio;
  SpectrumLine Line;
  IcomParts Parts{Port, State, Panel, Store, Time, Pump, User};
  IcomSession Session{Parts};
  IcomLink Link{Parts, Session};
  IcomCommands Commands{State, Session.Sender(), Pump, Time};
  BandMemory Memory = LoadBandMemory(Store);
  IcomBackend Backend{State, Session, Commands, Store, Memory};
};

}  // namespace spectrino::test
