// Commands that do more than store a number, and the way to them.
#include "sim/icom/IcomSimControl.h"

#include <cmath>

#include "sim/icom/IcomSimTables.h"

namespace spectrino {

namespace {

constexpr int kMemoryChannels = 99;
constexpr std::size_t kMenuNumberBytes = 2;

/// S9 is -73 dBm and reads 0120; S0 lies 54 dB below; S9 + 60 dB reads 0240.
std::uint64_t MeterReading(double dBm) {
  const double aboveS9 = dBm + 73;
  const double reading = aboveS9 < 0 ? 120 + aboveS9 * (120.0 / 54) : 120 + aboveS9 * 2;
  return static_cast<std::uint64_t>(std::clamp(std::lround(reading), 0L, 241L));
}

}  // namespace

std::span<const IcomSimControl::HandlerRow> IcomSimControl::Handlers() {
  using C = IcomSimControl;
  static constexpr auto kRows = std::to_array<HandlerRow>({
      {{0x00}, &C::SetFrequencyQuietly},
      {{0x01}, &C::SetModeQuietly},
      {{0x02}, &C::BandEdges},
      {{0x03}, &C::ReadFrequency},
      {{0x04}, &C::ReadMode},
      {{0x05}, &C::SetFrequency},
      {{0x06}, &C::SetMode},
      {{0x07}, &C::SelectVfo},
      {{0x08}, &C::SelectMemory},
      {{0x09}, &C::WriteMemory},
      {{0x0A}, &C::MemoryToVfo},
      {{0x0E}, &C::Scan},
      {{0x11}, &C::Attenuator},
      {{0x13}, &C::Accept},  // speech
      {{0x15, 0x01}, &C::SquelchOpen},
      {{0x15, 0x02}, &C::SignalMeter},
      {{0x15, 0x11}, &C::QuietMeter},  // power and what else moves while transmitting
      {{0x15, 0x12}, &C::QuietMeter},
      {{0x15, 0x13}, &C::QuietMeter},
      {{0x15, 0x14}, &C::QuietMeter},
      {{0x15, 0x16}, &C::QuietMeter},
      {{0x17}, &C::Accept},  // text to be keyed
      {{0x18}, &C::Power},
      {{0x19, 0x00}, &C::Identify},
      {{0x1A, 0x05}, &C::MenuItem},
      {{0x1A, 0x06}, &C::DataMode},
      {{0x1C, 0x03}, &C::TransmitFrequency},
      {{0x25}, &C::VfoFrequency},
      {{0x26}, &C::VfoMode},
      {{0x27, 0x15, 0x00}, &C::ScopeSpan},
      {{0x27, 0x19, 0x00}, &C::ScopeReference},
      {{0x27, 0x1E}, &C::ScopeEdges},
  });
  return kRows;
}

IcomSimControl::IcomSimControl(const IcomSimModel& model, const IcomSimBand& band)
    : model_(model), band_(band) {
  for (SimVfo& vfo : state_.Vfos) vfo.Hz = model.StartHz;
  state_.Recalled = ChannelContent(state_.MemoryChannel);
}

SimBytes IcomSimControl::Execute(SimByteView command, double seconds) {
  if (command.empty()) return {};
  seconds_ = seconds;
  // Switched off, it hears the command that switches it on and no other.
  if (!state_.PowerOn && command[0] != 0x18) return {};
  std::size_t headBytes = 0;
  const Answer answer = Dispatch(command, headBytes);
  // 00 and 01 are what radios tell each other; nobody acknowledges them.
  if (command[0] <= 0x01) return {};
  if (!answer.Ok) return {kCivBad};
  if (answer.Data.empty()) return {kCivGood};
  SimBytes reply(command.begin(), command.begin() + static_cast<std::ptrdiff_t>(headBytes));
  reply.insert(reply.end(), answer.Data.begin(), answer.Data.end());
  return reply;
}

IcomSimControl::Answer IcomSimControl::Dispatch(SimByteView command, std::size_t& headBytes) {
  for (const HandlerRow& row : Handlers()) {
    if (!row.Head.Begins(command)) continue;
    headBytes = row.Head.Size;
    return (this->*row.Run)(command.subspan(headBytes));
  }
  for (const SettingRow& row : Settings()) {
    if (!row.Head.Begins(command) || (row.Models & ModelBit()) == 0) continue;
    headBytes = row.Head.Size;
    return ReadOrStore(row, command.subspan(headBytes));
  }
  return {};
}

bool IcomSimControl::TuneTo(std::int64_t hz) {
  if (!model_.Receives(hz)) return false;
  state_.Active().Hz = hz;
  return true;
}

bool IcomSimControl::HasMode(std::uint8_t mode) const {
  switch (mode) {
    case 0x06:  // WFM
      return model_.Kind == IcomSimKind::Ic705;
    case 0x12:  // PSK and its reverse
    case 0x13:
      return model_.Kind == IcomSimKind::Ic7610;
    case 0x17:  // DV
      return model_.Kind == IcomSimKind::Ic705 || model_.Kind == IcomSimKind::Ic9700;
    case 0x22:  // DD
      return model_.Kind == IcomSimKind::Ic9700;
    default:
      return mode <= 0x08;
  }
}

SimVfo IcomSimControl::ChannelContent(int channel) const {
  const auto written = state_.Memories.find(channel);
  if (written != state_.Memories.end()) return written->second;
  return {model_.StartHz + 1'000 * channel, 0x01, 0, 1};
}

SimHzRange IcomSimControl::FixedEdges() const {
  const int range = SimScopeRangeAt(state_.Active().Hz).Number;
  const int set = Setting({0x27, 0x16, 0x00});
  const auto changed = state_.EdgeSets.find({range, set});
  return changed == state_.EdgeSets.end() ? SimDefaultEdges(range, set) : changed->second;
}

// --- frequency, mode, VFO, memory ---

IcomSimControl::Answer IcomSimControl::SetFrequency(SimByteView data) {
  const auto hz = BcdLow(data);
  if (data.size() != kBcdHzBytes || !hz) return {};
  return {TuneTo(static_cast<std::int64_t>(*hz))};
}

IcomSimControl::Answer IcomSimControl::SetFrequencyQuietly(SimByteView data) {
  return SetFrequency(data);
}

/// mode [filter]: the filter stays the radio's own choice when it is left out.
IcomSimControl::Answer IcomSimControl::SetMode(SimByteView data) {
  if (data.empty() || data.size() > 2 || !HasMode(data[0])) return {};
  const std::uint8_t filter = data.size() == 2 ? data[1] : 1;
  if (filter < 1 || filter > 3) return {};
  SimVfo& vfo = state_.Active();
  vfo.Mode = data[0];
  vfo.Filter = filter;
  vfo.Data = 0;
  return {true};
}

IcomSimControl::Answer IcomSimControl::SetModeQuietly(SimByteView data) {
  return SetMode(data);
}

IcomSimControl::Answer IcomSimControl::ReadFrequency(SimByteView data) {
  Answer answer{data.empty()};
  PutBcdLow(answer.Data, static_cast<std::uint64_t>(state_.Active().Hz));
  return answer;
}

IcomSimControl::Answer IcomSimControl::ReadMode(SimByteView data) {
  return {data.empty(), {state_.Active().Mode, state_.Active().Filter}};
}

/// low edge (5 BCD) | 2D | high edge (5 BCD)
IcomSimControl::Answer IcomSimControl::BandEdges(SimByteView data) {
  Answer answer{data.empty()};
  for (const SimHzRange& range : model_.Coverage) {
    if (!range.Holds(state_.Active().Hz)) continue;
    PutBcdLow(answer.Data, static_cast<std::uint64_t>(range.LowHz));
    answer.Data.push_back(0x2D);
    PutBcdLow(answer.Data, static_cast<std::uint64_t>(range.HighHz));
  }
  return answer;
}

IcomSimControl::Answer IcomSimControl::SelectVfo(SimByteView data) {
  if (data.empty()) {
    state_.MemoryMode = false;
    return {true};
  }
  const bool two = model_.Receivers == 2;
  if (two && data[0] == 0xD2 && data.size() == 1) {
    return {true, {0xD2, static_cast<std::uint8_t>(state_.Selected)}};
  }
  if (data.size() != 1) return {};
  switch (data[0]) {
    case 0x00:
    case 0x01:
      state_.Selected = data[0];
      break;
    case 0xA0:
      state_.Vfos[1 - state_.Selected] = state_.Vfos[state_.Selected];
      return {true};
    case 0xB0:
      std::swap(state_.Vfos[0], state_.Vfos[1]);
      return {true};
    case 0xD0:
    case 0xD1:
      if (!two) return {};
      state_.Selected = data[0] & 1U;
      break;
    default:
      return {};
  }
  state_.MemoryMode = false;
  return {true};
}

/// [channel (2 BCD)]: without a channel the memory mode as it was left.
IcomSimControl::Answer IcomSimControl::SelectMemory(SimByteView data) {
  if (!data.empty()) {
    const auto channel = BcdHigh(data);
    if (data.size() != 2 || !channel || *channel < 1 || *channel > kMemoryChannels) return {};
    state_.MemoryChannel = static_cast<int>(*channel);
  }
  state_.MemoryMode = true;
  state_.Recalled = ChannelContent(state_.MemoryChannel);
  return {true};
}

IcomSimControl::Answer IcomSimControl::WriteMemory(SimByteView data) {
  if (!data.empty()) return {};
  state_.Memories[state_.MemoryChannel] = state_.Active();
  return {true};
}

IcomSimControl::Answer IcomSimControl::MemoryToVfo(SimByteView data) {
  if (!data.empty()) return {};
  state_.Vfos[state_.Selected] = ChannelContent(state_.MemoryChannel);
  return {true};
}

/// 25 | 00 selected, 01 the other | frequency (5 BCD)
IcomSimControl::Answer IcomSimControl::VfoFrequency(SimByteView data) {
  if (data.empty() || data[0] > 1) return {};
  SimVfo& vfo = data[0] == 0 ? state_.Active() : state_.Vfos[1 - state_.Selected];
  if (data.size() == 1) {
    Answer answer{true, {data[0]}};
    PutBcdLow(answer.Data, static_cast<std::uint64_t>(vfo.Hz));
    return answer;
  }
  const auto hz = BcdLow(data.subspan(1));
  if (data.size() != 1 + kBcdHzBytes || !hz || !model_.Receives(static_cast<std::int64_t>(*hz))) return {};
  vfo.Hz = static_cast<std::int64_t>(*hz);
  return {true};
}

/// 26 | 00 selected, 01 the other | mode | data mode | filter
IcomSimControl::Answer IcomSimControl::VfoMode(SimByteView data) {
  if (data.empty() || data[0] > 1) return {};
  SimVfo& vfo = data[0] == 0 ? state_.Active() : state_.Vfos[1 - state_.Selected];
  if (data.size() == 1) return {true, {data[0], vfo.Mode, vfo.Data, vfo.Filter}};
  const std::uint8_t dataMode = data.size() > 2 ? data[2] : 0;
  const std::uint8_t filter = data.size() > 3 ? data[3] : 1;
  if (data.size() > 4 || !HasMode(data[1]) || dataMode > MostDataMode() || filter < 1 || filter > 3)
    return {};
  vfo.Mode = data[1];
  vfo.Data = dataMode;
  vfo.Filter = filter;
  return {true};
}

/// 1A 06 | data mode | filter, 00 with data mode off
IcomSimControl::Answer IcomSimControl::DataMode(SimByteView data) {
  SimVfo& vfo = state_.Active();
  if (data.empty()) return {true, {vfo.Data, vfo.Data == 0 ? std::uint8_t{0} : vfo.Filter}};
  if (data.size() != 2 || data[0] > MostDataMode() || data[1] > 3) return {};
  vfo.Data = data[0];
  if (data[1] != 0) vfo.Filter = data[1];
  return {true};
}

IcomSimControl::Answer IcomSimControl::TransmitFrequency(SimByteView data) {
  Answer answer{data.empty()};
  const SimVfo& vfo = Setting({0x0F}) == 1 ? state_.Vfos[1 - state_.Selected] : state_.Active();
  PutBcdLow(answer.Data, static_cast<std::uint64_t>(vfo.Hz));
  return answer;
}

// --- scan, attenuator, meters, the radio itself ---

IcomSimControl::Answer IcomSimControl::Scan(SimByteView data) {
  if (data.size() != 1) return {};
  const std::uint8_t code = data[0];
  // Auto memory write, mode select and priority scan belong to receivers that are not simulated.
  constexpr auto kScans = std::to_array<std::uint8_t>({0x00, 0x01, 0x02, 0x03, 0x12, 0x13, 0x22, 0x23});
  if (std::ranges::find(kScans, code) != kScans.end()) {
    state_.Scan = code;
  } else if (code >= 0xA1 && code <= 0xA7) {
    state_.ScanSpan = code;
  } else if (code == 0xD0 || code == 0xD3) {
    state_.ScanResume = code;
  } else {
    return {};
  }
  return {true};
}

IcomSimControl::Answer IcomSimControl::Attenuator(SimByteView data) {
  if (data.empty()) return {true, {state_.Attenuator}};
  const auto dB = BcdHigh(data);
  if (data.size() != 1 || !dB) return {};
  const bool steps = model_.Kind == IcomSimKind::Ic7610 && *dB % 3 == 0 && *dB <= 45;
  if (data[0] != 0 && data[0] != model_.AttenuatorDb && !steps) return {};
  state_.Attenuator = data[0];
  return {true};
}

IcomSimControl::Answer IcomSimControl::Accept(SimByteView) {
  return {true};
}

IcomSimControl::Answer IcomSimControl::SquelchOpen(SimByteView data) {
  return {data.empty(), {0x01}};
}

IcomSimControl::Answer IcomSimControl::SignalMeter(SimByteView data) {
  Answer answer{data.empty()};
  const double lost = static_cast<double>(BcdHigh(SimByteView(&state_.Attenuator, 1)).value_or(0));
  const double dBm = band_.PowerAt(static_cast<double>(state_.Active().Hz), seconds_) - lost;
  PutBcdHigh(answer.Data, MeterReading(dBm), 2);
  return answer;
}

IcomSimControl::Answer IcomSimControl::QuietMeter(SimByteView data) {
  return {data.empty(), {0x00, 0x00}};
}

IcomSimControl::Answer IcomSimControl::Power(SimByteView data) {
  if (data.empty()) return {true, {static_cast<std::uint8_t>(state_.PowerOn ? 1 : 0)}};
  if (data.size() != 1 || data[0] > 1) return {};
  state_.PowerOn = data[0] == 1;
  return {true};
}

IcomSimControl::Answer IcomSimControl::Identify(SimByteView data) {
  return {data.empty(), {model_.Address}};
}

/// number (2 BCD) | value, as long as the item has it: items are kept, but mean nothing.
IcomSimControl::Answer IcomSimControl::MenuItem(SimByteView data) {
  if (data.size() < kMenuNumberBytes || !BcdHigh(data.first(kMenuNumberBytes))) return {};
  const std::uint32_t key = 0x1A050000U | static_cast<std::uint32_t>(data[0]) << 8U | data[1];
  SimBytes& value = state_.Settings.try_emplace(key, SimBytes{0x00}).first->second;
  if (data.size() > kMenuNumberBytes) {
    value.assign(data.begin() + kMenuNumberBytes, data.end());
    return {true};
  }
  Answer answer{true, {data[0], data[1]}};
  answer.Data.insert(answer.Data.end(), value.begin(), value.end());
  return answer;
}

// --- scope ---

/// 27 15 00 | half span (5 BCD)
IcomSimControl::Answer IcomSimControl::ScopeSpan(SimByteView data) {
  if (data.empty()) {
    Answer answer{true};
    PutBcdLow(answer.Data, static_cast<std::uint64_t>(state_.HalfSpanHz));
    return answer;
  }
  // Wider ones belong to receivers that are not simulated.
  constexpr auto kHalfSpansHz =
      std::to_array<std::int64_t>({2'500, 5'000, 10'000, 25'000, 50'000, 100'000, 250'000, 500'000});
  const auto hz = static_cast<std::int64_t>(BcdLow(data).value_or(0));
  if (data.size() != kBcdHzBytes || std::ranges::find(kHalfSpansHz, hz) == kHalfSpansHz.end()) return {};
  state_.HalfSpanHz = hz;
  return {true};
}

/// 27 19 00 | dB, two decimals (2 BCD, high byte first) | 00 plus, 01 minus: -10.5 dB is 10 50 01
IcomSimControl::Answer IcomSimControl::ScopeReference(SimByteView data) {
  if (data.empty()) {
    Answer answer{true};
    PutBcdHigh(answer.Data, static_cast<std::uint64_t>(std::abs(state_.RefHalfDb) * 50), 2);
    answer.Data.push_back(state_.RefHalfDb < 0 ? 1 : 0);
    return answer;
  }
  if (data.size() != 3 || data[2] > 1) return {};
  const auto hundredths = BcdHigh(data.first(2));
  if (!hundredths || *hundredths > 2000 || *hundredths % 50 != 0) return {};
  const int halfDb = static_cast<int>(*hundredths / 50);
  state_.RefHalfDb = data[2] == 1 ? -halfDb : halfDb;
  return {true};
}

/// 27 1E | range | edge set | low edge (5 BCD) | high edge (5 BCD)
IcomSimControl::Answer IcomSimControl::ScopeEdges(SimByteView data) {
  if (data.size() != 2 && data.size() != 2 + 2 * kBcdHzBytes) return {};
  const int range = static_cast<int>(BcdHigh(data.first(1)).value_or(0));
  const int set = static_cast<int>(BcdHigh(data.subspan(1, 1)).value_or(0));
  if (range < 1 || range > SimScopeRangeCount() || set < 1 || set > kScopeEdgeSets) return {};
  if (data.size() > 2) {
    const auto low = BcdLow(data.subspan(2, kBcdHzBytes));
    const auto high = BcdLow(data.subspan(2 + kBcdHzBytes));
    if (!low || !high || *low + 5'000 > *high || *low + 1'000'000 < *high) return {};
    state_.EdgeSets[{range, set}] = {static_cast<std::int64_t>(*low), static_cast<std::int64_t>(*high)};
    return {true};
  }
  const auto changed = state_.EdgeSets.find({range, set});
  const SimHzRange edges = changed == state_.EdgeSets.end() ? SimDefaultEdges(range, set) : changed->second;
  Answer answer{true, {data[0], data[1]}};
  PutBcdLow(answer.Data, static_cast<std::uint64_t>(edges.LowHz));
  PutBcdLow(answer.Data, static_cast<std::uint64_t>(edges.HighHz));
  return answer;
}

}  // namespace spectrino
