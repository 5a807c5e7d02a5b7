// Whatever a K4 may send on both of its connections, up to the pixels: nothing crashes, no number leaves its
// type, and every line that is drawn has a place.
#include <algorithm>
#include <string>
#include <string_view>

#include "Picture.h"
#include "k4/CatParser.h"
#include "k4/K4Backend.h"
#include "k4/K4Link.h"
#include "k4/PanFrames.h"
#include "k4/RecordingPanel.h"
#include "k4/SessionBench.h"

namespace {

using namespace spectrino;

constexpr int kMostPasses = 8;
constexpr std::size_t kFrameFieldBytes = 23;  // letter, span, centre, reference

/// A radio's connections, and the program's way from them to its picture.
class Radio {
 public:
  void Connect() {
    session_.Stop();
    bench_.Events.clear();
    bench_.State = K4State{};
    panel_.Moves.clear();
    bench_.State.K4Active = bench_.State.MinipanOn = true;
    bench_.WSCat.Connected();
    bench_.WSPan.Connected();
    // As a radio answers at the beginning.
    bench_.WSCat.Receive("#SCL070;#SPN50000;MD2;MD$3;SB1;FA00014074000;FB00014080000;BW0270;IS 0150;");
    picture_.BeginRun();
  }
  void Preset(int preset) { bench_.State.K4SpanPreset = preset; }
  void Reply(std::string_view text) { bench_.WSCat.Receive(text); }
  void Stream(std::span<const std::uint8_t> bytes) { bench_.WSPan.DataArrival(bytes); }
  void Pass() {
    RadioState radio;
    TellRadioState(bench_.State, radio);
    picture_.Pass(radio, status_.Area(bench_.State));
  }

 private:
  test::SessionBench bench_;
  RecordingPanel panel_;
  K4Status status_;
  K4Session session_{{bench_.State,
                      bench_.WSCat,
                      bench_.WSPan,
                      bench_.Store,
                      bench_.View,
                      bench_.Retry,
                      bench_.User,
                      bench_.Pump,
                      bench_.Time,
                      [this](std::string& text) { ParseK4Replies(text, bench_.State, panel_); },
                      {}}};
  K4Link link_{bench_.State, session_, status_, bench_.User, bench_.Time};
  fuzz::Picture picture_{link_};
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  fuzz::BeginPictures(argc, argv);
  return 0;
}

// data: preset, then pieces: what it is (replies, a whole frame by its fields and one level, or bytes of the
// stream), how long it is, and so many bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static Radio radio;
  radio.Connect();
  radio.Preset(data[0] % 3);
  std::span<const std::uint8_t> rest(data + 1, size - 1);
  for (int pass = 0; pass < kMostPasses && rest.size() > 2; ++pass) {
    const int kind = rest[0] % 3;
    const std::size_t length = std::min<std::size_t>(rest[1], rest.size() - 2);
    const auto piece = rest.subspan(2, length);
    rest = rest.subspan(2 + length);
    if (kind == 0) {
      radio.Reply({reinterpret_cast<const char*>(piece.data()), piece.size()});
    } else if (kind == 1 && length > kFrameFieldBytes) {
      test::FrameFields fields;
      const int level = piece[kFrameFieldBytes] * 256;
      fields.Level = [level](int sample) { return level - sample * 7; };
      test::Bytes frame = test::PanFrame(fields);
      std::copy_n(piece.begin(), kFrameFieldBytes, frame.begin() + 6);
      radio.Stream(frame);
    } else {
      radio.Stream(piece);
    }
    radio.Pass();
  }
  return 0;
}
