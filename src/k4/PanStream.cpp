#include "k4/PanStream.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

#include "state/RadioState.h"
#include "state/Val.h"

namespace spectrino {
namespace {

constexpr std::size_t kLetterAt = 6;
constexpr std::size_t kSpanAt = 7, kSpanBytes = 6;
constexpr std::size_t kCentreAt = 13, kCentreBytes = 11;
constexpr std::size_t kReferenceAt = 24, kReferenceBytes = 5;
constexpr std::size_t kLevelsAt = 64;
constexpr double kMostReferenceTenths = 3000;  // no radio's is as far from 0 dB

/// What the frames of one display in one read add up to.
struct DisplaySum {
  int Frames = 0;
  std::int32_t FrameSpanHz = 0;
  double SpanMHz = 0;
  double CenterMHz = 0;
  float RefLevelDb = 0;
  int Points = 0;
  /// Whole dB, wide enough for any number of frames.
  std::array<std::int64_t, kPanFrameLevels> Levels;
};

class BusyFlag {
 public:
  explicit BusyFlag(bool& flag) : flag_(flag) { flag_ = true; }
  ~BusyFlag() { flag_ = false; }
  BusyFlag(const BusyFlag&) = delete;
  BusyFlag& operator=(const BusyFlag&) = delete;

