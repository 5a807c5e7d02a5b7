#include "sim/icom/IcomSimSettings.h"

#include <cassert>

namespace spectrino {

namespace {

constexpr std::uint32_t Bit(IcomSimKind kind) {
  return 1U << static_cast<unsigned>(kind);
}
constexpr std::uint32_t kOnly7300 = Bit(IcomSimKind::Ic7300);
constexpr std::uint32_t kNot7300 = ~kOnly7300;
constexpr std::uint32_t kTwoReceivers = Bit(IcomSimKind::Ic9700) | Bit(IcomSimKind::Ic7610);
constexpr std::uint32_t kTuner = Bit(IcomSimKind::Ic7300) | Bit(IcomSimKind::Ic7610);

struct SettingRow {
  SimHead Head;
  std::size_t DataBytes;  ///< BCD, most significant byte first
  std::uint64_t Low;
  std::uint64_t High;
  std::uint64_t Initial;
  std::uint32_t Models = ~0U;  ///< bit per IcomSimKind
};

constexpr auto kRows = std::to_array<SettingRow>({
    {{0x0F}, 1, 0, 1, 0},                        // split
    {{0x10}, 1, 0, 8, 0},                        // tuning step
    {{0x14, 0x01}, 2, 0, 255, 128},              // AF gain
    {{0x14, 0x02}, 2, 0, 255, 255},              // RF gain
    {{0x14, 0x03}, 2, 0, 255, 0},                // squelch
    {{0x14, 0x06}, 2, 0, 255, 64},               // NR
    {{0x14, 0x07}, 2, 0, 255, 128},              // passband, inner
    {{0x14, 0x08}, 2, 0, 255, 128},              // passband, outer
    {{0x14, 0x09}, 2, 0, 255, 128},              // CW pitch
    {{0x14, 0x0A}, 2, 0, 255, 255},              // power
    {{0x14, 0x0B}, 2, 0, 255, 128},              // microphone
    {{0x14, 0x0C}, 2, 0, 255, 128},              // keyer speed
    {{0x14, 0x0D}, 2, 0, 255, 128},              // notch
    {{0x14, 0x0E}, 2, 0, 255, 0},                // compressor
    {{0x14, 0x0F}, 2, 0, 255, 70},               // break-in delay
    {{0x14, 0x12}, 2, 0, 255, 128},              // NB
    {{0x14, 0x15}, 2, 0, 255, 0},                // monitor
    {{0x14, 0x16}, 2, 0, 255, 0},                // VOX
    {{0x14, 0x17}, 2, 0, 255, 0},                // anti-VOX
    {{0x14, 0x19}, 2, 0, 255, 128},              // brightness
    {{0x16, 0x02}, 1, 0, 2, 0},                  // preamplifier
    {{0x16, 0x12}, 1, 1, 3, 2},                  // AGC
    {{0x16, 0x22}, 1, 0, 1, 0},                  // NB
    {{0x16, 0x40}, 1, 0, 1, 0},                  // NR
    {{0x16, 0x41}, 1, 0, 1, 0},                  // automatic notch
    {{0x16, 0x42}, 1, 0, 1, 0},                  // repeater tone
    {{0x16, 0x43}, 1, 0, 1, 0},                  // tone squelch
    {{0x16, 0x44}, 1, 0, 1, 0},                  // compressor
    {{0x16, 0x45}, 1, 0, 1, 0},                  // monitor
    {{0x16, 0x46}, 1, 0, 1, 0},                  // VOX
    {{0x16, 0x47}, 1, 0, 2, 0},                  // break-in
    {{0x16, 0x48}, 1, 0, 1, 0},                  // manual notch
    {{0x16, 0x4F}, 1, 0, 1, 0},                  // twin peak
    {{0x16, 0x50}, 1, 0, 1, 0},                  // dial lock
    {{0x16, 0x56}, 1, 0, 1, 0},                  // DSP filter shape
    {{0x16, 0x57}, 1, 0, 2, 0},                  // notch width
    {{0x16, 0x58}, 1, 0, 2, 0},                  // transmit bandwidth
    {{0x16, 0x65}, 1, 0, 1, 0, kNot7300},        // IP+
    {{0x1A, 0x03}, 1, 0, 49, 28},                // filter width
    {{0x1A, 0x04}, 1, 0, 13, 6},                 // AGC time
    {{0x1A, 0x07}, 1, 0, 1, 0, kOnly7300},       // IP+
    {{0x1B, 0x00}, 3, 0, 9999, 885},             // repeater tone, 0.1 Hz
    {{0x1B, 0x01}, 3, 0, 9999, 885},             // tone squelch, 0.1 Hz
    {{0x1C, 0x00}, 1, 0, 1, 0},                  // transmit
    {{0x1C, 0x01}, 1, 0, 2, 0, kTuner},          // aerial tuner
    {{0x1C, 0x02}, 1, 0, 1, 0},                  // transmit frequency monitor
    {{0x21, 0x00}, 3, 0, 999'901, 0},            // RIT: Hz low byte first, sign
    {{0x21, 0x01}, 1, 0, 1, 0},                  // RIT on
    {{0x21, 0x02}, 1, 0, 1, 0},                  // delta TX on
    {{0x27, 0x10}, 1, 0, 1, 0},                  // scope on
    {{0x27, 0x11}, 1, 0, 1, 0},                  // scope data output on
    {{0x27, 0x12}, 1, 0, 0, 0},                  // scope of the main receiver; the sub one is not simulated
    {{0x27, 0x13}, 1, 0, 1, 0, kTwoReceivers},   // both scopes
    {{0x27, 0x13}, 1, 0, 0, 0, ~kTwoReceivers},  // one scope
    {{0x27, 0x14, 0x00}, 1, 0, 1, 0},            // centre or fixed
    {{0x27, 0x16, 0x00}, 1, 1, kScopeEdgeSets, 1},  // edge set
    {{0x27, 0x17, 0x00}, 1, 0, 1, 0},               // hold
    {{0x27, 0x1A, 0x00}, 1, 0, 2, 0},               // sweep speed: fast, middle, slow
    {{0x27, 0x1B}, 1, 0, 1, 0},                     // scope while transmitting
    {{0x27, 0x1C}, 1, 0, 2, 0},                     // where the centre is
    {{0x27, 0x1D, 0x00}, 1, 0, 1, 0},               // video bandwidth
});

SimAnswer ReadOrStore(const SettingRow& row, IcomSimState& state, SimByteView data) {
  if (data.empty()) {
    const auto stored = state.Settings.find(row.Head.Key());
    if (stored != state.Settings.end()) return {true, stored->second};
    SimAnswer answer{true};
    PutBcdHigh(answer.Data, row.Initial, row.DataBytes);
    return answer;
  }
  const auto value = BcdHigh(data);
  if (data.size() != row.DataBytes || !value || *value < row.Low || *value > row.High) return {};
  state.Settings[row.Head.Key()] = SimBytes(data.begin(), data.end());
  return {true};
}

}  // namespace

std::optional<SimAnswer> IcomSimSettings::Execute(SimByteView command) {
  for (const SettingRow& row : kRows) {
    if (!row.Head.Begins(command) || (row.Models & ModelBit()) == 0) continue;
    SimAnswer answer = ReadOrStore(row, state_, command.subspan(row.Head.Size));
    answer.Head = row.Head;
    return answer;
  }
  return std::nullopt;
}

void IcomSimSettings::Reset(std::initializer_list<std::uint8_t> head) {
  state_.Settings.erase(SimHead(head).Key());
}

int IcomSimSettings::Value(std::initializer_list<std::uint8_t> head) const {
  const std::uint32_t key = SimHead(head).Key();
  const auto row = std::ranges::find_if(kRows, [&](const SettingRow& candidate) {
    return candidate.Head.Key() == key && (candidate.Models & ModelBit()) != 0;
  });
  assert(row != kRows.end());
  const auto stored = state_.Settings.find(key);
  return static_cast<int>(stored == state_.Settings.end() ? row->Initial : *BcdHigh(stored->second));
}

}  // namespace spectrino
