// Whatever an Icom's line may carry, up to the pixels: nothing crashes, no number leaves its type, no line is
// malformed, every one that is drawn has a place, and the next good frame is understood.
#include <algorithm>

#include "Picture.h"
#include "civ/CivDoubles.h"
#include "civ/IcomLink.h"
#include "civ/IcomModels.h"
#include "civ/IcomSession.h"
#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"

namespace {

using namespace spectrino;

constexpr int kMostPasses = 8;

/// A radio's line, and the program's way from it to its picture.
class Radio {
 public:
  Radio() { store_.SaveSetting("Spectrino", "Setup", "ICADDR", "94"); }
  void Connect() {
    link_.Close();
    // What still has to leave would be waited for in true time.
    while (session_.Closing()) {
      time_.Advance(std::chrono::milliseconds(20));
      session_.Pump();
    }
    state_ = CivState{};
    panel_.Told.clear();
    port_.Written.clear();
    fuzz::Require(link_.Open());
    // As a radio answers at the beginning.
    state_.RadioId = "94";
    state_.ScopeMaxLevel = 160;
    state_.SpectrumPoints = state_.ScopePoints = 475;
    picture_.BeginRun();
  }
  void Receive(std::span<const std::uint8_t> bytes) {
    port_.DataArrival(bytes);
    const std::size_t points = state_.ScopeLevels.empty() ? 0 : state_.ScopeLevels.size() - 1;
    // Before the first line there may be none, or as many as the model that was told has.
    fuzz::Require(points == 475 || points == 689 || (points == 0 && state_.ScopeSerial == 0));
    fuzz::Require(state_.ScopeWaveHex.size() <= 30 + 2 * 689);
    fuzz::Require(!state_.CivParserBusy && !state_.ScopeWaveBusy);
  }
  void ReceiveFrequency() {
    port_.DataArrival(test::Bytes("FD FD FE FE E0 94 03 00 00 23 14 00 FD"));
    fuzz::Require(state_.RadioFreqMHz == 14.23);
  }
  void Pass() {
    RadioState radio;
    radio.MainFreqMHz = state_.RadioFreqMHz;
    radio.RadioMode = IcomModeCode(state_.RadioModeIndex);
    picture_.Pass(radio);
  }

 private:
  test::FakeSerialPort port_;
  test::RecordingPanel panel_;
  MemorySettingsFile file_;
  RecordingNotifier user_;
  SettingsStore store_{file_, user_};
  FakeClock time_;
  ScriptedPump pump_;
  CivState state_;
  IcomParts parts_{port_, state_, panel_, store_, time_, pump_, user_};
  IcomSession session_{parts_};
  IcomLink link_{parts_, session_};
  fuzz::Picture picture_{link_};
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  fuzz::BeginPictures(argc, argv);
  return 0;
}

// data: pieces, each behind an eighth of its length, as a line of the scope takes 600 bytes; from E0 on, 0
// to 31.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Radio radio;
  radio.Connect();
  std::span<const std::uint8_t> rest(data, size);
  for (int pass = 0; pass < kMostPasses && rest.size() > 1; ++pass) {
    const std::size_t most = rest[0] < 0xE0 ? rest[0] * 8U : rest[0] - 0xE0U;
    const std::size_t length = std::min(most, rest.size() - 1);
    radio.Receive(rest.subspan(1, length));
    radio.Pass();
    rest = rest.subspan(1 + length);
  }
  radio.ReceiveFrequency();
  return 0;
}