 private:
  bool& flag_;
};

std::string_view Text(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

double MinipanWidthKHz(int radioMode, int dataMode) {
  switch (radioMode) {
    case mode::kLsb:
    case mode::kUsb:
    case mode::kFm:
    case mode::kAm:
      return 10;
    case mode::kCw:
    case mode::kCwReverse:
      return 2;
    case mode::kData:
    case mode::kDataReverse:
      return dataMode != 0 ? 2 : 10;
    default:
      return 0;
  }
}

/// Width to show with the presets above 0, MHz.
double ChosenWidthMHz(int display, const K4State& state) {
  double width = state.PanSpanMHz;
  if (display == kPanMiniMain) width = MinipanWidthKHz(state.RadioMode, state.DataModeMain) / 1000;
  if (display == kPanMiniSub) width = MinipanWidthKHz(state.SubRadioMode, state.DataModeSub) / 1000;
  return state.K4SpanPreset == 2 ? width / 1.5 : width;
}

std::optional<int> DisplayOf(char letter) {
  switch (letter) {
    case 'A':
      return kPanMain;
    case 'Y':
      return kPanMiniMain;
    case 'Z':
      return kPanMiniSub;
    default:
      return std::nullopt;
  }
}

// The division of C++ rounds towards zero.
constexpr int FloorOfTenth(int tenths) {
  return (tenths < 0 ? tenths - 9 : tenths) / 10;
}

/// sum / count, halves to even. count > 0.
constexpr std::int16_t Average(std::int64_t sum, std::int64_t count) {
  std::int64_t quotient = sum / count;
  std::int64_t rest = sum % count;
  if (rest < 0) {
    rest += count;
    --quotient;
  }
  const bool up = 2 * rest > count || (2 * rest == count && quotient % 2 != 0);
  return static_cast<std::int16_t>(quotient + (up ? 1 : 0));
}

void AddLevels(std::span<const std::uint8_t> levels, DisplaySum& sum) {
  // Cut on both sides alike; of an odd number of points to lose the halves go to even.
  const int firstSample = RoundToInt32((kPanFrameLevels - sum.Points) / 2.0);
  const std::uint8_t* sample = levels.data() + 2 * firstSample;
  for (std::size_t i = 0; i < static_cast<std::size_t>(sum.Points); ++i) {
    const auto raw = static_cast<std::int16_t>(sample[2 * i] << 8 | sample[2 * i + 1]);
    sum.Levels[i] += FloorOfTenth(raw);
  }
}

/// False when the frame does not go with the others.
bool AddFrame(std::span<const std::uint8_t> frame, int display, const K4State& state, DisplaySum& sum) {
  const std::string_view text = Text(frame);
  const std::int32_t spanHz = RoundToInt32(Val(text.substr(kSpanAt, kSpanBytes)));
  const double centreHz = Val(text.substr(kCentreAt, kCentreBytes));
  const double reference = Val(text.substr(kReferenceAt, kReferenceBytes));
  if (spanHz <= 0 || (sum.Frames > 0 && spanHz != sum.FrameSpanHz)) return false;
  if (!(centreHz > 0) || std::fabs(reference) > kMostReferenceTenths) return false;
  if (sum.Frames == 0) {
    sum.FrameSpanHz = spanHz;
    const double frameSpanMHz = spanHz / 1e6;
    sum.SpanMHz = frameSpanMHz;
    sum.Points = kPanFrameLevels;
    if (state.K4SpanPreset != 0) {
      // What is asked for may be wider than the frame, or of a span that the radio has left meanwhile: the
      // line ends where its levels do.
      sum.SpanMHz = std::min(ChosenWidthMHz(display, state), frameSpanMHz);
      sum.Points = std::clamp(RoundToInt32(sum.SpanMHz * kPanFrameLevels / frameSpanMHz), 0, kPanFrameLevels);
    }
    std::fill_n(sum.Levels.begin(), sum.Points, 0);
  }
  ++sum.Frames;
  sum.CenterMHz = centreHz / 1e6;
  sum.RefLevelDb = static_cast<float>(reference / 10);
  AddLevels(frame.subspan(kLevelsAt), sum);
  return true;
}

void Publish(const DisplaySum& sum, K4PanChannel& channel) {
  channel.SpanMHz = sum.SpanMHz;
  channel.CenterMHz = sum.CenterMHz;
  channel.LowEdgeMHz = sum.CenterMHz - sum.SpanMHz / 2;
  channel.HighEdgeMHz = sum.CenterMHz + sum.SpanMHz / 2;
  channel.RefLevelDb = sum.RefLevelDb;
  channel.Points = sum.Points;
  channel.Levels.assign(kPanFrameLevels + 1, 0);
  // Most reads hold one frame of a display: nothing to divide.
  const auto level = [&sum](std::int64_t total) {
    return sum.Frames == 1 ? static_cast<std::int16_t>(total) : Average(total, sum.Frames);
  };
  std::transform(sum.Levels.begin(), sum.Levels.begin() + sum.Points, channel.Levels.begin() + 1, level);
  ++channel.Serial;
}

void PublishMain(K4State& state) {
  K4PanChannel& channel = state.K4PanChannels[kPanMain];
  channel.FixedTune = state.FxtOn;
  for (std::size_t i = 0; i < state.K4PanGridHz.size(); ++i) {
    state.K4PanGridHz[i] = channel.SpanMHz * 1e6 / 10 * static_cast<double>(i);
  }
  state.K4PanRefLevel = static_cast<float>(state.PanRefLevelDb);
  state.K4PanDataSeen = true;
  state.SpectrumPoints = channel.Points;
}

}  // namespace

void ParseK4PanFrames(std::span<const std::uint8_t> read, K4State& state) {
  const std::size_t expected = read.size() / kPanFrameBytes;
  if (state.K4PanBusy || expected == 0 || state.PanScaleDb == 0) return;
  const BusyFlag busy(state.K4PanBusy);

  // Levels are cleared where a display's first frame is met; most reads hold one display.
  std::array<DisplaySum, 4> sums;
  for (std::size_t taken = 0; taken < expected; ++taken) {
    const std::size_t start = Text(read).find(kPanSync, taken * kPanFrameBytes);
    if (start == std::string_view::npos || start + kPanFrameBytes > read.size()) break;
    const std::span<const std::uint8_t> frame = read.subspan(start, kPanFrameBytes);
    const char letter = static_cast<char>(frame[kLetterAt]);
    if (letter == 'B') continue;
    const std::optional<int> display = DisplayOf(letter);
    if (!display) return;
    if (!AddFrame(frame, *display, state, sums[static_cast<std::size_t>(*display)])) return;
  }
  for (std::size_t display = 0; display < sums.size(); ++display) {
    if (sums[display].Frames > 0) Publish(sums[display], state.K4PanChannels[display]);
  }
  if (sums[kPanMain].Frames > 0) PublishMain(state);
}

}  // namespace spectrino
