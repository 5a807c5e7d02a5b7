// Whatever an Icom's line may carry, up to the pixels: nothing crashes, no number leaves its type, and every
// line that is drawn has a place.
#include <algorithm>

#include "Picture.h"
#include "civ/CivDoubles.h"
#include "civ/IcomLink.h"
#include "civ/IcomModels.h"
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
    while (link_.Closing()) {
      time_.Advance(std::chrono::milliseconds(20));
      link_.Pump();
    }
    state_ = CivState{};
    panel_.Told.clear();
    port_.Written.clear();
    RadioState radio;
    fuzz::Require(link_.Open(radio));
    // As a radio answers at the beginning.
    state_.RadioId = "94";
    state_.ScopeMaxLevel = 160;
    state_.SpectrumPoints = state_.ScopePoints = 475;
    picture_.BeginRun();
  }
  void Receive(std::span<const std::uint8_t> bytes) { port_.DataArrival(bytes); }
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
  IcomLink link_{{port_, state_, panel_, store_, time_, pump_, user_}};
  fuzz::Picture picture_{link_};
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  fuzz::BeginPictures(argc, argv);
  return 0;
}

// data: pieces, each behind an eighth of its length: a line of the scope takes 600 bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Radio radio;
  radio.Connect();
  std::span<const std::uint8_t> rest(data, size);
  for (int pass = 0; pass < kMostPasses && rest.size() > 1; ++pass) {
    const std::size_t length = std::min<std::size_t>(rest[0] * 8, rest.size() - 1);
    radio.Receive(rest.subspan(1, length));
    radio.Pass();
    rest = rest.subspan(1 + length);
  }
  return 0;
}
