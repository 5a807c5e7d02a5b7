// Any bytes on the panadapter connection, in any pieces: no crash, and no line that could not be drawn.
#include <algorithm>
#include <span>
#include <vector>

#include "Require.h"
#include "k4/PanAssembler.h"
#include "k4/PanStream.h"

namespace {

using namespace spectrino;
using fuzz::Require;

constexpr std::size_t kMostFrames = 6;
constexpr std::size_t kShortPieces = 8;
constexpr std::size_t kLongPiece = 1500;

void CheckLines(const K4State& state) {
  for (const K4PanChannel& channel : state.K4PanChannels) {
    Require(channel.Points >= 0 && channel.Points <= kPanFrameLevels);
    if (channel.Serial == 0) continue;
    Require(channel.Levels.size() == kPanFrameLevels + 1U);
    Require(channel.CenterMHz > 0 && channel.SpanMHz < 1);
    const auto [least, most] = std::ranges::minmax(channel.Levels);
    Require(least >= -3277 && most <= 3276);
  }
  Require(!state.K4PanBusy);
}

/// Made once: what one stream needs is more than the system likes to hand out thousands of times a second.
class Frames {
 public:
  /// The frames of a stream that arrives in such pieces. state: gets their lines, if any.
  const std::vector<std::uint8_t>& Of(std::span<const std::uint8_t> stream, std::size_t piece,
                                      K4State* state) {
    state_ = state;
    frames_.clear();
    assembler_.Reset();
    // A few of that length, then one long: tiny pieces matter around heads, and not one after another for a
    // whole stream of levels.
    for (std::size_t n = 1; !stream.empty(); ++n) {
      const std::size_t size = std::min(n % kShortPieces == 0 ? kLongPiece : piece, stream.size());
      assembler_.Feed(stream.first(size));
      stream = stream.subspan(size);
    }
    return frames_;
  }

 private:
  void Take(std::span<const std::uint8_t> run) {
    Require(!run.empty() && run.size() % kPanFrameBytes == 0);
    frames_.insert(frames_.end(), run.begin(), run.end());
    if (state_ == nullptr) return;
    ParseK4PanFrames(run, *state_);
    CheckLines(*state_);
  }

  std::vector<std::uint8_t> frames_;
  K4State* state_ = nullptr;
  K4PanAssembler assembler_{[this](std::span<const std::uint8_t> run) { Take(run); }};
};

void Settle(K4State& state, const std::uint8_t* data) {
  state.PanScaleDb = 70;
  state.PanSpanMHz = 0.05;
  state.K4SpanPreset = data[0] % 3;
  state.RadioMode = state.SubRadioMode = data[1] % 10;
  for (K4PanChannel& channel : state.K4PanChannels) channel.Serial = 0;
}

}  // namespace

// data: preset, mode, piece length (two bytes), then the stream. 0xFE in the stream stands for 512 bytes 0
// when followed by 0xED, so that short inputs reach whole frames.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 4) return 0;
  static K4State state;
  static Frames atOnce;
  static Frames inPieces;
  static std::vector<std::uint8_t> stream;
  const std::size_t piece = 1 + (static_cast<std::size_t>(data[2]) << 8 | data[3]);
  stream.clear();
  for (std::size_t i = 4; i < size && stream.size() < kMostFrames * kPanFrameBytes; ++i) {
    if (data[i] == 0xFE && i + 1 < size && data[i + 1] == 0xED) {
      stream.insert(stream.end(), 512, 0);
      ++i;
    } else {
      stream.push_back(data[i]);
    }
  }
  // A read as it came, and as the session hands it on.
  Settle(state, data);
  ParseK4PanFrames(stream, state);
  CheckLines(state);
  Settle(state, data);
  Require(inPieces.Of(stream, piece, nullptr) == atOnce.Of(stream, stream.size() + 1, &state));
  return 0;
}
