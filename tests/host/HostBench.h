// A host's radio on a table: a socket that keeps what it is sent, a server made of the test's own answers.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"
#include "host/HostBackend.h"

namespace spectrino::test {

class ScriptedSocket final : public ByteSocket {
 public:
  void Connect(const std::string&, std::uint16_t) override { ++Attempts; }
  void Close() override {}
  void Send(std::string_view bytes) override { Sent.emplace_back(bytes); }
  void Receive(std::string_view text) {
    DataArrival({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
  }

  std::vector<std::string> Sent;
  int Attempts = 0;
};

inline constexpr const char* kDump =
    "dump_caps: currVFO\nCaps dump for model: 1\nModel name:\tDummy\nMfg name:\tHamlib\n"
    "Has targetable VFO: Y\nGet functions: NB \nGet level: SWATT(0..0/0) \nCan get PTT:\tN\n";

/// As a rigctld answers for VFO A or B.
inline std::string VfoInfo(const char* vfo, long freqHz, const char* mode, int split = 0) {
  return std::string("get_vfo_info: currVFO ") + vfo + "\nFreq: " + std::to_string(freqHz) +
         "\nMode: " + mode + "\nWidth: 2400\nSplit: " + std::to_string(split) + "\nSatMode: 0\nRPRT 0\n";
}

struct HostBench {
  FakeClock Time;
  MemorySettingsFile File;
  RecordingNotifier User;
  ScriptedPump Pump{&Time};
  SettingsStore Store{File, User, Time};
  PanSettings Settings;
  ScriptedSocket Socket;
  HostRadio Radio{Socket, Store, User, Time};
  HostBackend Backend{{Radio, Store, Settings, User, Pump, Time, {}, [](bool) {}}};
  RadioState State;

  void Accept(std::string_view caps = kDump) {
    Socket.Connected();
    Socket.Receive("set_vfo_opt: 1\nRPRT -11\nChkVFO: 1\n");
    Socket.Receive(std::string(caps) + "RPRT 0\n");
  }
  /// Found, VFO A at 14.074 MHz, VFO B at 14.08 MHz, with nothing on its way.
  void Begin(CatControl control, const char* mode = "USB", std::string_view caps = kDump) {
    Settings.Control = control;
    Pump.Meanwhile = [this, caps] {
      if (!Radio.Client().IsConnected()) Accept(caps);
    };
    ASSERT_TRUE(Backend.Open());
    Pump.Meanwhile = nullptr;
    Answer(VfoInfo("VFOA", 14074000, mode, 1));
    if (RowOf(control).Offset != OffsetRule::FixedCentre) Answer(VfoInfo("VFOB", 14080000, mode));
    Socket.Sent.clear();
    Backend.Refresh(State);
  }
  /// Lets the next read go out and answers it.
  void Answer(const std::string& text) {
    Pass(std::chrono::milliseconds(1000));
    Socket.Receive(text);
  }
  void Pass(std::chrono::milliseconds time) {
    Time.Advance(time);
    Backend.Tick();
  }
  [[nodiscard]] std::vector<std::string> TakeSent() { return std::exchange(Socket.Sent, {}); }
  void Pan(auto application, auto key, auto value) { Store.SaveSetting(application, "PAN", key, value); }
};

}  // namespace spectrino::test
