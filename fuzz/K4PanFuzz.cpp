// Any bytes on the panadapter connection, in any pieces: no crash, and no line that could not be drawn.
#include <algorithm>
#include <cstdlib>
#include <span>
#include <vector>

#include "k4/PanAssembler.h"
#include "k4/PanStream.h"

namespace {

using namespace spectrino;

void Require(bool condition) {
  if (!condition) std::abort();
}

void CheckLines(const K4State& state) {
  for (const K4PanChannel& channel : state.K4PanChannels) {
    Require(channel.Points >= 0 && channel.Points <= kPanFrameLevels);
    Require(channel.Serial == 0 || channel.Levels.size() == kPanFrameLevels + 1U);
    for (const std::int16_t level : channel.Levels) Require(level >= -3277 && level <= 3276);
  }
  Require(!state.K4PanBusy);
}

std::vector<std::uint8_t> FramesOf(std::span<const std::uint8_t> stream, std::size_t piece, K4State& state) {
  std::vector<std::uint8_t> frames;
  K4PanAssembler assembler([&](std::span<const std::uint8_t> run) {
    Require(!run.empty() && run.size() % kPanFrameBytes == 0);
    frames.insert(frames.end(), run.begin(), run.end());
    ParseK4PanFrames(run, state);
    CheckLines(state);
  });
  while (!stream.empty()) {
    const std::size_t size = std::min(piece, stream.size());
    assembler.Feed(stream.first(size));
    stream = stream.subspan(size);
  }
  return frames;
}

}  // namespace

// data: preset, mode, piece length (two bytes), then the stream. 0xFE in the stream stands for 512 bytes 0
// when followed by 0xED, so that short inputs reach whole frames.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 4) return 0;
  K4State state;
  state.PanScaleDb = 70;
  state.PanSpanMHz = 0.05;
  state.K4SpanPreset = data[0] % 3;
  state.RadioMode = state.SubRadioMode = data[1] % 10;
  const std::size_t piece = 1 + (static_cast<std::size_t>(data[2]) << 8 | data[3]);

  std::vector<std::uint8_t> stream;
  for (std::size_t i = 4; i < size && stream.size() < 16 * kPanFrameBytes; ++i) {
    if (data[i] == 0xFE && i + 1 < size && data[i + 1] == 0xED) {
      stream.insert(stream.end(), 512, 0);
      ++i;
    } else {
      stream.push_back(data[i]);
    }
  }
  K4State raw = state;
  ParseK4PanFrames(stream, raw);
  CheckLines(raw);

  K4State whole = state;
  const std::vector<std::uint8_t> atOnce = FramesOf(stream, stream.size() + 1, whole);
  Require(FramesOf(stream, piece, state) == atOnce);
  return 0;
}
